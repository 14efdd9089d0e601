#include <tavik/opengl/VertexList.h>

#include <tavik/opengl/AttributeLocations.h>
#include <tavik/opengl/AttributeUpload.h>
#include <tavik/opengl/RectangleCorners.h>

#include <GL/glew.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace Tavik::OpenGL {

void VertexList::append(std::vector<Math::Vector3<float>> vertices)
{
    if (mVertices.empty() && mVertices.capacity() < vertices.size()) {
        mVertices = std::move(vertices);
    } else {
        mVertices.insert(mVertices.end(), vertices.begin(), vertices.end());
    }
    mIsDirty = true;
}

void VertexList::setRect(unsigned int width, unsigned int height)
{
    const auto corners = rectangleCorners(width, height);
    mVertices.assign(corners.begin(), corners.end());
    mIsDirty = true;
}

void VertexList::clear()
{
    mVertices.clear();
    mIsDirty = true;
}

void VertexList::upload()
{
    mVertexArray.bind();
    uploadAttribute(mVertexBuffer, mVertices, mVertices.size(), VertexLocation, 3);
    VertexArray::unbind();
    mIsDirty = false;
}

void VertexList::draw(unsigned int mode) const
{
    const auto count = std::min<std::size_t>(mVertices.size(), std::numeric_limits<GLsizei>::max());
    glDrawArrays(mode, 0, static_cast<GLsizei>(count));
}

void VertexList::clearObjects()
{
    mVertexArray.clear();
    mVertexBuffer.clear();
}

} // namespace Tavik::OpenGL
