#include <moving_map/Controls.h>

#include <algorithm>
#include <cmath>

namespace MovingMap {

namespace {

const double ZoomStep = std::sqrt(2.0);
constexpr float PanPixels = 80.0f;
constexpr double LargestLatitude = 85.0;

/// The mouse moves in units of the screen, of which a high-density screen has fewer than pixels.
float pixelsPerUnit(Uint32 windowId)
{
    SDL_Window* window = SDL_GetWindowFromID(windowId);
    int units = 0;
    int pixels = 0;
    if (window != nullptr) {
        SDL_GetWindowSize(window, &units, nullptr);
        SDL_GL_GetDrawableSize(window, &pixels, nullptr);
    }
    return units > 0 && pixels > 0 ? static_cast<float>(pixels) / static_cast<float>(units) : 1.0f;
}

} // namespace

void Controls::handle(const SDL_Event& event, const MapView& view)
{
    switch (event.type) {
    case SDL_QUIT:
        mQuit = true;
        break;
    case SDL_KEYDOWN:
        handleKey(event.key.keysym.sym, view);
        break;
    case SDL_MOUSEWHEEL:
        zoom(std::pow(ZoomStep, -event.wheel.y));
        break;
    case SDL_MOUSEMOTION:
        if ((event.motion.state & SDL_BUTTON_LMASK) != 0) {
            const float scale = pixelsPerUnit(event.motion.windowID);
            pan(-scale * static_cast<float>(event.motion.xrel), scale * static_cast<float>(event.motion.yrel), view);
        }
        break;
    default:
        break;
    }
}

void Controls::handleKey(SDL_Keycode key, const MapView& view)
{
    for (const int firstLayerKey : {SDLK_1, SDLK_KP_1}) { // the keys of digits follow each other
        if (key >= firstLayerKey && key < firstLayerKey + static_cast<int>(LayerCount)) {
            mSettings.layers.toggle(static_cast<Layer>(key - firstLayerKey));
            return;
        }
    }
    switch (key) {
    case SDLK_PLUS:
    case SDLK_EQUALS: // the same key without shift on many keyboards
    case SDLK_KP_PLUS:
        zoom(1.0 / ZoomStep);
        break;
    case SDLK_MINUS:
    case SDLK_KP_MINUS:
        zoom(ZoomStep);
        break;
    case SDLK_LEFT:
        pan(-PanPixels, 0.0f, view);
        break;
    case SDLK_RIGHT:
        pan(PanPixels, 0.0f, view);
        break;
    case SDLK_UP:
        pan(0.0f, PanPixels, view);
        break;
    case SDLK_DOWN:
        pan(0.0f, -PanPixels, view);
        break;
    case SDLK_f:
        mSettings.centre.reset();
        break;
    case SDLK_o:
        mSettings.trackUp = !mSettings.trackUp;
        break;
    case SDLK_c:
        mSettings.layers.toggle(Layer::Camera);
        break;
    case SDLK_SPACE:
        mSimulation.setPaused(!mSimulation.isPaused());
        break;
    case SDLK_LEFTBRACKET:
    case SDLK_COMMA: // many keyboards have no keys of their own for brackets
        mSimulation.setSpeedFactor(mSimulation.speedFactor() / 2.0);
        break;
    case SDLK_RIGHTBRACKET:
    case SDLK_PERIOD:
        mSimulation.setSpeedFactor(mSimulation.speedFactor() * 2.0);
        break;
    case SDLK_q:
    case SDLK_ESCAPE:
        mQuit = true;
        break;
    default:
        break;
    }
}

void Controls::zoom(double factor)
{
    mSettings.rangeMiles = std::clamp(mSettings.rangeMiles * factor, SmallestRangeMiles, LargestRangeMiles);
}

/// Moves the map's centre by pixels of the screen, from where other events of the same frame have moved it to; from
/// then on the map does not follow the aircraft.
void Controls::pan(float rightPixels, float upPixels, const MapView& view)
{
    const MapView::Pixel centre = view.toPixel(mSettings.centre.value_or(view.centre()));
    Position position = view.toPosition({centre.x + rightPixels, centre.y + upPixels});
    position.latDegrees = std::clamp(position.latDegrees, -LargestLatitude, LargestLatitude);
    position.lonDegrees = std::clamp(position.lonDegrees, -180.0, 180.0);
    mSettings.centre = position;
}

} // namespace MovingMap
