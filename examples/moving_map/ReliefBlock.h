#pragma once

#include <moving_map/LocalPlane.h>
#include <moving_map/Relief.h>
#include <tavik/math/Vector3.h>
#include <tavik/opengl/TextureTerrain.h>

#include <optional>

namespace MovingMap {

/// The shaded relief of one block, ready to be drawn.
///
/// Made on any thread; upload, render and the destructor belong to the one that draws.
class ReliefBlock
{
public:
    ReliefBlock(const HeightRaster& raster, const HeightGrid& grid);

    /// Hands the texture to OpenGL. Without terrain there is none, and no context is needed.
    void upload();

    /// Draws with the current matrix, which takes the block's cells to clip coordinates. Where there is no terrain
    /// nothing is drawn.
    /// @param light  the way it travels: east, north, up
    /// @param ramp   OpenGL's name of the colours, see HeightRamp
    void render(Tavik::Math::Vector3<float> light, unsigned int ramp);

private:
    std::optional<Relief> mRelief; // until it is uploaded, and nothing where there is no terrain
    Tavik::OpenGL::TextureTerrain mTexture;
};

/// The way the light travels on a map: it comes from the upper left of the screen, which is the north-west where north
/// is up, and 45 degrees high. From below, valleys would be taken for ridges.
/// @param upDegrees  course that points up on the screen
Tavik::Math::Vector3<float> lightOnMap(double upDegrees);

} // namespace MovingMap
