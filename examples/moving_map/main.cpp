#include <moving_map/BuiltInPlan.h>
#include <moving_map/Controls.h>
#include <moving_map/Display.h>
#include <moving_map/FeedSources.h>
#include <moving_map/FeedWorker.h>
#include <moving_map/FrameStatistics.h>
#include <moving_map/Options.h>
#include <moving_map/PlanLayout.h>
#include <moving_map/PlanReader.h>
#include <moving_map/Route.h>
#include <moving_map/SettingsFile.h>
#include <support/MadeTerrain.h>
#include <support/Window.h>
#include <tavik/filesystem/Directory.h>
#include <tavik/opengl/GlHandler.h>

#include <GL/gl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>

namespace MovingMap {

namespace {

using Tavik::Support::Window;

constexpr int ExitUsage = 2;
constexpr double FixedFrameSeconds = 1.0 / 60.0;
constexpr auto FixedFrame =
    std::chrono::duration_cast<std::chrono::steady_clock::duration>(std::chrono::duration<double>(FixedFrameSeconds));
constexpr double LongestFrameSeconds = 0.25; // after a pause of the whole program the aircraft does not jump
constexpr const char* DefaultPicture = "moving_map.png";

int fail(const std::string& what, int exitCode = EXIT_FAILURE)
{
    std::fprintf(stderr, "moving_map: %s\n", what.c_str());
    return exitCode;
}

/// The folder of tiles to be shown.
bool findTerrain(const Options& options, std::string& folder, std::string& error)
{
    if (options.terrain.empty()) {
        folder = Tavik::Support::MadeTerrain::cachedDirectory();
        error = "no place to write the made terrain to";
        return !folder.empty();
    }
    folder = options.terrain;
    std::error_code ignored;
    if (!std::filesystem::is_directory(folder, ignored)) {
        error = "there is no folder '" + folder + "'";
        return false;
    }
    return true;
}

bool findPlan(const Options& options, const std::string& folder, TerrainWorker& worker, FlightPlan& plan,
              std::string& error)
{
    if (!options.plan.empty()) {
        return readPlanFile(options.plan, plan, error);
    }
    if (options.terrain.empty()) {
        return readPlan(BuiltInPlan, "built-in plan", plan, error);
    }
    const TerrainCells cells = terrainCells(folder);
    if (cells.corners.empty()) {
        error = "there are no terrain tiles in '" + folder +
                "' to lay a plan over (between 84 S and 84 N, off the antimeridian); --plan can name one";
        return false;
    }
    worker.post([&plan, &cells](Terrain& terrain) -> TerrainWorker::Delivery {
        plan = layOutPlan(cells, [&terrain](double lat, double lon) { return terrain.height(lat, lon); });
        return [] {};
    });
    worker.finish();
    return true;
}

/// Draws frame after frame: for as long as the user likes, or a fixed number of them.
class Program
{
public:
    /// @param settings  which the user changes
    Program(const Options& options, DisplaySettings& settings, Window& window, Display& display, Simulation& simulation,
            FeedWorker& feeds)
        : mOptions(options), mSettings(settings), mWindow(window), mDisplay(display), mSimulation(simulation),
          mFeeds(feeds)
    {}

    /// Until the user ends the program.
    int runInteractive()
    {
        Controls controls(mSettings, mSimulation);
        Stopwatch stopwatch;
        while (!controls.quit()) {
            SDL_Event event;
            while (mWindow.pollEvent(event)) {
                controls.handle(event, mDisplay.view());
            }
            update();
            mDisplay.render();
            mWindow.swap();
            const FrameTime time = stopwatch.elapsed();
            stopwatch.restart();
            mStatistics.add(time);
            advance(std::min(time.seconds, LongestFrameSeconds));
        }
        printStatistics();
        return checkGlError();
    }

    /// Frames that depend on nothing but the options, and the feeds, whose time they keep; the last one into a picture,
    /// where one is wanted.
    int runFixed(const std::string& picture)
    {
        const int frames = std::max(mOptions.frames, 1);
        auto next = std::chrono::steady_clock::now();
        for (int frame = 0; frame < frames; ++frame) {
            const bool last = frame + 1 == frames;
            Stopwatch stopwatch;
            update();
            if (frame == 0 || last) {
                mDisplay.completeTerrain();
                stopwatch.restart(); // waiting for terrain is no part of a frame
            }
            mDisplay.render();
            glFinish();
            mStatistics.add(stopwatch.elapsed());
            if (checkGlError() != EXIT_SUCCESS) {
                return EXIT_FAILURE;
            }
            if (last && !picture.empty()) {
                if (!mWindow.readPicture().writePng(picture)) {
                    return fail("cannot write the picture '" + picture + "'");
                }
                // On a line of its own: what FreeType's start prints has no line end.
                std::printf("\nwrote %s\n", std::filesystem::absolute(picture).c_str());
            }
            mWindow.swap();
            advance(FixedFrameSeconds);
            if (mFeeds.hasAny()) {
                next += FixedFrame;
                std::this_thread::sleep_until(next);
            }
        }
        printStatistics();
        return EXIT_SUCCESS;
    }

private:
    void update()
    {
        mFeeds.show(mFeedPicture);
        mDisplay.update(mSettings, mSimulation, mWindow.widthPixels(), mWindow.heightPixels(), mFeedPicture);
    }

