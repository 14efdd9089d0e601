#include <tavik/opengl/TexturedVertices.h>

#include <tavik/opengl/AttributeLocations.h>
#include <tavik/opengl/AttributeUpload.h>

namespace Tavik::OpenGL {

void TexturedVertices::setQuad(unsigned int width, unsigned int height)
{
    clear();
    const float right = static_cast<float>(width) * 0.5f;
    const float top = static_cast<float>(height) * 0.5f;
    add({-right, -top, 0.0f}, {0.0f, 1.0f});
    add({-right, top, 0.0f}, {0.0f, 0.0f});
    add({right, -top, 0.0f}, {1.0f, 1.0f});
    add({right, top, 0.0f}, {1.0f, 0.0f});
}

void TexturedVertices::clear()
{
    mPositions.clear();
    mCoordinates.clear();
    mIsDirty = true;
}

void TexturedVertices::upload()
{
    mVertexArray.bind();
    uploadAttribute(mPositionBuffer, mPositions, size(), VertexLocation, 3);
    uploadAttribute(mCoordinateBuffer, mCoordinates, size(), TextureCoordinateLocation, 2);
    mIsDirty = false;
}

void TexturedVertices::release()
{
    mVertexArray.clear();
    mPositionBuffer.clear();
    mCoordinateBuffer.clear();
}

} // namespace Tavik::OpenGL
