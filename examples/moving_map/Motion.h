#pragma once

#include <moving_map/LocalPlane.h>

#include <optional>

namespace MovingMap {

/// Where an aircraft is and how it moves, as far as that is known.
struct Motion
{
    Position position;
    std::optional<double> altitudeMetres;
    std::optional<double> speedMetresPerSecond; ///< over ground
    std::optional<double> trackDegrees;         ///< over ground, clockwise from true north
    std::optional<double> climbMetresPerSecond;
};

/// Where it has got to after a while, if it has flown straight on at its height; where it was, if its speed or track is
/// not known.
Motion flownOn(Motion motion, double seconds);

} // namespace MovingMap
