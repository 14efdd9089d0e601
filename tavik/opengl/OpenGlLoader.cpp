#include <tavik/opengl/OpenGlLoader.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

namespace {

const char* errorText(GLenum error)
{
    return reinterpret_cast<const char*>(glewGetErrorString(error));
}

} // namespace

const char* loadOpenGl()
{
    // Load what the driver has, also where its list of extensions leaves out what the core version contains.
    glewExperimental = GL_TRUE;
    const GLenum error = glewInit();
    // Contexts that were not made through GLX (Wayland, offscreen) have no GLX display. By then every entry point of
    // OpenGL itself is loaded; only those of GLX are not.
    if (error != GLEW_OK && error != GLEW_ERROR_NO_GLX_DISPLAY) {
        return errorText(error);
    }
    return isOpenGlLoaded() ? nullptr : errorText(GLEW_ERROR_NO_GL_VERSION);
}

bool isOpenGlLoaded()
{
    // One of each version that the library draws on; a version is loaded as a whole.
    return glBufferData != nullptr && glCreateProgram != nullptr && glBindVertexArray != nullptr &&
           glPrimitiveRestartIndex != nullptr;
}

} // namespace Tavik::OpenGL
