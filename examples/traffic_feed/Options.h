#pragma once

#include <feeds/Messages.h>

#include <string>

namespace TrafficFeed {

/// What the user asked for on the command line.
struct Options
{
    bool help = false;
    std::string host = "127.0.0.1"; ///< that the own ship's positions are sent to
    int ownShipPort = Feeds::OwnShipPort;
    int trafficPort = Feeds::TrafficPort; ///< 0 for one that the system chooses
    std::string plan;                     ///< file; empty for the built-in plan
    int aircraft = 6;                     ///< besides the own ship
    double startSeconds = 0.0;
    double durationSeconds = 0.0; ///< 0 for no end
};

/// @param error  receives one sentence when an argument is unknown or its value is not usable
bool readOptions(int argc, char** argv, Options& options, std::string& error);

/// To standard output. After readOptions.
void printHelp();

} // namespace TrafficFeed
