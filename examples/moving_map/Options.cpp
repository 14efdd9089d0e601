#include <moving_map/Options.h>

#include <moving_map/Numbers.h>
#include <tavik/misc/CmdLine.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

namespace MovingMap {

namespace {

struct Parameter
{
    const char* name;
    const char* description;
    const char* defaultValue;
};

constexpr std::array<Parameter, 13> Parameters = {{
    {"--frames", "number of frames to draw, 1/60 s of flight apart, without a visible window", ""},
    {"--nmea", "UDP port for NMEA 0183 sentences of a satellite receiver, 1 to 65535", ""},
    {"--own-ship", "UDP port for the own ship's positions from traffic_feed, 1 to 65535", ""},
    {"--plan", "flight plan file", ""},
    {"--range", "miles from the aircraft to the outer ring, 1 to 320", "20"},
    {"--sbs", "HOST or HOST:PORT of a transponder receiver's lines, port 30003 if not told", ""},
    {"--screenshot", "PNG file for the last frame, drawn without a visible window", ""},
    {"--settings", "file of the settings, also for --frames and --screenshot", ""},
    {"--size", "width and height of the window in pixels, 64 to 8192 each", "1280x800"},
    {"--speed", "times faster than real time, 0.0625 to 256", "1"},
    {"--terrain", "folder of DTED level 1 or zipped SRTM tiles", ""},
    {"--time", "seconds of flight before the first frame, 0 to 1000000", "0"},
    {"--traffic", "HOST or HOST:PORT of traffic_feed's other aircraft, port 4101 if not told", ""},
}};

constexpr int MostFrames = 1'000'000;

/// A parameter at the very end has no value, and the command line would keep its default without a word.
const char* parameterWithoutValue(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool takesNext = std::any_of(Parameters.begin(), Parameters.end(),
                                           [&](const Parameter& parameter) { return argument == parameter.name; });
        if (takesNext && ++i == argc) {
            return argv[i - 1];
        }
    }
    return nullptr;
}

std::string valueOf(const char* name)
{
    std::string value;
    Tavik::Misc::CmdLine::instance().getParameter(name, value);
    return value;
}

bool isGiven(const char* name)
{
    return Tavik::Misc::CmdLine::instance().getSwitch(name);
}

/// Reads numbers from parameters that are given, and keeps the first complaint.
class NumberReader
{
public:
    explicit NumberReader(std::string& error) : mError(error) {}

    template <typename Number>
    void read(const char* name, Number lowest, Number highest, Number& number)
    {
        check(name, !isGiven(name) || parseNumber(valueOf(name), lowest, highest, number));
    }

    /// For example "1280x800".
    void readSize(const char* name, int& width, int& height)
    {
        const std::string text = valueOf(name);
        const std::size_t cross = text.find('x');
        check(name, !isGiven(name) ||
                        (cross != std::string::npos &&
                         parseNumber(text.substr(0, cross), SmallestWindowPixels, LargestWindowPixels, width) &&
                         parseNumber(text.substr(cross + 1), SmallestWindowPixels, LargestWindowPixels, height)));
    }

private:
    void check(const char* name, bool good)
    {
        if (!good && mError.empty()) {
            const auto* parameter = std::find_if(Parameters.begin(), Parameters.end(),
                                                 [name](const Parameter& p) { return std::string(p.name) == name; });
            mError = "the value '" + valueOf(name) + "' of " + name + " is not usable: " + parameter->description;
        }
    }

    std::string& mError;
};

} // namespace

bool readOptions(int argc, char** argv, Options& options, std::string& error)
{
    auto& commandLine = Tavik::Misc::CmdLine::instance();
    commandLine.addSwitch("--help", "tells options and keys, and ends");
    commandLine.addSwitch("--no-camera", "begins without the view from the aircraft's nose");
    commandLine.addSwitch("--no-settings", "reads and writes no settings");
    commandLine.addSwitch("--north-up", "begins with north, not the track, at the top");
    commandLine.addSwitch("--statistics", "prints frame times and terrain work at the end");
    commandLine.addSwitch("--track-up", "begins with the track, not north, at the top");
    for (const Parameter& parameter : Parameters) {
        commandLine.addParameter(parameter.name, parameter.description, parameter.defaultValue);
    }
    if (!commandLine.parse(argc, argv)) {
        error = "an option is not known; --help lists them";
        return false;
    }
    if (const char* name = parameterWithoutValue(argc, argv)) {
        error = std::string(name) + " needs a value; --help tells which";
        return false;
    }
    options.help = isGiven("--help");
    options.statistics = isGiven("--statistics");
    options.noSettings = isGiven("--no-settings");
    options.namesFeeds = isGiven("--own-ship") || isGiven("--nmea") || isGiven("--traffic") || isGiven("--sbs");
    options.terrain = valueOf("--terrain");
    options.plan = valueOf("--plan");
    options.screenshot = valueOf("--screenshot");
    options.settings = valueOf("--settings");

    NumberReader numbers(error);
    numbers.read("--frames", 1, MostFrames, options.frames);
    numbers.read("--time", 0.0, 1e6, options.startSeconds);
    numbers.read("--speed", 0.0625, 256.0, options.speedFactor);
    return error.empty();
}

