#include <tavik/opengl/Texture.h>

#include <tavik/opengl/FillDrawing.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/ImageBlob.h>
#include <tavik/opengl/LineDrawing.h>
#include <tavik/opengl/StandardPrograms.h>
#include <tavik/opengl/TextureDrawing.h>
#include <tavik/opengl/TextureMaking.h>

#include <GL/glew.h>

#include <algorithm>

namespace Tavik::OpenGL {

bool Texture::load(const unsigned char* pixels, unsigned int width, unsigned int height, unsigned int format)
{
    if (pixels == nullptr) {
        return false;
    }
    const unsigned int name =
        makeTexture(GL_TEXTURE_2D, {GL_COMPRESSED_RGBA, width, height, format, GL_UNSIGNED_BYTE, pixels},
                    {GL_LINEAR, static_cast<int>(mWrapMode)}, mUseMipMaps);
    if (name == 0) {
        return false;
    }
    clear();
    mTexture.take(name);
    mWidth = width;
    mHeight = height;
    mVertices.setQuad(width, height);
    while (mNextIndex < mVertices.size()) {
        mIndices.push_back(mNextIndex++);
    }
    return true;
}

bool Texture::load(const void* blob, unsigned int format)
{
    const ImageBlob image = readImageBlob(blob);
    return load(image.pixels, image.width, image.height, format);
}

unsigned int Texture::createTexture(const void* blob)
{
    const ImageBlob image = readImageBlob(blob);
    if (image.pixels == nullptr) {
        return 0;
    }
    return makeTexture(GL_TEXTURE_2D, {GL_RGBA, image.width, image.height, GL_RGBA, GL_UNSIGNED_BYTE, image.pixels},
                       {GL_LINEAR, GL_REPEAT});
}

void Texture::addVertex(Math::Vector3<float> vertex, Math::Vector2<float> coordinate)
{
    mVertices.add(vertex, coordinate);
    mIndices.push_back(mNextIndex++);
}

void Texture::addTexture(const std::vector<Math::Vector3<float>>& points, const std::vector<Math::Vector2<float>>& uv)
{
    addStrip(points, uv);
}

void Texture::addTexture(const std::vector<Math::Vector4<float>>& points, const std::vector<Math::Vector2<float>>& uv)
{
    addStrip(points, uv);
}

void Texture::clearVertex()
{
    mVertices.clear();
    mIndices.clear();
    mNextIndex = 0;
}

void Texture::clear()
{
    clearVertex();
    mVertices.release();
    mIndexBuffer.clear();
    mTexture.clear();
    mWidth = 0;
    mHeight = 0;
}

void Texture::setData()
{
    mVertices.upload();
    mIndexBuffer.uploadIndices(mIndices.data(), mIndices.size() * sizeof(mIndices[0]));
    VertexArray::unbind();
}

void Texture::render()
{
    if (mVertices.size() == 0 || mTexture.name() == 0) {
        return;
    }
    GlHandler::clearError();
    if (mVertices.isDirty()) {
        setData();
    }
    beginTextures(TextureProgram, mColor);
    {
        TextureUnits units;
        units.bindNext(GL_TEXTURE_2D, mTexture.name());
        mVertices.bind();
        drawStrips(GL_TRIANGLE_STRIP, StripSeparator, -1, mIndices.size());
    }
    endFill();
}

template <typename Point>
void Texture::addStrip(const std::vector<Point>& points, const std::vector<Math::Vector2<float>>& uv)
{
    const std::size_t count = std::min(points.size(), uv.size());
    for (std::size_t i = 0; i < count; ++i) {
        addVertex(points[i], uv[i]);
    }
    mIndices.push_back(StripSeparator);
    mVertices.setDirty();
}

} // namespace Tavik::OpenGL
