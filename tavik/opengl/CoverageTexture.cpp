#include <tavik/opengl/CoverageTexture.h>

#include <tavik/opengl/GlHandler.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

namespace {

GLint value(GLenum name)
{
    GLint result = 0;
    glGetIntegerv(name, &result);
    return result;
}

void setParameters()
{
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    const GLint swizzle[] = {GL_ONE, GL_ONE, GL_ONE, GL_RED}; // the core profile has no texture of alpha alone
    glTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_SWIZZLE_RGBA, swizzle);
}

} // namespace

unsigned int createCoverageTexture(const unsigned char* pixels, int width, int height)
{
    if (!GlHandler::instance().isLoaded() || pixels == nullptr || width < 1 || height < 1) {
        return 0;
    }
    const GLint largest = value(GL_MAX_TEXTURE_SIZE);
    if (width > largest || height > largest) {
        return 0;
    }
    const GLint boundTexture = value(GL_TEXTURE_BINDING_2D);
    const GLint alignment = value(GL_UNPACK_ALIGNMENT);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    setParameters();
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_R8, width, height, 0, GL_RED, GL_UNSIGNED_BYTE, pixels);
    glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(boundTexture));
    return texture;
}

} // namespace Tavik::OpenGL
