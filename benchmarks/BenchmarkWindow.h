#pragma once

#include <support/Window.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>

#include <cstdlib>

/// Opens the one hidden window of a benchmark, which draws on the measuring thread, and sets the current matrix so that
/// one unit is one of its pixels, with the origin at the lower left.
/// @return whether there is a window
inline bool openBenchmarkWindow(int widthPixels, int heightPixels)
{
    using namespace Tavik::OpenGL;
    using Tavik::Support::Window;
    setenv("LP_NUM_THREADS", "0", 0);
    static const Window window("Tavik benchmark", widthPixels, heightPixels, Window::Visibility::Hidden);
    if (!window.isOpen()) {
        return false;
    }
    GlHandler::instance().setViewPort({static_cast<float>(widthPixels), static_cast<float>(heightPixels)});
    MatrixLoadIdent();
    MatrixTranslate(-1.0, -1.0, 0.0);
    MatrixScale(2.0 / widthPixels, 2.0 / heightPixels, 1.0);
    return true;
}
