#include <moving_map/Controls.h>
#include <moving_map/Options.h>

#include <gtest/gtest.h>

using namespace MovingMap;

namespace {

Route shortRoute()
{
    Route route;
    route.start = {45.0, -31.0};
    RouteLeg leg;
    leg.from = route.start;
    leg.to = {46.0, -31.0};
    route.legs.push_back(leg);
    return route;
}

/// An aircraft that flies north, and a map that follows it with the east at the top.
class ControlsTest : public testing::Test
{
protected:
    ControlsTest() : path(shortRoute()), simulation(path, 100.0, 0.0), controls(settings, simulation)
    {
        view.setArea(1000, 600, {500.0f, 200.0f});
        view.setCentre({45.0, -31.0});
        view.setMetresPerPixel(100.0);
        view.setUp(90.0);
    }

    void press(SDL_Keycode key)
    {
        SDL_Event event = {};
        event.type = SDL_KEYDOWN;
        event.key.keysym.sym = key;
        controls.handle(event, view);
    }

    RoutePath path;
    Simulation simulation;
    DisplaySettings settings;
    Controls controls;
    MapView view;
};

} // namespace

TEST_F(ControlsTest, ZoomEndsAtTheSmallestAndLargestRange)
{
    const double before = settings.rangeMiles;
    press(SDLK_PLUS);
    EXPECT_LT(settings.rangeMiles, before);
    press(SDLK_MINUS);
    EXPECT_NEAR(settings.rangeMiles, before, 1e-9);
    for (int i = 0; i < 40; ++i) {
        press(SDLK_MINUS);
    }
    EXPECT_EQ(settings.rangeMiles, LargestRangeMiles);
    SDL_Event wheel = {};
    wheel.type = SDL_MOUSEWHEEL;
    wheel.wheel.y = 100;
    controls.handle(wheel, view);
    EXPECT_EQ(settings.rangeMiles, SmallestRangeMiles);
}

TEST_F(ControlsTest, MapMovesTheWayTheScreenLies)
{
    struct Case
    {
        SDL_Keycode key;
        double course; // of the centre, with east at the top
    };
    for (const Case& c : {Case{SDLK_UP, 90.0}, Case{SDLK_RIGHT, 180.0}, Case{SDLK_DOWN, 270.0}, Case{SDLK_LEFT, 0.0}}) {
        settings.centre.reset();
        press(c.key);
        ASSERT_TRUE(settings.centre.has_value());
        EXPECT_NEAR(std::remainder(planeCourse(view.centre(), *settings.centre) - c.course, 360.0), 0.0, 0.1)
            << c.course;
        EXPECT_NEAR(planeDistance(view.centre(), *settings.centre), 8000.0, 10.0) << c.course;
    }
    // The ground stays under the mouse, which moves more than once in a frame: dragged to the right, the map shows more
    // of what lies to the left.
    SDL_Event drag = {};
    drag.type = SDL_MOUSEMOTION;
    drag.motion.state = SDL_BUTTON_LMASK;
    drag.motion.xrel = 20;
    settings.centre.reset();
    controls.handle(drag, view);
    controls.handle(drag, view);
    EXPECT_NEAR(planeDistance(view.centre(), *settings.centre), 4000.0, 10.0);
    EXPECT_NEAR(std::remainder(planeCourse(view.centre(), *settings.centre), 360.0), 0.0, 0.1);
    press(SDLK_f);
    EXPECT_FALSE(settings.centre.has_value());
    drag.motion.state = 0;
    controls.handle(drag, view);
    EXPECT_FALSE(settings.centre.has_value());
}

TEST_F(ControlsTest, KeysReachTheSimulationAndTheEnd)
{
    press(SDLK_RIGHTBRACKET);
    EXPECT_EQ(simulation.speedFactor(), 2.0);
    press(SDLK_COMMA);
    EXPECT_EQ(simulation.speedFactor(), 1.0);
    press(SDLK_SPACE);
    EXPECT_TRUE(simulation.isPaused());
    press(SDLK_SPACE);
    EXPECT_FALSE(simulation.isPaused());
    press(SDLK_o);
    EXPECT_TRUE(settings.trackUp);
    press(SDLK_c);
    EXPECT_FALSE(settings.layers.shows(Layer::Camera));
    press(SDLK_LEFTBRACKET);
    press(SDLK_PERIOD);
    EXPECT_EQ(simulation.speedFactor(), 1.0);
    press(SDLK_1);
    EXPECT_FALSE(settings.layers.shows(Layer::Relief));
    press(SDLK_KP_9);
    EXPECT_TRUE(settings.layers.shows(Layer::Camera));
    press(SDLK_x);
    EXPECT_FALSE(controls.quit());
    press(SDLK_q);
    EXPECT_TRUE(controls.quit());
}
