#pragma once

#include <support/Picture.h>

#include <SDL.h>

#include <string>

namespace Tavik::Support {

/// An SDL2 window with an OpenGL 3.3 core context that is current on the calling thread.
///
/// Where there is no display SDL falls back to its `offscreen` driver, and everything works the same except that
/// nobody sees it; the environment variable SDL_VIDEODRIVER forces a driver.
///
///     Window window("Moving map", 1280, 800);
///     if (!window.isOpen()) {
///         std::fprintf(stderr, "%s\n", window.error().c_str());
///         return EXIT_FAILURE;
///     }
///     while (running) {
///         SDL_Event event;
///         while (window.pollEvent(event)) { ... }
///         glViewport(0, 0, window.widthPixels(), window.heightPixels());
///         ...
///         window.swap();
///     }
///
/// One thread only, and one window at a time.
class Window
{
public:
    enum class Visibility
    {
        Shown, ///< resizable, on the screen, swapped with the screen's refresh
        Hidden ///< never shown; draws into a framebuffer object of exactly the size asked for
    };

    /// Opens the window and makes its context current.
    /// @param widthPixels,heightPixels  at least 1; a window manager may give a shown window another size
    /// @param debugContext  asks the driver for a debug context, which reports errors in words
    Window(const std::string& title, int widthPixels, int heightPixels, Visibility visibility = Visibility::Shown,
           bool debugContext = false);
    ~Window();

    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Whether window and context exist; when not, error() says why in one sentence.
    bool isOpen() const { return mContext != nullptr; }
    const std::string& error() const { return mError; }

    /// Whether nobody can see the window, because there is no display or because it is hidden.
    bool isHeadless() const;

    /// Size of the drawing area; on a high-density screen it is larger than the window's size in screen units.
    int widthPixels() const;
    int heightPixels() const;

    /// Takes the next event from the queue.
    /// @return false when there is none
    bool pollEvent(SDL_Event& event);

    /// Shows what was drawn; waits for the screen's refresh where there is a screen.
    void swap();

    /// What has been drawn since the last swap, opaque.
    Picture readPicture() const;

    /// The oldest pending OpenGL error, GL_NO_ERROR (0) when there is none; the others are dropped.
    static unsigned int takeGlError();

private:
    bool createContext(const std::string& title, int widthPixels, int heightPixels, bool debugContext);
    bool createFramebuffer(int widthPixels, int heightPixels);

    SDL_Window* mWindow = nullptr;
    SDL_GLContext mContext = nullptr;
    Visibility mVisibility;
    unsigned int mFramebuffer = 0;
    unsigned int mRenderbuffer = 0;
    int mFramebufferWidth = 0;
    int mFramebufferHeight = 0;
    std::string mError;
};

} // namespace Tavik::Support
