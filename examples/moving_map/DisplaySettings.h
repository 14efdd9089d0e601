#pragma once

#include <moving_map/Layers.h>
#include <moving_map/LocalPlane.h>

#include <optional>

namespace MovingMap {

constexpr double SmallestRangeMiles = 1.0;
constexpr double LargestRangeMiles = 320.0;

/// What the user can change about the display.
struct DisplaySettings
{
    double rangeMiles = 20.0;
    bool trackUp = false;
    Layers layers;
    std::optional<Position> centre; ///< of the map; without one, it follows the aircraft
};

} // namespace MovingMap