bool overrideSettings(Settings& settings, std::string& error)
{
    DisplaySettings& display = settings.display;
    if (isGiven("--north-up")) {
        display.trackUp = false;
    }
    if (isGiven("--track-up")) {
        display.trackUp = true;
    }
    if (isGiven("--no-camera")) {
        display.layers.show(Layer::Camera, false);
    }
    NumberReader numbers(error);
    FeedSources& feeds = settings.feeds;
    numbers.read("--own-ship", 1, LargestPort, feeds.ownShipPort);
    numbers.read("--nmea", 1, LargestPort, feeds.nmeaPort);
    for (const auto& [name, server] : {std::pair("--traffic", &feeds.traffic), std::pair("--sbs", &feeds.sbs)}) {
        if (isGiven(name)) {
            *server = valueOf(name);
        }
    }
    numbers.readSize("--size", settings.widthPixels, settings.heightPixels);
    numbers.read("--range", SmallestRangeMiles, LargestRangeMiles, display.rangeMiles);
    return error.empty();
}

void printHelp()
{
    Tavik::Misc::CmdLine::instance().printUsage();
    std::puts("\n"
              "Keys:\n"
              "  + -         zoom in and out (also the mouse wheel)\n"
              "  arrows      move the map (also by dragging it)\n"
              "  F           follow the aircraft again\n"
              "  O           north up or track up\n"
              "  1 to 9      on and off: relief, contours, airspaces, symbols, compass rose, names, figures, profile,\n"
              "              the view from the aircraft's nose (also C)\n"
              "  space       stop and go on\n"
              "  [ ]         slower and faster (also comma and full stop)\n"
              "  Q, Escape   end\n"
              "\n"
              "A flight plan is a text file with one entry a line. Positions are decimal degrees, south and west\n"
              "negative; distances nautical miles, heights feet, courses degrees from true north:\n"
              "  speed   KNOTS\n"
              "  station NAME LAT LON [KIND]\n"
              "  start   NAME LAT LON\n"
              "  to      NAME LAT LON\n"
              "  cross   NAME FIX COURSE FIX COURSE      where two courses cross\n"
              "  arc     NAME STATION DISTANCE clockwise|counterclockwise RADIAL\n"
              "  turn    NAME COURSE                     on the spot, to a course\n"
              "and behind a leg, where they fit: altitude FEET, flyover, left, right, radius DISTANCE, course COURSE,\n"
              "KIND: intersection, vor, dme, vortac, ndb, airport, obstacle.\n"
              "An airspace has its boundary below it, a circle or corners and curves:\n"
              "  airspace NAME CLASS FLOOR CEILING       class A to G, prohibited, restricted, danger\n"
              "  circle   LAT LON RADIUS\n"
              "  corner   LAT LON\n"
              "  curve    LAT LON RADIUS clockwise|counterclockwise RADIAL RADIAL\n"
              "with floor and ceiling in feet, as flight level FL95, or as 'ground' and 'unlimited'.\n"
              "'#' begins a comment.\n"
              "\n"
              "Range, orientation, layers, colours and feeds are kept in a file that can be edited, --settings FILE\n"
              "or else tavik/moving_map.xml in $XDG_CONFIG_HOME or ~/.config; docs/settings.md explains it. Options\n"
              "win over the file. Pictures and --frames ignore the user's own file.\n"
              "\n"
              "Without --terrain the map shows an invented region, whose tiles are made at the first start.\n"
              "Without --plan the aircraft flies a plan laid out for the terrain.\n"
              "With --own-ship or --nmea the aircraft is where that feed tells; --traffic and --sbs show others about\n"
              "it. With a feed, frames that are not shown in a window are drawn 60 a second.\n"
              "Where there is no display, the map is drawn into moving_map.png.");
}

} // namespace MovingMap
