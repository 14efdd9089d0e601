#include <tavik/opengl/Video.h>

#include <tavik/opengl/FillDrawing.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/StandardPrograms.h>
#include <tavik/opengl/TextureDrawing.h>
#include <tavik/opengl/TextureMaking.h>

#include <GL/glew.h>

#include <cstring>

namespace Tavik::OpenGL {

namespace {

constexpr std::size_t FrameChannels = 3;

// Room for frames of four channels.
constexpr std::size_t BufferChannels = 4;

std::size_t pixelCount(unsigned int width, unsigned int height)
{
    return std::size_t{width} * height;
}

// Fills the bound unpack buffer. Its contents before are given up: then the driver need not wait for a frame that is
// still being read, and takes other memory.
// @return whether the bytes have arrived
bool fillUnpackBuffer(const unsigned char* bytes, std::size_t size)
{
    void* memory = glMapBufferRange(GL_PIXEL_UNPACK_BUFFER, 0, static_cast<GLsizeiptr>(size),
                                    GL_MAP_WRITE_BIT | GL_MAP_INVALIDATE_BUFFER_BIT);
    if (memory == nullptr) {
        return false;
    }
    std::memcpy(memory, bytes, size);
    return glUnmapBuffer(GL_PIXEL_UNPACK_BUFFER) == GL_TRUE;
}

} // namespace

void Video::init(unsigned int width, unsigned int height)
{
    clear();
    mTexture.take(makeTexture(GL_TEXTURE_2D, {GL_RGBA, width, height, GL_RGB, GL_UNSIGNED_BYTE, nullptr},
                              {GL_LINEAR, GL_CLAMP_TO_EDGE}));
    if (mTexture.name() == 0) {
        return;
    }
    mWidth = width;
    mHeight = height;
    mVertices.setQuad(width, height);
    const PixelUnpacking unpacking;
    mFrameBuffer.reservePixels(pixelCount(width, height) * BufferChannels);
    GlHandler::clearError(); // without memory for it putFrame() takes no frame
}

void Video::putFrame(const unsigned char* rgb)
{
    if (rgb == nullptr || mTexture.name() == 0) {
        return;
    }
    GlHandler::clearError();
    {
        const TextureBinding binding(GL_TEXTURE_2D, mTexture.name());
        const PixelUnpacking unpacking;
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, mFrameBuffer.name());
        if (fillUnpackBuffer(rgb, pixelCount(mWidth, mHeight) * FrameChannels)) {
            glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, static_cast<GLsizei>(mWidth), static_cast<GLsizei>(mHeight), GL_RGB,
                            GL_UNSIGNED_BYTE, nullptr);
            mHasFrame = true;
        }
    }
    GlHandler::clearError();
}

void Video::clear()
{
    mTexture.clear();
    mFrameBuffer.clear();
    mVertices.clear();
    mVertices.release();
    mWidth = 0;
    mHeight = 0;
    mHasFrame = false;
}

void Video::setData()
{
    mVertices.upload();
    VertexArray::unbind();
}

void Video::render()
{
    if (mVertices.size() < 3 || !mHasFrame) {
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
        drawStrip(mVertices.size());
    }
    endFill();
}

} // namespace Tavik::OpenGL
