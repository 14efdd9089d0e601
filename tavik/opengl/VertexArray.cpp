#include <tavik/opengl/VertexArray.h>

#include <tavik/opengl/OpenGlLoader.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

void VertexArray::bind()
{
    if (!isOpenGlLoaded()) {
        return;
    }
    if (mName == 0) {
        glGenVertexArrays(1, &mName);
    }
    glBindVertexArray(mName);
}

void VertexArray::unbind()
{
    if (isOpenGlLoaded()) {
        glBindVertexArray(0);
    }
}

void VertexArray::setFloatAttribute(unsigned int location, int components)
{
    if (isOpenGlLoaded()) {
        glVertexAttribPointer(location, components, GL_FLOAT, GL_FALSE, 0, nullptr);
        glEnableVertexAttribArray(location);
    }
}

void VertexArray::setIntegerAttribute(unsigned int location)
{
    if (isOpenGlLoaded()) {
        glVertexAttribIPointer(location, 1, GL_UNSIGNED_INT, 0, nullptr);
        glEnableVertexAttribArray(location);
    }
}

void VertexArray::disableAttribute(unsigned int location)
{
    if (isOpenGlLoaded()) {
        glDisableVertexAttribArray(location);
    }
}

void VertexArray::clear()
{
    if (mName != 0) {
        glDeleteVertexArrays(1, &mName);
        mName = 0;
    }
}

} // namespace Tavik::OpenGL
