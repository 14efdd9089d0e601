#pragma once

#include <moving_map/HeightGrid.h>
#include <tavik/opengl/LineStrips.h>

namespace MovingMap {

/// The contour lines of one block, ready to be drawn.
///
/// Made on any thread; render and the destructor belong to the one that draws.
class ContourBlock
{
public:
    /// @param level  of the block, which tells the distance between the lines
    ContourBlock(int level, const HeightGrid& grid);

    /// Draws with the current matrix, which takes the block's cells to clip coordinates.
    void render();

private:
    Tavik::OpenGL::LineStrips mThin;
    Tavik::OpenGL::LineStrips mIndex; // every fifth line
    Tavik::OpenGL::LineStrips mCoast;
};

/// Distance in height between the lines of a level, metres.
double contourInterval(int level);

} // namespace MovingMap
