#include <tavik/opengl/BufferObject.h>

#include <tavik/opengl/OpenGlLoader.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

void BufferObject::clear()
{
    if (mName != 0) {
        glDeleteBuffers(1, &mName);
        mName = 0;
    }
}

void BufferObject::reservePixels(std::size_t size)
{
    bind(GL_PIXEL_UNPACK_BUFFER);
    if (isOpenGlLoaded()) {
        glBufferData(GL_PIXEL_UNPACK_BUFFER, static_cast<GLsizeiptr>(size), nullptr, GL_STREAM_DRAW);
    }
}

void BufferObject::bind(unsigned int target)
{
    if (!isOpenGlLoaded()) {
        return;
    }
    if (mName == 0) {
        glGenBuffers(1, &mName);
    }
    glBindBuffer(target, mName);
}

void BufferObject::store(unsigned int target, const void* data, std::size_t size)
{
    if (isOpenGlLoaded()) {
        glBufferData(target, static_cast<GLsizeiptr>(size), data, GL_STATIC_DRAW);
    }
}

} // namespace Tavik::OpenGL
