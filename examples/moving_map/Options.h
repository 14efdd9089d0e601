#pragma once

#include <moving_map/Settings.h>

#include <string>

namespace MovingMap {

/// What the user asked for on the command line.
struct Options
{
    bool help = false;
    bool statistics = false;
    bool noSettings = false;
    bool namesFeeds = false; ///< which have to be there then
    std::string terrain;     ///< folder; empty for the made region
    std::string plan;        ///< file; empty for a plan that suits the terrain
    std::string screenshot;  ///< file; empty for none
    std::string settings;    ///< file; empty for the user's own
    int frames = 0;          ///< to draw, 0 for no limit
    double startSeconds = 0.0;
    double speedFactor = 1.0;
};

/// @param error  receives one sentence when an argument is unknown or its value is not usable
bool readOptions(int argc, char** argv, Options& options, std::string& error);

/// Replaces the settings that the command line names. After readOptions.
/// @param error  as there
bool overrideSettings(Settings& settings, std::string& error);

/// Options, keys and a word on plans, to standard output. After readOptions.
void printHelp();

} // namespace MovingMap
