#pragma once

#include <moving_map/LocalPlane.h>

#include <cstddef>
#include <string>
#include <vector>

namespace MovingMap {

/// What an airspace demands of a flight.
enum class AirspaceClass
{
    A,
    B,
    C,
    D,
    E,
    F,
    G,
    Prohibited,
    Restricted,
    Danger
};

constexpr std::size_t AirspaceClassCount = 10;

/// How a class is written in a flight plan: "A" to "G", "prohibited", "restricted", "danger".
/// @return false, with the class left alone, for anything else
bool parseAirspaceClass(const std::string& text, AirspaceClass& airspaceClass);

/// What a label says of the class: a letter, or "PROHIBITED" and the like.
const char* airspaceClassName(AirspaceClass airspaceClass);

/// Lower or upper end of an airspace.
struct HeightLimit
{
    double metres = 0.0; ///< above sea level; infinity where there is no end
    std::string text;    ///< as on a chart: "GND", "4500" feet, "FL95", "UNL"
};

/// Reads "ground", "unlimited", a flight level such as "FL95", or feet.
/// @return false, with limit left alone, for anything else
bool parseHeightLimit(const std::string& text, HeightLimit& limit);

/// A volume with upright walls.
struct Airspace
{
    std::string name;
    AirspaceClass airspaceClass = AirspaceClass::G;
    HeightLimit floor;
    HeightLimit ceiling;
    std::vector<Position> outline; ///< at least three corners; the last is joined to the first
};

/// Points along an arc in the plane about its centre, both ends among them, at most 2 degrees apart.
/// @param fromDegrees,toDegrees  bearings from the centre; where they are equal, the arc is one point
std::vector<Position> arcPoints(Position centre, double radiusMetres, bool clockwise, double fromDegrees,
                                double toDegrees);

/// Points of a whole circle, each once, 2 degrees apart, clockwise from north.
std::vector<Position> circlePoints(Position centre, double radiusMetres);

/// A place well inside an outline.
struct InteriorPoint
{
    Position position;
    double clearanceMetres = 0.0; ///< to the outline
};

/// Places inside an outline where a label can stand, the roomiest first; at most 25, spread over the area. There may be
/// none in an outline that is very narrow.
std::vector<InteriorPoint> interiorPoints(const std::vector<Position>& outline);

} // namespace MovingMap
