#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector3.h>
#include <tavik/opengl/BufferObject.h>
#include <tavik/opengl/VertexArray.h>

#include <vector>

namespace Tavik::OpenGL {

/// The vertices of a drawable that has nothing but vertices, on the CPU and, once drawn, on the GPU; applications have
/// no need of it.
///
/// On the GPU they are attribute 0, three floats each. Rendering thread only.
class TAVIK_API VertexList
{
public:
    void add(Math::Vector3<float> vertex)
    {
        mVertices.push_back(vertex);
        mIsDirty = true;
    }

    /// Adds them behind the others; takes them over where there are none yet.
    void append(std::vector<Math::Vector3<float>> vertices);

    /// Replaces the vertices by (0, 0), (0, height), (width, 0), (width, height).
    void setRect(unsigned int width, unsigned int height);

    /// Removes the vertices; the memory is kept.
    void clear();

    std::size_t size() const { return mVertices.size(); }

    /// Whether anything has changed since the last upload, or the OpenGL objects are missing.
    bool needsUpload() const { return mIsDirty || mVertexArray.name() == 0; }

    /// Uploads all vertices; creates the OpenGL objects where they are missing. No vertex array is bound afterwards.
    void upload();

    /// Binds the vertex array.
    void bind() { mVertexArray.bind(); }

    /// Draws all vertices as one primitive.
    /// @param mode  OpenGL's primitive
    void draw(unsigned int mode) const;

    /// Deletes the OpenGL objects; the next upload starts afresh.
    void clearObjects();

private:
    std::vector<Math::Vector3<float>> mVertices;
    VertexArray mVertexArray;
    BufferObject mVertexBuffer;
    bool mIsDirty = false;
};

} // namespace Tavik::OpenGL
