#pragma once

#include <tavik/Export.h>
#include <tavik/opengl/BufferObject.h>
#include <tavik/opengl/VertexArray.h>

namespace Tavik::OpenGL {

class LineGeometry;

/// What of a line drawable lives on the GPU; applications have no need of it.
///
/// Attributes: vertices 0 (3 floats), colours 4 (4 floats), positions 5 (1 float), and 3, which no line program reads
/// (one unsigned int, from the positions). An attribute that does not have a value for each vertex is switched off,
/// since drivers may read all those that are on. Rendering thread only.
class TAVIK_API LineBuffers
{
public:
    /// Whether everything has been uploaded since the start or the last clear().
    bool exist() const { return mIndexBuffer.name() != 0; }

    /// Uploads everything; creates what does not exist yet. The vertex array object is not bound afterwards.
    void upload(const LineGeometry& geometry);

    /// Uploads the positions alone; nothing while the rest does not exist.
    void uploadPositions(const LineGeometry& geometry);

    void bind() { mVertexArray.bind(); }

    /// Deletes everything; the next upload starts afresh.
    void clear();

private:
    VertexArray mVertexArray;
    BufferObject mVertexBuffer;
    BufferObject mColorBuffer;
    BufferObject mPositionBuffer;
    BufferObject mIndexBuffer;
};

} // namespace Tavik::OpenGL
