#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/FillPattern.h>
#include <tavik/opengl/VertexList.h>

namespace Tavik::OpenGL {

/// A disc about the origin, filled with one colour, through a pattern if wanted.
///
///     Circle range;
///     range.setColor({0.2f, 0.8f, 0.3f, 0.5f});
///     range.setCircle(200.0, 64);
///     MatrixPush();
///     MatrixTranslate(x, y, 0.0);
///     range.render(); // each frame
///     MatrixPop();
///
/// Coordinates are in the space of the matrix stack. Vertices live on the CPU and may be made before there is a
/// context; the next render() after a change uploads them.
///
/// Drawing blends with source alpha over what is there. Afterwards blending stays on, and no program and no vertex
/// array is bound. OpenGL errors are printed.
///
/// The object owns its OpenGL objects: destroy it while its context is current, or when there is none. After a move the
/// source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API Circle
{
public:
    /// The most segments that a circle is given: their sides lie nearer to the true circle than single precision
    /// can tell.
    static constexpr unsigned int MaximumSegments = 65536;

    /// Appends the centre and the rim: clockwise from (0, radius), with y up, and back to it. Vertices from before
    /// stay, so to replace a circle, clearVertex() first.
    /// @param radius  in the units of the matrix stack; one that is NaN or beyond single precision appends nothing
    /// @param segments  sides of the rim; fewer than 3 enclose nothing, 0 appends nothing, more than MaximumSegments
    ///                  count as MaximumSegments
    void setCircle(double radius, unsigned int segments);

    /// Removes all vertices.
    void clearVertex() { mVertices.clear(); }

    /// Deletes the OpenGL objects; the vertices stay, and the next render() creates the objects again.
    void clear() { mVertices.clearObjects(); }

    /// Red, green, blue and alpha, each in [0, 1]; white by default.
    void setColor(Math::Vector4<float> color) { mColor = color; }

    /// Draws only where a pattern has its bits set. The pattern is fixed to the window. Without one, which is faster,
    /// the circle is drawn with program 2, with one with program 11.
    /// @param pattern  32 rows of 32 bits, see FillPattern::set; null draws everywhere
    void setPattern(const unsigned char* pattern) { mPattern.set(pattern); }

    /// Creates the OpenGL objects and uploads what there is; done by render().
    void init() { mVertices.upload(); }

    /// Uploads the vertices; done by render() after changes.
    void setData() { mVertices.upload(); }

    /// Draws, if there is a circle.
    void render();

private:
    VertexList mVertices;
    Math::Vector4<float> mColor = {1.0f, 1.0f, 1.0f, 1.0f};
    FillPattern mPattern;
};

} // namespace Tavik::OpenGL
