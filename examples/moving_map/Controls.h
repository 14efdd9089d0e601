#pragma once

#include <moving_map/Display.h>
#include <moving_map/Simulation.h>

#include <SDL.h>

namespace MovingMap {

/// Turns keys and the mouse into changes of display and simulation; Options.h lists the keys.
class Controls
{
public:
    Controls(DisplaySettings& settings, Simulation& simulation) : mSettings(settings), mSimulation(simulation) {}

    /// @param view  the map as it is on the screen
    void handle(const SDL_Event& event, const MapView& view);

    bool quit() const { return mQuit; }

private:
    void handleKey(SDL_Keycode key, const MapView& view);
    void zoom(double factor);
    void pan(float rightPixels, float upPixels, const MapView& view);

    DisplaySettings& mSettings;
    Simulation& mSimulation;
    bool mQuit = false;
};

} // namespace MovingMap
