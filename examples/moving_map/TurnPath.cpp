#include <moving_map/TurnPath.h>

#include <moving_map/Units.h>
#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/Intersections.h>
#include <tavik/geodetic/Turns.h>
#include <tavik/math/PlaneGeometry.h>

#include <algorithm>
#include <cmath>

namespace MovingMap {

namespace {

using Point = LocalPlane::Point;

// Below this change of course a turn is not worth an arc, as for Tavik's fly-over turns.
constexpr double SmallestTurnDegrees = 3.0;

// A turn before the fix begins the farther from it the sharper it is: at this angle 2.4 radii, towards 180 degrees
// without end.
constexpr double LargestEarlyTurnDegrees = 135.0;

Position midway(Position a, Position b)
{
    return {0.5 * (a.latDegrees + b.latDegrees), 0.5 * (a.lonDegrees + b.lonDegrees)};
}

std::vector<Position> toPositions(const LocalPlane& plane, const std::vector<Point>& points)
{
    std::vector<Position> positions;
    positions.reserve(points.size());
    for (const Point& point : points) {
        positions.push_back(plane.toPosition(point));
    }
    return positions;
}

/// @param from  a position on the inbound course
std::vector<Position> flyOver(const RouteLeg& leg, Position from, Position next)
{
    const LocalPlane plane(leg.to);
    bool limited = false;
    return toPositions(plane,
                       Tavik::Geodetic::calcFlyOverPoints(plane.toPoint(from), {}, plane.toPoint(next),
                                                          leg.turnRadiusMetres, static_cast<int>(leg.turn), limited));
}

std::vector<Position> flyBy(const RouteLeg& leg, Position from, Position next)
{
    const LocalPlane plane(leg.to);
    bool limited = false;
    return toPositions(plane,
                       Tavik::Geodetic::calcFlyByPoints(plane.toPoint(from), {}, plane.toPoint(next),
                                                        leg.turnRadiusMetres, static_cast<int>(leg.turn), limited));
}

/// A position that a circle's tangent at the end of the leg comes from.
Position behindEnd(const RouteLeg& leg)
{
    return LocalPlane(leg.to).toPosition(directionOf(leg.courseAtEnd()) * -leg.circle->radiusMetres);
}

/// The arc of a given radius that leads from a straight line into a circle and touches both.
/// @param from      a position on the line
/// @param entry     where the line meets the circle
std::vector<Position> straightToCircle(Position from, Position entry, const Circle& circle, double radius)
{
    const LocalPlane plane(circle.centre);
    const Point start = plane.toPoint(from);
    const Point fix = plane.toPoint(entry);
    const double course = courseOf(fix - start);
    const double tangent = courseOf(fix) + (circle.clockwise ? 90.0 : -90.0);
    const double change = Tavik::Geodetic::getHeadingDifference(course, tangent);
    if (std::abs(change) < SmallestTurnDegrees) {
        return {entry};
    }
    // The centre of the turn lies beside the line, and as far inside or outside the circle as beside the line.
    const bool right = change > 0.0;
    const double centreDistance = circle.radiusMetres + (right == circle.clockwise ? -radius : radius);
    // The line may meet the circle twice: seen from beyond the entry, its own crossing is the nearer one.
    const Point along = directionOf(course);
    const double beyond = (fix.dot(along) < 0.0 ? -2.0 : 2.0) * (circle.radiusMetres + radius);
    const Position beside =
        plane.toPosition(fix + along * beyond + directionOf(course + (right ? 90.0 : -90.0)) * radius);
    Position centre;
    if (centreDistance <= 0.0 || !Tavik::Geodetic::calcDmeDistIntersection(
                                     beside.latDegrees, beside.lonDegrees, course, circle.centre.latDegrees,
                                     circle.centre.lonDegrees, centreDistance, centre.latDegrees, centre.lonDegrees)) {
        return {entry};
    }
    const Point touch = plane.toPoint(centre).normalized() * circle.radiusMetres;
    Point corner;
    double alongLine = 0.0;
    double alongTangent = 0.0;
    Tavik::Math::crossLines(start, fix, touch, touch + Point(touch.y, -touch.x), corner, alongLine, alongTangent);
    if (!(alongLine > 0.0)) {
        return {entry};
    }
    bool limited = false;
    return toPositions(plane, Tavik::Geodetic::calcFlyByPoints(start, corner, touch, radius, right ? 1 : 0, limited));
}

/// The same flown backwards.
std::vector<Position> circleToStraight(const Circle& circle, const RouteLeg& leg, const RouteLeg& next)
{
    const Circle backwards = {circle.centre, circle.radiusMetres, !circle.clockwise};
    std::vector<Position> points = straightToCircle(next.to, next.from, backwards, leg.turnRadiusMetres);
    std::reverse(points.begin(), points.end());
    return points;
}

} // namespace

bool turnsOverFix(const RouteLeg& leg, const RouteLeg& next)
{
    if (leg.flyOver || next.circle) {
        return leg.flyOver;
    }
    const double change = Tavik::Geodetic::getHeadingDifference(leg.courseAtEnd(), planeCourse(next.from, next.to));
    const bool isLongWay = (leg.turn == TurnDirection::Left && change > SmallestTurnDegrees) ||
                           (leg.turn == TurnDirection::Right && change < -SmallestTurnDegrees);
    return isLongWay || std::abs(change) > LargestEarlyTurnDegrees;
}

std::vector<Position> turnPath(const RouteLeg& leg, Position from, const RouteLeg& next, bool nextTurnsEarly)
{
    if (next.circle) {
        return leg.circle || leg.flyOver ? std::vector<Position>{leg.to}
                                         : straightToCircle(from, leg.to, *next.circle, leg.turnRadiusMetres);
    }
    if (turnsOverFix(leg, next)) {
        return flyOver(leg, leg.circle ? behindEnd(leg) : from, next.to);
    }
    if (leg.circle) {
        return circleToStraight(*leg.circle, leg, next);
    }
    return flyBy(leg, from, nextTurnsEarly ? midway(leg.to, next.to) : next.to);
}

double sweepDegrees(const Circle& circle, Position from, Position to)
{
    return std::abs(Tavik::Geodetic::getHeadingDifference(planeCourse(circle.centre, from),
                                                          planeCourse(circle.centre, to), circle.clockwise));
}

std::vector<Position> circlePath(const Circle& circle, Position from, Position to)
{
    const LocalPlane plane(circle.centre);
    const double first = planeCourse(circle.centre, from);
    const double sweep = sweepDegrees(circle, from, to) * (circle.clockwise ? 1.0 : -1.0);
    const int steps = std::max(1, static_cast<int>(std::ceil(std::abs(sweep))));
    std::vector<Position> points;
    for (int step = 1; step <= steps; ++step) {
        points.push_back(plane.toPosition(directionOf(first + sweep * step / steps) * circle.radiusMetres));
    }
    return points;
}

} // namespace MovingMap
