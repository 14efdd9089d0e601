#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/opengl/BufferObject.h>
#include <tavik/opengl/VertexArray.h>

#include <cstddef>
#include <vector>

namespace Tavik::OpenGL {

/// Vertices with texture coordinates as the picture drawables keep them, on the CPU and on the GPU; applications have
/// no need of it.
///
/// Attributes: positions 0 (3 floats), texture coordinates 2 (2 floats). Memory is kept when the vertices go.
/// Rendering thread only.
class TAVIK_API TexturedVertices
{
public:
    void add(Math::Vector3<float> position, Math::Vector2<float> coordinate)
    {
        mPositions.push_back(position);
        mCoordinates.push_back(coordinate);
        mIsDirty = true;
    }

    /// Replaces the vertices by a rectangle of this size (pixels) round the origin, in the order of a strip: lower
    /// left, upper left, lower right, upper right. The first row of the picture comes to its upper edge.
    void setQuad(unsigned int width, unsigned int height);

    /// Removes all vertices.
    void clear();

    std::size_t size() const { return mPositions.size(); }

    /// Whether the GPU lacks something of what there is.
    bool isDirty() const { return mIsDirty || mVertexArray.name() == 0; }

    /// Has everything uploaded again, for what goes along with the vertices, such as indices.
    void setDirty() { mIsDirty = true; }

    /// Uploads all vertices, creating what does not exist yet. The vertex array stays bound.
    void upload();

    void bind() { mVertexArray.bind(); }

    /// Deletes what lives on the GPU; the next upload starts afresh.
    void release();

private:
    VertexArray mVertexArray;
    BufferObject mPositionBuffer;
    BufferObject mCoordinateBuffer;
    std::vector<Math::Vector3<float>> mPositions;
    std::vector<Math::Vector2<float>> mCoordinates;
    bool mIsDirty = false;
};

} // namespace Tavik::OpenGL
