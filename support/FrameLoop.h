#pragma once

#include <support/Window.h>

#include <functional>
#include <string>

namespace Tavik::Support {

/// How to open a window that shows what is drawn, or, where a picture is wanted, writes it to a file.
/// @param screenshot  path of a PNG file, empty for none
Window::Visibility visibilityFor(const std::string& screenshot);

/// What every example does around its drawing: takes the window's events, hands its size to OpenGL and to GlHandler,
/// clears it, draws, and shows the frame; until the window is closed, or once where nobody can see it.
///
///     Window window("Map", 640, 400, visibilityFor(screenshot));
///     ...
///     return showFrames(window, screenshot, [&] { route.render(-1); });
///
/// Before each drawing the matrix stack's top is the identity.
/// @param screenshot  file that the first frame is written to; empty for none
/// @return for main: EXIT_SUCCESS, or EXIT_FAILURE where the window is not open, the file cannot be written or OpenGL
///         has an error pending, all of which is printed
int showFrames(Window& window, const std::string& screenshot, const std::function<void()>& draw);

} // namespace Tavik::Support
