#include <support/Window.h>

#include <GL/gl.h>
#include <GL/glext.h>

#include <cstring>

namespace Tavik::Support {

namespace {

// A lost context may report errors for ever.
constexpr int MaximumPendingErrors = 64;

} // namespace

Window::Window(const std::string& title, int widthPixels, int heightPixels, Visibility visibility, bool debugContext)
    : mVisibility(visibility)
{
    // An interrupt from the terminal ends the program, also where it does not look at events.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
        mError = std::string("No video driver: ") + SDL_GetError();
        return;
    }
    if (!createContext(title, widthPixels, heightPixels, debugContext)) {
        return;
    }
    if (visibility == Visibility::Shown) {
        SDL_GL_SetSwapInterval(isHeadless() ? 0 : 1);
    } else if (!createFramebuffer(widthPixels, heightPixels)) {
        SDL_GL_DeleteContext(mContext);
        mContext = nullptr;
    }
}

Window::~Window()
{
    if (mContext != nullptr) {
        glDeleteFramebuffers(1, &mFramebuffer);
        glDeleteRenderbuffers(1, &mRenderbuffer);
        SDL_GL_DeleteContext(mContext);
    }
    if (mWindow != nullptr) {
        SDL_DestroyWindow(mWindow);
    }
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

bool Window::isHeadless() const
{
    const char* driver = SDL_GetCurrentVideoDriver();
    return mVisibility == Visibility::Hidden || driver == nullptr || std::strcmp(driver, "offscreen") == 0;
}

int Window::widthPixels() const
{
    int width = mFramebufferWidth;
    if (mFramebuffer == 0 && mWindow != nullptr) {
        SDL_GL_GetDrawableSize(mWindow, &width, nullptr);
    }
    return width;
}

int Window::heightPixels() const
{
    int height = mFramebufferHeight;
    if (mFramebuffer == 0 && mWindow != nullptr) {
        SDL_GL_GetDrawableSize(mWindow, nullptr, &height);
    }
    return height;
}

bool Window::pollEvent(SDL_Event& event)
{
    return SDL_PollEvent(&event) != 0;
}

void Window::swap()
{
    SDL_GL_SwapWindow(mWindow);
}

Picture Window::readPicture() const
{
    Picture picture(widthPixels(), heightPixels());
    glBindFramebuffer(GL_READ_FRAMEBUFFER, mFramebuffer);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, picture.width(), picture.height(), GL_RGBA, GL_UNSIGNED_BYTE, picture.data());
    picture.flipRows();
    // Some drivers keep an alpha channel though none was asked for; on the screen it is not seen.
    for (std::size_t i = 3; i < std::size_t{4} * std::size_t(picture.width()) * std::size_t(picture.height()); i += 4) {
        picture.data()[i] = 255;
    }
    return picture;
}

unsigned int Window::takeGlError()
{
    const unsigned int oldest = glGetError();
    for (int i = 0; i < MaximumPendingErrors && glGetError() != GL_NO_ERROR; ++i) {
    }
    return oldest;
}

bool Window::createContext(const std::string& title, int widthPixels, int heightPixels, bool debugContext)
{
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_CORE);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 3);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 3);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_FLAGS, debugContext ? SDL_GL_CONTEXT_DEBUG_FLAG : 0);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    // Pictures are opaque: blending must not leave holes in them.
    SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, 0);

    Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI;
    flags |= mVisibility == Visibility::Hidden ? SDL_WINDOW_HIDDEN : SDL_WINDOW_SHOWN;
    mWindow = SDL_CreateWindow(title.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, widthPixels, heightPixels,
                               flags);
    if (mWindow == nullptr) {
        mError = std::string("The window cannot be opened: ") + SDL_GetError();
        return false;
    }
    mContext = SDL_GL_CreateContext(mWindow);
    if (mContext == nullptr) {
        mError = std::string("There is no OpenGL 3.3 core context: ") + SDL_GetError();
        return false;
    }
    return true;
}

bool Window::createFramebuffer(int widthPixels, int heightPixels)
{
    mFramebufferWidth = widthPixels;
    mFramebufferHeight = heightPixels;
    glGenRenderbuffers(1, &mRenderbuffer);
    glBindRenderbuffer(GL_RENDERBUFFER, mRenderbuffer);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGB8, widthPixels, heightPixels);
    glGenFramebuffers(1, &mFramebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, mFramebuffer);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, mRenderbuffer);
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) {
        mError = "The driver cannot draw into a framebuffer object of this size.";
        return false;
    }
    glViewport(0, 0, widthPixels, heightPixels);
    return true;
}

} // namespace Tavik::Support
