#include <tavik/opengl/TexturedVertices.h>

#include <tavik/opengl/AttributeLocations.h>

namespace Tavik::OpenGL {

namespace {

// Drivers may read all attributes that are on, so one without values is off.
template <typename Value>
void uploadAttribute(BufferObject& buffer, const std::vector<Value>& values, unsigned int location, int components)
{
    if (values.empty()) {
        VertexArray::disableAttribute(location);
        return;
    }
    buffer.uploadVertices(values.data(), values.size() * sizeof(Value));
    VertexArray::setFloatAttribute(location, components);
}

} // namespace

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
    uploadAttribute(mPositionBuffer, mPositions, VertexLocation, 3);
    uploadAttribute(mCoordinateBuffer, mCoordinates, TextureCoordinateLocation, 2);
    mIsDirty = false;
}

void TexturedVertices::release()
{
    mVertexArray.clear();
    mPositionBuffer.clear();
    mCoordinateBuffer.clear();
}

} // namespace Tavik::OpenGL
