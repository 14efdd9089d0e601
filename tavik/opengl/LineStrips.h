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

/// Open polylines of any width, anti-aliased, stippled, in one colour or one for each vertex, drawn in one call.
///
///     LineStrips route;
///     route.setLineWidth(3.0f);
///     route.setColor({0.9f, 0.2f, 0.8f, 1.0f});
///     route.addLineStrip(legs);         // any number of strips
///     route.render(-1);                 // each frame
///
/// Coordinates are in the space of the matrix stack, which leads to clip space without perspective; the widths and
/// lengths that follow are pixels of GlHandler::setViewPort(). Vertices live on the CPU and may be added before there
/// is a context; the next render() after a change uploads them all. To change the lines, clearVertex() and add them
/// anew: memory is kept, and vertices added after a render() draw the strip before them with doubled points.
///
/// The stipple runs along the vertices in the order they were added, through all strips as if they were joined; it is
/// measured when the vertices are uploaded, with the matrix of that moment.
///
/// Drawing blends with source alpha over what is there, or, without anti-aliasing, does not blend at all. Afterwards
/// the blend state stays so, primitive restart and line smoothing are off, and no program and no vertex array is
/// bound. OpenGL errors of the drawing and of an upload before it are printed.
///
/// The object owns its OpenGL objects: destroy it while its context is current, or when there is none. After a move the
/// source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API LineStrips
{
public:
    /// Between the strips in the indices, and the restart index when drawing.
    static constexpr unsigned int StripSeparator = 0x12FFFFFF;

    LineStrips() : mGeometry(StripSeparator) {}

    /// @{
    /// Append a vertex to the strip that is open, or start one; missing z is 0, w is dropped. The next addLineStrip()
    /// continues the open strip.
    void addVertex(Math::Vector2<float> vertex) { mGeometry.addVertex({vertex.x, vertex.y, 0.0f}); }
    void addVertex(Math::Vector3<float> vertex) { mGeometry.addVertex(vertex); }
    void addVertex(Math::Vector4<float> vertex) { mGeometry.addVertex({vertex.x, vertex.y, vertex.z}); }
    /// @}

    /// @{
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
    /// @}

    /// @{
    /// Append the points and end the strip.
    void addLineStrip(const std::vector<Math::Vector2<float>>& points) { mGeometry.addStrip(points); }
    void addLineStrip(const std::vector<Math::Vector3<float>>& points) { mGeometry.addStrip(points); }
    void addLineStrip(const std::vector<Math::Vector4<float>>& points) { mGeometry.addStrip(points); }
    /// @}

    /// Removes all vertices, colours and indices.
    void clearVertex() { mGeometry.clear(); }

    /// Deletes the OpenGL objects; the vertices stay, and the next render() creates the objects again.
    void clear() { mBuffers.clear(); }

    /// Replaces the vertices by the four corners (0, 0), (0, height), (width, 0), (width, height), but not the indices:
    /// which corners are joined is the caller's to say, by vertices added before. Indices beyond them draw
    /// nothing, now and when there are more vertices again.
    void setRect(unsigned int width, unsigned int height) { mGeometry.setRect(width, height); }

    /// Width of the band, pixels; 1 by default.
    void setLineWidth(float width) { mStyle.width = width; }

    /// Dashes and dots.
    /// @param pattern  bits 0 to 15 for the first 16 of each 32 pixels of length, lowest first; the other 16 pixels
    ///                 stay empty. 0, the default, draws solid.
    void setStipple(unsigned short pattern) { mStyle.stipple = pattern; }

    /// Soft edges, on by default, 0.3 of the width on each side: a line of width 1 along whole pixels all but vanishes,
    /// so give it 2 or more. Without soft edges, translucent colours are drawn opaque.
    void setAntiAlias(bool on) { mStyle.antiAlias = on; }

    /// Red, green, blue and alpha, each in [0, 1]; white by default.
    void setColor(Math::Vector4<float> color) { mStyle.color = color; }

    /// Draws each vertex in its own colour, provided that all have one; off by default.
    void setUseMultiColor(bool on) { mUseMultiColor = on; }

    /// Creates the OpenGL objects and uploads what there is; done by render().
    void init();

    /// Prepares and uploads the vertices, see above; done by render() after changes. Each call doubles the ends of the
    /// strips once more.
    void setData();

    /// Measures the stipple anew with the current matrix and view port.
    void calcPositions();

    /// Draws, if there are at least two indices.
    /// @param count  indices to draw, counted with each strip's first and last index doubled and the separators
    ///               between the strips; −1, or any number below 0 or above what there is, for all
    void render(int count);

private:
    LineGeometry mGeometry;
    LineBuffers mBuffers;
    LineStyle mStyle;
    bool mUseMultiColor = false;
};

} // namespace Tavik::OpenGL
