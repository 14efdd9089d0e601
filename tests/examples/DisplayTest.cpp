#include <moving_map/Display.h>
#include <support/DtedWriter.h>
#include <support/TemporaryDirectory.h>

#include "../opengl/GlTest.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>

using namespace MovingMap;
using Tavik::Support::Picture;

namespace {

thread_local std::size_t allocations = 0;

} // namespace

// The OpenGL driver's allocations are among those counted, if it makes them on this thread and by these operators.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    ++allocations;
    return std::malloc(size);
}

[[gnu::noinline]] void* operator new(std::size_t size)
{
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

/// Height of the tile at 45 N 7 E: a saw along the meridians, from the sea up.
double heightAt(double post)
{
    const double inTooth = std::fmod(post, 300.0);
    return 10.0 * std::min(inTooth, 300.0 - inTooth);
}

/// A flight north through the tile.
Route northwards()
{
    Route route;
    route.speedMetresPerSecond = 100.0;
    route.startName = "SOUTH";
    route.start = {45.05, 7.5};
    route.startAltitudeMetres = 2000.0;
    RouteLeg leg;
    leg.name = "NORTH";
    leg.from = route.start;
    leg.to = {45.95, 7.5};
    leg.altitudeMetres = 3000.0;
    route.legs.push_back(leg);
    route.stations.push_back({"MIDDLE", {45.5, 7.55}});
    route.airspaces.push_back({"ZONE", AirspaceClass::D, {0.0, "GND"}, {900.0, "3000"}, circlePoints(leg.to, 9000.0)});
    return route;
}

class DisplayTest : public GlTest
{
protected:
    DisplayTest() : route(northwards()), path(route), simulation(path, route.speedMetresPerSecond, 60.0) {}

    static std::string terrain(const std::string& folder)
    {
        Tavik::Support::DtedGrid grid;
        grid.latitudeDegrees = 45;
        grid.longitudeDegrees = 7;
        EXPECT_TRUE(Tavik::Support::tryWriteDted(
            folder + "/N45E007.DT1", grid, [](unsigned int i, unsigned int) { return static_cast<int>(heightAt(i)); }));
        return folder;
    }

    Tavik::Support::TemporaryDirectory directory;
    Route route;
    RoutePath path;
    Simulation simulation;
};

} // namespace

TEST_F(DisplayTest, FramesInWhichNothingChangedTakeNoMemory)
{
    TerrainWorker worker(terrain(directory.path()));
    Display display(route, path, worker);
    FeedPicture feeds;
    feeds.traffic.push_back({"TVK1", {{45.2, 7.5}, 1000.0, 100.0, 90.0, 10.0}, false});
    feeds.isLost[FeedKind::Sbs] = true;
    for (const bool trackUp : {false, true}) {
        DisplaySettings settings;
        settings.trackUp = trackUp;
        settings.rangeMiles = 12.0;
        const auto frame = [&] {
            display.update(settings, simulation, 640, 480, feeds); // room for the camera's picture and the figures
            display.render();
        };
        allocations = 0;
        frame();
        EXPECT_GT(allocations, 0u) << "nothing is counted";
        display.completeTerrain();
        frame(); // draws it for the first time
        frame();
        allocations = 0;
        for (int i = 0; i < 3; ++i) {
            frame();
        }
        EXPECT_EQ(allocations, 0u) << (trackUp ? "track up" : "north up");
    }
}

