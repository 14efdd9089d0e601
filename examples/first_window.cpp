// A window with a route: two legs, the fly-by turn between them, and nothing else.

#include <support/Window.h>

#include <tavik/geodetic/Turns.h>
#include <tavik/misc/CmdLine.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/MatrixStack.h>

#include <GL/gl.h>

#include <cstdio>
#include <cstdlib>

using namespace Tavik;

int main(int argc, char** argv)
{
    Misc::CmdLine& options = Misc::CmdLine::instance();
    options.addParameter("--screenshot", "write a picture and stop", "");
    if (!options.parse(argc, argv)) {
        options.printUsage();
        return EXIT_FAILURE;
    }
    std::string screenshot;
    const bool wantsPicture = options.getParameter("--screenshot", screenshot) && !screenshot.empty();
    const auto visibility = wantsPicture ? Support::Window::Visibility::Hidden : Support::Window::Visibility::Shown;
    Support::Window window("First window", 640, 400, visibility);
    if (!window.isOpen()) {
        std::fprintf(stderr, "%s\n", window.error().c_str());
        return EXIT_FAILURE;
    }

    // East and north in metres, as latLong2Grid gives them.
    const Math::Vector2<double> previous(-9000.0, -4000.0), waypoint(2000.0, 3500.0), next(9000.0, -4500.0);
    bool limited = false;
    OpenGL::LineStrips route;
    route.setColor({0.9f, 0.3f, 0.8f, 1.0f});
    route.setLineWidth(4.0f);
    route.addVertex(Math::Vector2<float>(float(previous.x), float(previous.y)));
    for (const Math::Vector2<double>& p : Geodetic::calcFlyByPoints(previous, waypoint, next, 3000.0, 2, limited)) {
        route.addVertex(Math::Vector2<float>(float(p.x), float(p.y)));
    }
    route.addVertex(Math::Vector2<float>(float(next.x), float(next.y)));

    OpenGL::GlHandler& gl = OpenGL::GlHandler::instance();
    for (bool running = true; running; running = running && !window.isHeadless()) {
        for (SDL_Event event; window.pollEvent(event);) {
            running = running && event.type != SDL_QUIT;
        }
        gl.setViewPort({float(window.widthPixels()), float(window.heightPixels())});
        glViewport(0, 0, window.widthPixels(), window.heightPixels());
        glClearColor(0.05f, 0.07f, 0.1f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        OpenGL::MatrixLoadIdent();
        OpenGL::MatrixScale(1.0 / 10000.0, 1.6 / 10000.0, 1.0); // 20 km across, one scale both ways at 8 : 5
        route.render(-1);
        if (wantsPicture && !window.readPicture().writePng(screenshot)) {
            std::fprintf(stderr, "could not write <%s>\n", screenshot.c_str());
            return EXIT_FAILURE;
        }
        window.swap();
    }
    return glGetError() == GL_NO_ERROR ? EXIT_SUCCESS : EXIT_FAILURE;
}
