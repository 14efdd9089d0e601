#include <moving_map/Airspace.h>

#include <moving_map/Numbers.h>
#include <moving_map/Units.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace MovingMap {

namespace {

struct ClassName
{
    AirspaceClass airspaceClass;
    const char* inPlan;
    const char* onChart;
};

constexpr std::array<ClassName, AirspaceClassCount> ClassNames = {{
    {AirspaceClass::A, "A", "A"},
    {AirspaceClass::B, "B", "B"},
    {AirspaceClass::C, "C", "C"},
    {AirspaceClass::D, "D", "D"},
    {AirspaceClass::E, "E", "E"},
    {AirspaceClass::F, "F", "F"},
    {AirspaceClass::G, "G", "G"},
    {AirspaceClass::Prohibited, "prohibited", "PROHIBITED"},
    {AirspaceClass::Restricted, "restricted", "RESTRICTED"},
    {AirspaceClass::Danger, "danger", "DANGER"},
}};

constexpr double HighestFlightLevel = 600.0;
constexpr double FeetPerFlightLevel = 100.0;
constexpr double LowestFeet = -1500.0;
constexpr double HighestFeet = 60000.0;

// A chord of 2 degrees leaves a circle of 40 miles by 11 metres: two pixels at the smallest range.
constexpr double LongestStepDegrees = 2.0;

constexpr int LatticeEdge = 12; // places looked at, along each edge of an outline's bounds
constexpr std::size_t MostInteriorPoints = 25;

using Point = LocalPlane::Point;

double distanceToSegment(Point p, Point a, Point b)
{
    const Point along = b - a;
    const double length = along.dot(along);
    const double part = length > 0.0 ? std::clamp((p - a).dot(along) / length, 0.0, 1.0) : 0.0;
    return (a + along * part - p).length();
}

/// @return the distance to the outline; negative outside
double clearance(Point p, const std::vector<Point>& outline)
{
    bool inside = false;
    double nearest = std::numeric_limits<double>::infinity();
    Point a = outline.back();
    for (const Point& b : outline) {
        nearest = std::min(nearest, distanceToSegment(p, a, b));
        // An outline is crossed an odd number of times from inside; one end of each edge belongs to it.
        if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) * (b.x - a.x) / (b.y - a.y)) {
            inside = !inside;
        }
        a = b;
    }
    return inside ? nearest : -nearest;
}

Position onCircle(Position centre, double radiusMetres, double bearingDegrees)
{
    return LocalPlane(centre).toPosition(directionOf(bearingDegrees) * radiusMetres);
}

} // namespace

bool parseAirspaceClass(const std::string& text, AirspaceClass& airspaceClass)
{
    const auto* name =
        std::find_if(ClassNames.begin(), ClassNames.end(), [&](const ClassName& n) { return text == n.inPlan; });
    if (name == ClassNames.end()) {
        return false;
    }
    airspaceClass = name->airspaceClass;
    return true;
}

const char* airspaceClassName(AirspaceClass airspaceClass)
{
    return ClassNames[static_cast<std::size_t>(airspaceClass)].onChart;
}

bool parseHeightLimit(const std::string& text, HeightLimit& limit)
{
    double number = 0.0;
    if (text == "ground") {
        limit = {0.0, "GND"};
    } else if (text == "unlimited") {
        limit = {std::numeric_limits<double>::infinity(), "UNL"};
    } else if (text.rfind("FL", 0) == 0 && parseNumber(text.substr(2), 0.0, HighestFlightLevel, number)) {
        limit = {number * FeetPerFlightLevel * MetresPerFoot, "FL" + std::to_string(std::lround(number))};
    } else if (parseNumber(text, LowestFeet, HighestFeet, number)) {
        limit = {number * MetresPerFoot, std::to_string(std::lround(number))};
    } else {
        return false;
    }
    return true;
}

std::vector<Position> arcPoints(Position centre, double radiusMetres, bool clockwise, double fromDegrees,
                                double toDegrees)
{
    double sweep = std::fmod(clockwise ? toDegrees - fromDegrees : fromDegrees - toDegrees, 360.0);
    sweep = sweep < 0.0 ? sweep + 360.0 : sweep;
    const auto steps = static_cast<int>(std::ceil(sweep / LongestStepDegrees));
    std::vector<Position> points = {onCircle(centre, radiusMetres, fromDegrees)};
    for (int i = 1; i <= steps; ++i) {
        const double part = sweep * i / steps;
        points.push_back(onCircle(centre, radiusMetres, fromDegrees + (clockwise ? part : -part)));
    }
    return points;
}

std::vector<Position> circlePoints(Position centre, double radiusMetres)
{
    return arcPoints(centre, radiusMetres, true, 0.0, 360.0 - LongestStepDegrees);
}

std::vector<InteriorPoint> interiorPoints(const std::vector<Position>& outline)
{
    const LocalPlane plane(outline.front());
    std::vector<Point> corners;
    Point low;
    Point high;
    for (const Position& position : outline) {
        corners.push_back(plane.toPoint(position));
        low = {std::min(low.x, corners.back().x), std::min(low.y, corners.back().y)};
        high = {std::max(high.x, corners.back().x), std::max(high.y, corners.back().y)};
    }
    std::vector<InteriorPoint> points;
    for (int i = 0; i < LatticeEdge; ++i) {
        for (int j = 0; j < LatticeEdge; ++j) {
            const Point p(low.x + (high.x - low.x) * (j + 0.5) / LatticeEdge,
                          low.y + (high.y - low.y) * (i + 0.5) / LatticeEdge);
            const double room = clearance(p, corners);
            if (room > 0.0) {
                points.push_back({plane.toPosition(p), room});
            }
        }
    }
    std::sort(points.begin(), points.end(),
              [](const InteriorPoint& a, const InteriorPoint& b) { return a.clearanceMetres > b.clearanceMetres; });
    // Of many, the roomiest would crowd in the middle: every second or third one reaches farther out.
    const std::size_t step = std::max<std::size_t>(points.size() / MostInteriorPoints, 1);
    std::vector<InteriorPoint> spread;
    for (std::size_t i = 0; i < points.size() && spread.size() < MostInteriorPoints; i += step) {
        spread.push_back(points[i]);
    }
    return spread;
}

} // namespace MovingMap