TEST_F(DisplayTest, ShowsTrafficAndWhichFeedIsLost)
{
    TerrainWorker worker(directory.path()); // no terrain: nothing else has these colours
    Display display(route, path, worker);
    const auto draw = [&](const FeedPicture& feeds) {
        DisplaySettings settings;
        settings.rangeMiles = 7.0; // of 41 pixels
        display.update(settings, simulation, Size, Size, feeds);
        display.render();
        return window().readPicture();
    };
    const auto count = [](const Picture& picture, Color color, MapView::Pixel middle, float reach) {
        int found = 0;
        for (int y = 0; y < Size; ++y) {
            for (int x = 0; x < Size; ++x) {
                const Picture::Pixel p = picture.pixel(x, Size - 1 - y);
                const bool isNear = std::abs(static_cast<float>(x) - middle.x) < reach &&
                                    std::abs(static_cast<float>(y) - middle.y) < reach;
                found += isNear && std::abs(p[0] - 255.0f * color.x) < 12.0f &&
                         std::abs(p[1] - 255.0f * color.y) < 12.0f && std::abs(p[2] - 255.0f * color.z) < 12.0f;
            }
        }
        return found;
    };
    const auto onWindow = [&](Position position) { // the profile lies below the map
        return display.view().toPixel(position) +
               MapView::Pixel(0.0f, static_cast<float>(Size - display.view().height()));
    };
    FeedPicture feeds;
    const Picture plain = draw(feeds);
    EXPECT_EQ(count(plain, Palette::Attention, {}, 1e6f), 0);
    EXPECT_EQ(count(plain, Palette::Traffic, {}, 1e6f), 0);

    int before = 0;
    for (const FeedKind kind : {FeedKind::Nmea, FeedKind::Traffic, FeedKind::Sbs}) {
        feeds.isLost[kind] = true;
        const int amber = count(draw(feeds), Palette::Attention, {}, 1e6f);
        EXPECT_GT(amber, before + 100) << "a line for each feed";
        before = amber;
    }

    struct Case
    {
        const char* name;
        double east;  // degrees from the own ship
        double above; // metres
        bool isOld;
        bool isShown;
        bool isFilled;
    };
    const Case cases[] = {
        {"near", 0.11, 100.0, false, true, true},
        {"far", 0.2, 100.0, false, true, false},
        {"high", 0.11, 1000.0, false, true, false},
        {"too high", 0.11, 4000.0, false, false, false},
        {"not heard lately", 0.11, 100.0, true, true, true},
    };
    feeds.isLost = {};
    const Position own = {45.5, 7.5};
    feeds.ownShip = Motion{own, 1000.0, 100.0, 0.0, 0.0};
    for (const Case& c : cases) {
        const Motion motion = {{own.latDegrees, own.lonDegrees + c.east}, 1000.0 + c.above, 100.0, 90.0, 0.0};
        feeds.traffic = {{"", motion, c.isOld}};
        const Picture picture = draw(feeds);
        const Color color = c.isOld ? Palette::OldTraffic : Palette::Traffic;
        const int drawn = count(picture, color, onWindow(motion.position), 13.0f);
        EXPECT_EQ(drawn > 20, c.isShown) << c.name << " " << drawn;
        EXPECT_EQ(drawn > 130, c.isFilled) << c.name << " " << drawn;
        EXPECT_EQ(count(picture, Palette::Attention, {}, 1e6f), 0) << c.name;
    }
    feeds.isOwnShipLost = true;
    EXPECT_GT(count(draw(feeds), Palette::Attention, onWindow(own), 19.0f), 20) << "hollow and amber";

    const Motion strange[] = {
        {{90.0, 0.0}, 1e5, 1e4, 360.0, -1e4}, {{-90.0, 180.0}, -1e5, 0.0, 0.0, 0.0}, {{0.0, -180.0}, {}, {}, {}, {}}};
    for (const Motion& motion : strange) {
        feeds.ownShip = motion;
        feeds.traffic = {{"12345678", motion, false}};
        draw(feeds);
    }
}

TEST_F(DisplayTest, ProfileIsFilledUpToTheGround)
{
    TerrainWorker worker(terrain(directory.path()));
    RouteProfile profile(path, worker);
    const MapView view;
    for (const double rangeMiles : {1.0, 3.0, 15.0}) {
        Scene scene{route, path, view, simulation.state(), simulation.distanceMetres(), simulation.altitudeMetres()};
        scene.rangeMetres = rangeMiles * 1852.0;
        const double begin = ProfileChart::begin(scene);
        const double end = ProfileChart::end(scene);
        for (profile.update(begin, end); !profile.isComplete(); profile.update(begin, end)) {
            worker.finish();
        }
        ProfileChart chart;
        chart.render(scene, profile, {0, 0, Size, Size});
        const Picture picture = window().readPicture();
        int checked = 0;
        for (int x = 0; x < Size; ++x) {
            const double distance = begin + (end - begin) * (x + 0.5) / Size;
            const double height = heightAt((0.05 + distance / 111319.49) * 1200.0);
            if (distance < 0.0 || distance > path.length() || height < 40.0 ||
                std::abs(chart.toX(6000.0) - static_cast<float>(x)) < 12.0f) {
                continue; // off the path, at sea, or behind the aircraft
            }
            ++checked;
            // Points lie at most four pixels apart, and show the highest ground half-way to the next.
            const double slope = 10.0 / 92.77 * (end - begin) / Size * (chart.toY(1.0) - chart.toY(0.0));
            const int surface = static_cast<int>(chart.toY(height));
            const int margin = 3 + static_cast<int>(2.0 * slope);
            for (int y = 1; y < static_cast<int>(chart.toY(1800.0)); ++y) {
                const Picture::Pixel p = picture.pixel(x, Size - 1 - y);
                const bool isGround = std::max(p[0], p[1]) > p[2];
                const bool isSeaLevel = std::abs(static_cast<float>(y) - chart.toY(0.0)) < 3.0f;
                if (!isSeaLevel && std::abs(y - surface) > margin) {
                    ASSERT_EQ(isGround, y < surface) << rangeMiles << " miles, pixel " << x << " " << y;
                }
            }
        }
        EXPECT_GT(checked, Size / 2);
    }
}
