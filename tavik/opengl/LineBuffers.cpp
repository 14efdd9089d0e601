#include <tavik/opengl/LineBuffers.h>

#include <tavik/opengl/AttributeLocations.h>
#include <tavik/opengl/AttributeUpload.h>
#include <tavik/opengl/LineGeometry.h>

namespace Tavik::OpenGL {

namespace {

void uploadPositionAttributes(BufferObject& buffer, const LineGeometry& geometry)
{
    if (uploadAttribute(buffer, geometry.positions(), geometry.vertices().size(), PositionLocation, 1)) {
        VertexArray::setIntegerAttribute(NormalsLocation);
    } else {
        VertexArray::disableAttribute(NormalsLocation);
    }
}

} // namespace

void LineBuffers::upload(const LineGeometry& geometry)
{
    const std::size_t vertexCount = geometry.vertices().size();
    mVertexArray.bind();
    uploadAttribute(mVertexBuffer, geometry.vertices(), vertexCount, VertexLocation, 3);
    uploadAttribute(mColorBuffer, geometry.colors(), vertexCount, ColorLocation, 4);
    uploadPositionAttributes(mPositionBuffer, geometry);
    mIndexBuffer.uploadIndices(geometry.indices().data(), geometry.indices().size() * sizeof(geometry.indices()[0]));
    VertexArray::unbind();
}

void LineBuffers::uploadPositions(const LineGeometry& geometry)
{
    if (!exist()) {
        return;
    }
    mVertexArray.bind();
    uploadPositionAttributes(mPositionBuffer, geometry);
    VertexArray::unbind();
}

void LineBuffers::clear()
{
    mVertexArray.clear();
    mVertexBuffer.clear();
    mColorBuffer.clear();
    mPositionBuffer.clear();
    mIndexBuffer.clear();
}

} // namespace Tavik::OpenGL
