#include <tavik/opengl/BufferObject.h>

#include <tavik/opengl/OpenGlLoader.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

void BufferObject::uploadVertices(const void* data, std::size_t size)
{
    upload(GL_ARRAY_BUFFER, data, size);
}

void BufferObject::uploadIndices(const void* data, std::size_t size)
{
    upload(GL_ELEMENT_ARRAY_BUFFER, data, size);
}

void BufferObject::clear()
{
    if (mName != 0) {
        glDeleteBuffers(1, &mName);
        mName = 0;
    }
}

void BufferObject::upload(unsigned int target, const void* data, std::size_t size)
{
    if (!isOpenGlLoaded()) {
        return;
    }
    if (mName == 0) {
        glGenBuffers(1, &mName);
    }
    glBindBuffer(target, mName);
    glBufferData(target, static_cast<GLsizeiptr>(size), data, GL_STATIC_DRAW);
}

} // namespace Tavik::OpenGL
