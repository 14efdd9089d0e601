#pragma once

#include <moving_map/RoutePath.h>

#include <cstddef>
#include <optional>

namespace MovingMap {

/// How far along a path an aircraft is that is flown by somebody else.
///
/// It is where the path comes nearest to the aircraft: near the place that was found before, so that it does not jump
/// where the path crosses itself, and anywhere after the aircraft itself has jumped.
class RouteProgress
{
public:
    /// The path must outlive this.
    explicit RouteProgress(const RoutePath& path) : mPath(path) {}

    /// @return the distance from the start along the path, in metres
    double update(Position aircraft);

private:
    double nearestBetween(Position aircraft, double beginMetres, double endMetres);

    const RoutePath& mPath;
    std::optional<Position> mAircraft;
    double mDistanceMetres = 0.0;
};

} // namespace MovingMap
