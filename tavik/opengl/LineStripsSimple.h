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
/// Coordinates are in the space of the matrix stack. Vertices live on the CPU and may be added before there is a
/// context; the next render() after a change uploads them all. To change the lines, clearVertex() and add them anew:
/// memory is kept.
///
/// Drawing blends with source alpha over what is there, or, without anti-aliasing, does not blend at all. Afterwards
/// the blend state stays so, primitive restart and line smoothing are off, and no program and no vertex array is
/// bound. OpenGL errors of the drawing and of an upload before it are
/// printed.
///
/// The object owns its OpenGL objects: destroy it while its context is current, or when there is none. After a move the
/// source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API LineStripsSimple
{
public:
    /// Between the strips in the indices, and the restart index when drawing.
    static constexpr unsigned int StripSeparator = 0x12FFFFFF;

    LineStripsSimple() : mGeometry(StripSeparator) {}

    /// Append a vertex to the strip that is open, or start one; missing z is 0, w is dropped. The next addLineStrip()
    /// continues the open strip.
    void addVertex(Math::Vector2<float> vertex) { mGeometry.addVertex({vertex.x, vertex.y, 0.0f}); }
    void addVertex(Math::Vector3<float> vertex) { mGeometry.addVertex(vertex); }
    void addVertex(Math::Vector4<float> vertex) { mGeometry.addVertex({vertex.x, vertex.y, vertex.z}); }

    /// The same with the vertex's colour, which shows when multi-colour is on and each vertex has one.
    void addVertex(Math::Vector2<float> vertex, Math::Vector4<float> color)
    {
        mGeometry.addVertex({vertex.x, vertex.y, 0.0f}, color);
    }
    void addVertex(Math::Vector3<float> vertex, Math::Vector4<float> color) { mGeometry.addVertex(vertex, color); }
    void addVertex(Math::Vector4<float> vertex, Math::Vector4<float> color)
    {
        mGeometry.addVertex({vertex.x, vertex.y, vertex.z}, color);
    }

    /// Append the points and end the strip.
    void addLineStrip(const std::vector<Math::Vector2<float>>& points) { mGeometry.addStrip(points); }
    void addLineStrip(const std::vector<Math::Vector3<float>>& points) { mGeometry.addStrip(points); }
    void addLineStrip(const std::vector<Math::Vector4<float>>& points) { mGeometry.addStrip(points); }

    /// Removes all vertices, colours and indices.
    void clearVertex() { mGeometry.clear(); }

    /// Deletes the OpenGL objects; the next render() creates them again.
    void clear() { mBuffers.clear(); }

    /// Replaces the vertices by the four corners (0, 0), (0, height), (width, 0), (width, height), but not the indices:
    /// which corners are joined is the caller's to say, by vertices added before. Indices beyond them draw
    /// nothing, now and when there are more vertices again.
    void setRect(unsigned int width, unsigned int height) { mGeometry.setRect(width, height); }

    /// Kept, but without effect: the lines are as thin as OpenGL draws them.
    void setLineWidth(float width) { mStyle.width = width; }
    void setStipple(unsigned short pattern) { mStyle.stipple = pattern; }

    /// OpenGL's line smoothing; without it translucent colours are drawn opaque.
    void setAntiAlias(bool on) { mStyle.antiAlias = on; }

    void setColor(Math::Vector4<float> color) { mStyle.color = color; }

    /// Draws each vertex in its own colour, provided that all have one.
    void setUseMultiColor(bool on) { mUseMultiColor = on; }

    /// Creates the OpenGL objects and uploads what there is; done by render().
    void init();

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
