#pragma once

#include <moving_map/FlightPlan.h>

#include <optional>
#include <string>
#include <vector>

namespace MovingMap {

struct Circle
{
    Position centre;
    double radiusMetres = 0.0;
    bool clockwise = true; ///< the way it is flown
};

/// One leg whose ends are known.
struct RouteLeg
{
    std::string name; ///< of the fix at its end; empty for the place where an arc is joined
    FixKind fix = FixKind::Waypoint;
    Position from;
    Position to;
    std::optional<Circle> circle; ///< flown along, instead of straight on
    bool flyOver = false;         ///< the turn at its end begins over the fix
    TurnDirection turn = TurnDirection::Automatic;
    double turnRadiusMetres = 0.0;
    std::optional<double> altitudeMetres;

    /// Course at its end, clockwise from north, degrees.
    double courseAtEnd() const;
};

/// A flight plan whose fixes have positions: crossings are computed, arcs have an entry and an exit.
struct Route
{
    double speedMetresPerSecond = 0.0;
    std::vector<Station> stations;
    std::vector<Airspace> airspaces;
    std::string startName;
    FixKind startFix = FixKind::Waypoint;
    Position start;
    std::optional<double> startAltitudeMetres;
    std::vector<RouteLeg> legs; ///< at least one; each begins where the one before it ends
};

/// @param error  receives one sentence, with the plan's source and line, when the plan cannot be flown: courses that do
///               not cross, a circle that is missed, a leg of more than 600 miles
bool resolveRoute(const FlightPlan& plan, Route& route, std::string& error);

/// Radius of a turn at 25 degrees of bank, metres.
double turnRadius(double speedMetresPerSecond);

} // namespace MovingMap
