#pragma once

#include <moving_map/Airspace.h>
#include <moving_map/LocalPlane.h>

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace MovingMap {

/// The values are those that Tavik's turn functions take.
enum class TurnDirection
{
    Left = 0,
    Right = 1,
    Automatic = 2
};

/// What stands at a fix, and is drawn there.
enum class FixKind
{
    Waypoint, ///< a position and nothing more
    Intersection,
    Vor,
    Dme,
    Vortac,
    Ndb,
    Airport,
    Obstacle
};

/// Straight to a position.
struct DirectLeg
{
    Position to;
    bool flyOver = false; ///< turns after passing the waypoint, not before it
};

/// Straight to the place where two courses cross, each flown from a fix named earlier.
struct CrossingLeg
{
    std::string firstFix;
    double firstCourseDegrees = 0.0;
    std::string secondFix;
    double secondCourseDegrees = 0.0;
    bool flyOver = false;
};

/// On a course to a circle about a station, then along the circle to a radial.
struct ArcLeg
{
    std::string station;
    double distanceMetres = 0.0;
    bool clockwise = true;
    double radialDegrees = 0.0;
    std::optional<double> courseDegrees; ///< to the circle; without one, towards the station
};

/// A turn on the spot that ends established on a course.
struct TurnLeg
{
    double courseDegrees = 0.0;
};

struct PlanLeg
{
    std::string name; ///< of the fix at its end
    std::variant<DirectLeg, CrossingLeg, ArcLeg, TurnLeg> kind;
    FixKind fix = FixKind::Waypoint;
    TurnDirection turn = TurnDirection::Automatic;
    std::optional<double> radiusMetres;   ///< of the turn at its end; without one, from the speed
    std::optional<double> altitudeMetres; ///< planned at its end
    int line = 0;                         ///< in the file, for messages
};

struct Station
{
    std::string name;
    Position position;
    FixKind kind = FixKind::Vortac;
};

/// What a pilot files: stations, airspaces, and legs one after the other. The first leg is a DirectLeg: the place of
/// departure.
struct FlightPlan
{
    std::string source;                ///< file name, for messages
    double speedMetresPerSecond = 0.0; ///< over ground
    std::vector<Station> stations;
    std::vector<Airspace> airspaces;
    std::vector<PlanLeg> legs;
};

} // namespace MovingMap
