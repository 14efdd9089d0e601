#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/BufferObject.h>
#include <tavik/opengl/FillPattern.h>
#include <tavik/opengl/VertexArray.h>

#include <vector>

namespace Tavik::OpenGL {

/// A strip of triangles, each three neighbouring vertices one, in one colour, through a pattern if wanted, or in one
/// colour for each vertex.
///
///     TriangleStrip sky;
///     sky.setUseMultiColor(true);
///     sky.addVertex(bottomLeft, pale);
///     sky.addVertex(topLeft, blue);
///     sky.addVertex(bottomRight, pale);
///     sky.addVertex(topRight, blue);
///     sky.render(); // each frame
///
/// Coordinates are in the space of the matrix stack. Vertices live on the CPU and may be added before there is a
/// context; the next render() after a change uploads them all, and memory is kept by clearVertex(). A vertex that is
/// NaN or infinite spoils the triangles that it belongs to, and no others.
///
/// Drawing blends with source alpha over what is there. Afterwards blending stays on, and no program and no vertex
/// array is bound. OpenGL errors are printed after each step.
///
/// The object owns its OpenGL objects: destroy it while its context is current, or when there is none. After a move the
/// source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API TriangleStrip
{
public:
    /// @{
    /// Append a vertex; missing z is 0, w is dropped.
    void addVertex(Math::Vector2<float> vertex) { addVertex(Math::Vector3<float>(vertex.x, vertex.y, 0.0f)); }
    void addVertex(Math::Vector3<float> vertex);
    void addVertex(Math::Vector4<float> vertex) { addVertex(Math::Vector3<float>(vertex.x, vertex.y, vertex.z)); }
    /// @}

    /// @{
    /// The same with the vertex's colour, which shows when multi-colour is on and each vertex has one.
    void addVertex(Math::Vector2<float> vertex, Math::Vector4<float> color)
    {
        addVertex(Math::Vector3<float>(vertex.x, vertex.y, 0.0f), color);
    }
    void addVertex(Math::Vector3<float> vertex, Math::Vector4<float> color);
    void addVertex(Math::Vector4<float> vertex, Math::Vector4<float> color)
    {
        addVertex(Math::Vector3<float>(vertex.x, vertex.y, vertex.z), color);
    }
    /// @}

    /// Removes all vertices and colours.
    void clearVertex();

    /// Deletes the OpenGL objects; the vertices stay, and the next render() creates the objects again.
    void clear();

    /// Replaces the vertices by (0, 0), (0, height), (width, 0), (width, height), which make a rectangle; the colours
    /// stay.
    void setRect(unsigned int width, unsigned int height);

    /// Red, green, blue and alpha, each in [0, 1]; white by default.
    void setColor(Math::Vector4<float> color) { mColor = color; }

    /// Draws each vertex in its own colour, provided that all have one, and without the pattern; off by default.
    void setUseMultiColor(bool on) { mUseMultiColor = on; }

    /// Draws only where a pattern has its bits set. The pattern is fixed to the window, whatever moves below it.
    /// @param pattern  32 rows of 32 bits, see FillPattern::set; null draws everywhere
    void setPattern(const unsigned char* pattern) { mPattern.set(pattern); }

    /// Creates the OpenGL objects and uploads what there is; done by render().
    void init();

    /// Uploads vertices and colours; done by render() after changes.
    void setData();

    /// Draws, if there are at least two vertices.
    void render();

private:
    void upload(const char* where);
    bool hasColors() const { return mColors.size() == mVertices.size(); }

    VertexArray mVertexArray;
    BufferObject mVertexBuffer;
    BufferObject mColorBuffer;
    Math::Vector4<float> mColor = {1.0f, 1.0f, 1.0f, 1.0f};
    std::vector<Math::Vector3<float>> mVertices;
    std::vector<Math::Vector4<float>> mColors;
    bool mIsDirty = false;
    bool mUseMultiColor = false;
    FillPattern mPattern;
};

} // namespace Tavik::OpenGL
