#pragma once

#include <string>

namespace MovingMap {

/// What the user asked for on the command line.
struct Options
{
    bool help = false;
    bool trackUp = false;
    bool camera = true;
    bool statistics = false;
    std::string terrain;    ///< folder; empty for the made region
    std::string plan;       ///< file; empty for a plan that suits the terrain
    std::string screenshot; ///< file; empty for none
    int frames = 0;         ///< to draw, 0 for no limit
    int widthPixels = 1280;
    int heightPixels = 800;
    double rangeMiles = 20.0;
    double startSeconds = 0.0;
    double speedFactor = 1.0;
};

constexpr double SmallestRangeMiles = 1.0;
constexpr double LargestRangeMiles = 320.0;

/// @param error  receives one sentence when an argument is unknown or its value is not usable
bool readOptions(int argc, char** argv, Options& options, std::string& error);

/// Options, keys and a word on plans, to standard output. After readOptions.
void printHelp();

} // namespace MovingMap
