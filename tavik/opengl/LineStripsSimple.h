#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/LineBuffers.h>
#include <tavik/opengl/LineGeometry.h>
#include <tavik/opengl/LineStyle.h>

#include <vector>

namespace Tavik::OpenGL {

/// Open polylines as hairlines, in one colour or one for each vertex, drawn in one call without the width pipeline.
///
///     LineStripsSimple grid;
///     grid.addLineStrip(meridian);
///     grid.render(-1); // each frame
///
/// Takes the same calls as LineStrips, so that one can stand for the other; width and stipple are without effect here.
/// What is not told below is told there: coordinates, uploads, blending and state, ownership, thread. Vertices may be
/// added after a render(), too.
class TAVIK_API LineStripsSimple
{
public:
    /// Between the strips in the indices, and the restart index when drawing.
    static constexpr unsigned int StripSeparator = 0x12FFFFFF;

    LineStripsSimple() : mGeometry(StripSeparator) {}

    /// @{
    /// As in LineStrips, all of them.
    void addVertex(Math::Vector2<float> vertex) { mGeometry.addVertex({vertex.x, vertex.y, 0.0f}); }
    void addVertex(Math::Vector3<float> vertex) { mGeometry.addVertex(vertex); }
    void addVertex(Math::Vector4<float> vertex) { mGeometry.addVertex({vertex.x, vertex.y, vertex.z}); }
    void addVertex(Math::Vector2<float> vertex, Math::Vector4<float> color)
    {
        mGeometry.addVertex({vertex.x, vertex.y, 0.0f}, color);
    }
    void addVertex(Math::Vector3<float> vertex, Math::Vector4<float> color) { mGeometry.addVertex(vertex, color); }
    void addVertex(Math::Vector4<float> vertex, Math::Vector4<float> color)
    {
        mGeometry.addVertex({vertex.x, vertex.y, vertex.z}, color);
    }
    void addLineStrip(const std::vector<Math::Vector2<float>>& points) { mGeometry.addStrip(points); }
    void addLineStrip(const std::vector<Math::Vector3<float>>& points) { mGeometry.addStrip(points); }
    void addLineStrip(const std::vector<Math::Vector4<float>>& points) { mGeometry.addStrip(points); }
    void clearVertex() { mGeometry.clear(); }
    void clear() { mBuffers.clear(); }
    void setRect(unsigned int width, unsigned int height) { mGeometry.setRect(width, height); }
    /// @}

    /// @{
    /// Kept, but without effect: the lines are as thin as OpenGL draws them.
    void setLineWidth(float width) { mStyle.width = width; }
    void setStipple(unsigned short pattern) { mStyle.stipple = pattern; }
    /// @}

    /// OpenGL's line smoothing, on by default; without it translucent colours are drawn opaque.
    void setAntiAlias(bool on) { mStyle.antiAlias = on; }

    /// @{
    /// As in LineStrips.
    void setColor(Math::Vector4<float> color) { mStyle.color = color; }
    void setUseMultiColor(bool on) { mUseMultiColor = on; }
    void init();
    /// @}

    /// Uploads vertices, colours and indices; done by render() after changes.
    void setData();

    /// Draws, if there are at least two indices.
    /// @param count  indices to draw, the separators between the strips included; −1, or any number below 0 or above
    ///               what there is, for all
    void render(int count);

private:
    LineGeometry mGeometry;
    LineBuffers mBuffers;
    LineStyle mStyle;
    bool mUseMultiColor = false;
};

} // namespace Tavik::OpenGL
