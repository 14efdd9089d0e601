#pragma once

#include <moving_map/Route.h>

#include <cstddef>
#include <string>
#include <vector>

namespace MovingMap {

/// A point of the line that is flown.
struct PathPoint
{
    Position position;
    double distanceMetres = 0.0; ///< flown since the start
    std::size_t leg = 0;         ///< index into Route::legs
};

/// A fix, where it is passed.
struct PathFix
{
    std::string name;
    FixKind kind = FixKind::Waypoint;
    Position position;
    double distanceMetres = 0.0; ///< flown when the aircraft is over or abeam it
    bool flyOver = false;
};

/// The line that an aircraft flies along a route: its legs, with arcs of circles where it turns.
///
///     RoutePath path(route);
///     RoutePath::State aircraft = path.at(distanceFlown);
class RoutePath
{
public:
    explicit RoutePath(const Route& route);

    struct State
    {
        Position position;
        double trackDegrees = 0.0; ///< clockwise from true north, [0, 360]
        std::size_t leg = 0;
    };

    /// @param distanceMetres  flown; before the start and behind the end it is taken as the start and the end
    State at(double distanceMetres) const;

    /// Planned height: straight climbs and descents from one fix that has an altitude to the next; NaN where no fix of
    /// the route has one.
    double altitudeMetres(double distanceMetres) const;

    bool hasAltitudes() const { return !mAltitudes.empty(); }

    double length() const { return mPoints.back().distanceMetres; }

    /// At least two, in the order in which they are flown.
    const std::vector<PathPoint>& points() const { return mPoints; }

    /// The named fixes, the start among them.
    const std::vector<PathFix>& fixes() const { return mFixes; }

    /// Index of the first fix ahead of a distance flown; the last one where none is.
    std::size_t nextFix(double distanceMetres) const;

private:
    struct PlannedAltitude
    {
        double distanceMetres;
        double altitudeMetres;
    };

    void append(Position position, std::size_t leg);
    void appendCircle(const RouteLeg& leg, std::size_t index, std::vector<Position>& join);
    void appendFix(const RouteLeg& leg, double distanceMetres);
    Position positionAt(double distanceMetres) const;
    std::size_t segmentAt(double distanceMetres) const;

    std::vector<PathPoint> mPoints;
    std::vector<PathFix> mFixes;
    std::vector<PlannedAltitude> mAltitudes;
};

} // namespace MovingMap
