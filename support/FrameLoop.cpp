#include <support/FrameLoop.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>

#include <GL/gl.h>

#include <cstdio>
#include <cstdlib>

namespace Tavik::Support {

Window::Visibility visibilityFor(const std::string& screenshot)
{
    return screenshot.empty() ? Window::Visibility::Shown : Window::Visibility::Hidden;
}

int showFrames(Window& window, const std::string& screenshot, const std::function<void()>& draw)
{
    if (!window.isOpen()) {
        std::fprintf(stderr, "%s\n", window.error().c_str());
        return EXIT_FAILURE;
    }
    OpenGL::GlHandler& gl = OpenGL::GlHandler::instance();
    for (bool running = true; running; running = running && !window.isHeadless()) {
        for (SDL_Event event; window.pollEvent(event);) {
            running = running && event.type != SDL_QUIT;
        }
        gl.setViewPort({static_cast<float>(window.widthPixels()), static_cast<float>(window.heightPixels())});
        glViewport(0, 0, window.widthPixels(), window.heightPixels());
        glClearColor(0.05f, 0.07f, 0.1f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        OpenGL::MatrixLoadIdent();
        draw();
        if (!screenshot.empty() && !window.readPicture().writePng(screenshot)) {
            std::fprintf(stderr, "could not write <%s>\n", screenshot.c_str());
            return EXIT_FAILURE;
        }
        window.swap();
    }
    const unsigned int error = Window::takeGlError();
    if (error != GL_NO_ERROR) {
        std::fprintf(stderr, "OpenGL error 0x%x\n", error);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

} // namespace Tavik::Support
