#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/LineStyle.h>
#include <tavik/opengl/VertexList.h>

namespace Tavik::OpenGL {

/// Independent segments of any width, anti-aliased, stippled, in one colour, drawn in one call.
///
///     Lines ticks;
///     ticks.setLineWidth(2.0f);
///     ticks.addVertex(start); // each two vertices are one segment
///     ticks.addVertex(end);
///     ticks.render();         // each frame
///
/// Coordinates are in the space of the matrix stack, which leads to clip space without perspective; the widths and
/// lengths that follow are pixels of GlHandler::setViewPort(). Vertices live on the CPU and may be added before there
/// is a context; the next render() after a change uploads them all, and memory is kept by clearVertex(). The stipple
/// starts anew with each segment and follows the matrix without delay.
///
/// Drawing blends with source alpha over what is there, or, without anti-aliasing, does not blend at all. Afterwards
/// the blend state stays so, line smoothing is off, and no program and no vertex array is bound. OpenGL errors are
/// printed once for each render().
///
/// The object owns its OpenGL objects: destroy it while its context is current, or when there is none. After a move the
/// source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API Lines
{
public:
    /// @{
    /// Append a vertex; missing z is 0, w is dropped. A last vertex without partner draws nothing.
    void addVertex(Math::Vector2<float> vertex) { mVertices.add({vertex.x, vertex.y, 0.0f}); }
    void addVertex(Math::Vector3<float> vertex) { mVertices.add(vertex); }
    void addVertex(Math::Vector4<float> vertex) { mVertices.add({vertex.x, vertex.y, vertex.z}); }
    /// @}

    /// Removes all vertices.
    void clearVertex() { mVertices.clear(); }

    /// Deletes the OpenGL objects; the vertices stay, and the next render() creates the objects again.
    void clear() { mVertices.clearObjects(); }

    /// Replaces the vertices by (0, 0), (0, height), (width, 0), (width, height): the left and the right side.
    void setRect(unsigned int width, unsigned int height) { mVertices.setRect(width, height); }

    /// Width of the band, pixels; 1 by default.
    void setLineWidth(float width) { mStyle.width = width; }

    /// Dashes and dots.
    /// @param pattern  bits 0 to 15 for the first 16 of each 32 pixels of length, lowest first; the other 16 pixels
    ///                 stay empty. 0, the default, draws solid.
    void setStipple(unsigned short pattern) { mStyle.stipple = pattern; }

    /// Soft edges, on by default; without them translucent colours are drawn opaque.
    void setAntiAlias(bool on) { mStyle.antiAlias = on; }

    /// Red, green, blue and alpha, each in [0, 1]; white by default.
    void setColor(Math::Vector4<float> color) { mStyle.color = color; }

    /// Creates the OpenGL objects and uploads what there is; done by render().
    void init() { mVertices.upload(); }

    /// Uploads the vertices; done by render() after changes.
    void setData() { mVertices.upload(); }

    /// Draws, if there are at least two vertices.
    void render();

private:
    VertexList mVertices;
    LineStyle mStyle;
};

} // namespace Tavik::OpenGL