    /// An aircraft that comes from a feed is not simulated.
    void advance(double seconds)
    {
        if (!mFeedPicture.hasOwnShip) {
            mSimulation.advance(seconds);
        }
    }

    static int checkGlError()
    {
        const unsigned int error = Window::takeGlError();
        return error == GL_NO_ERROR ? EXIT_SUCCESS : fail("OpenGL reports error " + std::to_string(error));
    }

    void printStatistics() const
    {
        if (!mOptions.statistics) {
            return;
        }
        mStatistics.print();
        const TerrainCache::Work& work = mDisplay.terrain().work();
        std::printf("terrain blocks %zu, mean %.2f ms, worst %.2f ms\n", work.blocks,
                    1e3 * work.totalSeconds / static_cast<double>(std::max<std::size_t>(work.blocks, 1)),
                    1e3 * work.longestSeconds);
    }

    const Options& mOptions;
    DisplaySettings& mSettings;
    Window& mWindow;
    Display& mDisplay;
    Simulation& mSimulation;
    FeedWorker& mFeeds;
    FeedPicture mFeedPicture;
    FrameStatistics mStatistics;
};

/// Whether frames depend on nothing but the command line and the files that it names.
bool isFixed(const Options& options)
{
    return !options.screenshot.empty() || options.frames > 0;
}

std::string settingsPath(const Options& options)
{
    if (options.noSettings) {
        return {};
    }
    return !options.settings.empty() || isFixed(options) ? options.settings : SettingsFile::usualPath();
}

/// @return null where one of the feeds cannot be had
std::unique_ptr<FeedWorker> startFeeds(const FeedSources& sources, std::string& error)
{
    FeedSettings settings;
    if (!findFeeds(sources, settings, error)) {
        return nullptr;
    }
    auto feeds = std::make_unique<FeedWorker>(settings);
    error = feeds->error();
    return error.empty() ? std::move(feeds) : nullptr;
}

/// @param settings  those of the beginning, and afterwards those of the end
int run(const Options& options, Settings& settings)
{
    std::string folder;
    std::string error;
    if (!findTerrain(options, folder, error)) {
        return fail(error);
    }
    TerrainWorker worker(folder);
    FlightPlan plan;
    Route route;
    if (!findPlan(options, folder, worker, plan, error) || !resolveRoute(plan, route, error)) {
        return fail(error);
    }
    std::unique_ptr<FeedWorker> feeds = startFeeds(settings.feeds, error);
    if (feeds == nullptr) {
        if (options.namesFeeds) {
            return fail(error);
        }
        fail(error + ", so that the simulation flies; the settings name that feed");
        feeds = std::make_unique<FeedWorker>(FeedSettings());
    }
    const bool fixed = isFixed(options);
    Window window("Moving map", settings.widthPixels, settings.heightPixels,
                  fixed ? Window::Visibility::Hidden : Window::Visibility::Shown);
    if (!window.isOpen()) {
        return fail(window.error());
    }
    Tavik::OpenGL::GlHandler::instance();

    const RoutePath path(route);
    Simulation simulation(path, route.speedMetresPerSecond, options.startSeconds);
    simulation.setSpeedFactor(options.speedFactor);
    Display display(route, path, worker, settings.colors);
    Program program(options, settings.display, window, display, simulation, *feeds);
    if (fixed || window.isHeadless()) {
        return program.runFixed(fixed ? options.screenshot : DefaultPicture);
    }
    return program.runInteractive();
}

} // namespace

} // namespace MovingMap

int main(int argc, char** argv)
{
    MovingMap::Options options;
    std::string error;
    if (!MovingMap::readOptions(argc, argv, options, error)) {
        return MovingMap::fail(error, MovingMap::ExitUsage);
    }
    if (options.help) {
        MovingMap::printHelp();
        return EXIT_SUCCESS;
    }
    MovingMap::SettingsFile file(MovingMap::settingsPath(options));
    MovingMap::Settings settings = file.read();
    if (!MovingMap::overrideSettings(settings, error)) {
        return MovingMap::fail(error, MovingMap::ExitUsage);
    }
    const MovingMap::Settings begun = settings;
    const int exitCode = MovingMap::run(options, settings);
    if (exitCode == EXIT_SUCCESS) {
        file.write(begun, settings);
    }
    return exitCode;
}
