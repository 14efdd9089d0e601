#pragma once

#include <moving_map/HeightGrid.h>
#include <moving_map/HeightSource.h>
#include <tavik/opengl/LineStrips.h>

namespace MovingMap {

/// The contour lines of one block, ready to be drawn.
///
/// Made on any thread; render and the destructor belong to the one that draws.
class ContourBlock
{
public:
    ContourBlock(const BlockKey& key, const HeightSource& source);

    const BlockKey& key() const { return mKey; }

    /// Draws with the current matrix, which takes the block's cells to clip coordinates.
    void render();

private:
    BlockKey mKey;
    Tavik::OpenGL::LineStrips mThin;
    Tavik::OpenGL::LineStrips mIndex; // every fifth line
    Tavik::OpenGL::LineStrips mCoast;
};

/// Distance in height between the lines of a level, metres.
double contourInterval(int level);

} // namespace MovingMap
