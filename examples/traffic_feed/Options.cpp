#include <traffic_feed/Options.h>

#include <moving_map/Numbers.h>
#include <tavik/misc/CmdLine.h>
#include <traffic_feed/Flights.h>

#include <cstdio>

namespace TrafficFeed {

namespace {

constexpr int LargestPort = 65535;

/// The value of a parameter, if it is a number of that range; the number stays as it is where there is no value.
template <typename Number>
void readNumber(const char* name, Number lowest, Number highest, Number& number, std::string& error)
{
    std::string text;
    if (Tavik::Misc::CmdLine::instance().getParameter(name, text) &&
        !MovingMap::parseNumber(text, lowest, highest, number) && error.empty()) {
        error = "the value '" + text + "' of " + name + " is not usable; --help tells its range";
    }
}

} // namespace

bool readOptions(int argc, char** argv, Options& options, std::string& error)
{
    auto& commandLine = Tavik::Misc::CmdLine::instance();
    commandLine.addSwitch("--help", "tells the options, and ends");
    commandLine.addParameter("--aircraft", "aircraft besides the own ship, 0 to 30", "6");
    commandLine.addParameter("--duration", "seconds to run, up to 1000000; 0 until it is interrupted", "0");
    commandLine.addParameter("--host", "host that the own ship's positions are sent to", options.host);
    commandLine.addParameter("--own-ship-port", "its UDP port, 1 to 65535", std::to_string(options.ownShipPort));
    commandLine.addParameter("--plan", "flight plan file that the own ship flies", "");
    commandLine.addParameter("--time", "seconds of flight before the start, 0 to 1000000", "0");
    commandLine.addParameter("--traffic-port", "TCP port that serves the other aircraft; 0 for any that is free",
                             std::to_string(options.trafficPort));
    if (!commandLine.parse(argc, argv)) {
        error = "an option is not known; --help lists them";
        return false;
    }
    options.help = commandLine.getSwitch("--help");
    commandLine.getParameter("--host", options.host);
    commandLine.getParameter("--plan", options.plan);
    readNumber("--aircraft", 0, Flights::MostTraffic, options.aircraft, error);
    readNumber("--duration", 0.0, 1e6, options.durationSeconds, error);
    readNumber("--own-ship-port", 1, LargestPort, options.ownShipPort, error);
    readNumber("--time", 0.0, 1e6, options.startSeconds, error);
    readNumber("--traffic-port", 0, LargestPort, options.trafficPort, error);
    return error.empty();
}

void printHelp()
{
    std::puts("Flies an aircraft along a plan, and others about it, for the moving map: moving_map --own-ship 4100\n"
              "--traffic 127.0.0.1:4101 shows them.\n");
    Tavik::Misc::CmdLine::instance().printUsage();
}

} // namespace TrafficFeed
