#include <tavik/geodetic/Turns.h>

#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/Heading.h>
#include <tavik/math/SinglePrecision.h>
#include <tavik/math/Trigonometry.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace Tavik::Geodetic {

namespace {

using Math::SinCos;
using Math::sinCosDegrees;
using Math::Vector2;

using Points = std::vector<Vector2<double>>;

constexpr double MinimumRadius = 0.001; // metres
constexpr double ArcStep = 1.0;         // degrees

/// Part of a circle from one course, seen from the centre, to another, in degrees. A right turn goes up.
struct Arc
{
    Vector2<double> centre;
    double radius;
    double start;
    double end;
    double step;
};

bool isFinite(Vector2<double> v)
{
    return std::isfinite(v.x) && std::isfinite(v.y);
}

bool turnsLeft(int direction, bool nextLiesLeft)
{
    return direction == 0 || (direction != 1 && nextLiesLeft);
}

Vector2<double> alongCourse(double courseDegrees, double distance)
{
    const SinCos direction = sinCosDegrees(courseDegrees);
    return {distance * direction.sin, distance * direction.cos};
}

/// The arc between two directions from its centre; nothing when the coordinates are not finite.
std::optional<Arc> arcBetween(Vector2<double> centre, double radius, Vector2<double> from, Vector2<double> to,
                              bool left)
{
    if (!isFinite(centre) || !isFinite(from) || !isFinite(to)) {
        return std::nullopt;
    }
    double start = planeCourseDegrees(from);
    double end = planeCourseDegrees(to);
    if (left && end > start) {
        start += 360.0;
    }
    if (!left && end < start) {
        end += 360.0;
    }
    return Arc{centre, radius, start, end, left ? -ArcStep : ArcStep};
}

/// Number of points for which an arc needs room, one more allowing for the rounding of the steps.
std::size_t pointBound(const Arc& arc)
{
    return static_cast<std::size_t>(std::abs(arc.end - arc.start) / ArcStep) + 2;
}

/// Appends the points from one step after the start on; the last is the first for which the end lies no farther than
/// lookAhead. There is always one point.
void appendArc(Points& points, const Arc& arc, double lookAhead)
{
    double course = arc.start;
    bool endReached = false;
    do {
        course += arc.step;
        const SinCos direction = sinCosDegrees(course);
        points.emplace_back(arc.centre.x + arc.radius * direction.sin, arc.centre.y + arc.radius * direction.cos);
        const double next = course + lookAhead;
        endReached = arc.step > 0.0 ? next >= arc.end : next <= arc.end;
    } while (!endReached);
}

std::optional<Arc> flyOverArc(Vector2<double> previous, Vector2<double> waypoint, Vector2<double> next, double radius,
                              int direction, bool& radiusLimited)
{
    constexpr double MinimumCourseChange = 3.0; // degrees
    constexpr double RadiusReserve = 0.999;

    const Vector2<double> inbound = waypoint - previous;
    // The reciprocal is single precision on purpose.
    const double reciprocal = Math::roundToFloat(1.0 / inbound.length());
    const Vector2<double> ahead = waypoint + inbound * reciprocal;
    if (radius < MinimumRadius || !isFinite(ahead)) { // there is nothing ahead when previous and waypoint coincide
        return std::nullopt;
    }
    const double largestRadius = RadiusReserve * calcRadius(waypoint, ahead, next);
    if (largestRadius < radius) {
        radiusLimited = true;
        radius = largestRadius;
    }

    const double inboundCourse = normalizeHeading(planeCourseDegrees(inbound));
    const double courseToNext = normalizeHeading(planeCourseDegrees(next - waypoint));
    if (std::abs(foldHeadingDifference(courseToNext - inboundCourse)) < MinimumCourseChange) {
        return std::nullopt;
    }
    const bool left = turnsLeft(direction, inbound.cross(next - previous) > 0.0);
    const Vector2<double> centre = waypoint + alongCourse(inboundCourse + (left ? -90.0 : 90.0), radius);

    // In the frame along and across the line from the centre to next, both tangent points stand at the same distance
    // along. The turn ends at the left one if it goes right, at the right one if it goes left.
    const Vector2<double> along = next - centre;
    const Vector2<double> across(-along.y, along.x);
    const double distance = along.length();
    if (!(distance > radius)) {
        return std::nullopt;
    }
    const double tangentLength = std::sqrt((distance - radius) * (distance + radius));
    const Vector2<double> toTangentPoint = radius * along + (left ? -tangentLength : tangentLength) * across;
    return arcBetween(centre, radius, waypoint - centre, toTangentPoint, left);
}

/// Whether previous stands on the line through the next leg, to a millimetre as measured north-south.
bool isStraight(Vector2<double> toPrevious, Vector2<double> toNext)
{
    constexpr double Tolerance = 0.001;     // metres
    constexpr double AngleTolerance = 3e-8; // radians; the arc cosine of a unit vector resolves no less

    const double offLine = toNext.x == 0.0 ? toPrevious.x : toPrevious.y + toNext.y * (-toPrevious.x / toNext.x);
    // Near a north-south line the measure above is blown up out of rounding errors, and the turn of no angle that is
    // left would be drawn as a full circle.
    return std::abs(offLine) < Tolerance ||
           std::abs(toNext.cross(toPrevious)) < AngleTolerance * toNext.length() * toPrevious.length();
}

std::optional<Arc> flyByArc(Vector2<double> previous, Vector2<double> waypoint, Vector2<double> next, double radius,
                            int direction, bool& radiusLimited)
{
    constexpr double MinimumLeg = 1.0; // metres

    const Vector2<double> toPrevious = previous - waypoint;
    const Vector2<double> toNext = next - waypoint;
    const double previousLength = toPrevious.length();
    const double nextLength = toNext.length();
    if (radius < MinimumRadius || (next - previous).length() < MinimumLeg || previousLength < MinimumLeg ||
        nextLength < MinimumLeg || isStraight(toPrevious, toNext)) {
        return std::nullopt;
    }

    const double legAngle = std::acos(toPrevious.dot(toNext) / (previousLength * nextLength));
    const double tangent = std::tan(legAngle / 2.0);
    const double largestRadius = std::min(previousLength, nextLength) * tangent;
    if (largestRadius < radius) {
        radiusLimited = true;
        radius = largestRadius;
    }
    const double tangentLength = radius / tangent;

    const Vector2<double> inbound = waypoint - previous;
    const bool left = turnsLeft(direction, inbound.cross(next - previous) > 0.0);
    const Vector2<double> entry = waypoint + tangentLength * (toPrevious / previousLength);
    const Vector2<double> exit = waypoint + tangentLength * (toNext / nextLength);
    const SinCos inboundCourse = Math::sinCos(planeCourse(inbound));
    const Vector2<double> toTheRight(inboundCourse.cos, -inboundCourse.sin);
    const Vector2<double> centre = entry + (left ? -radius : radius) * toTheRight;
    return arcBetween(centre, radius, entry - centre, exit - centre, left);
}

} // namespace

bool calcOutboundPoint(double lat, double lon, double course1, double radius, double course2, int direction,
                       double& latOut, double& lonOut)
{
    constexpr double MinimumCourseChange = 1.0; // degrees
    constexpr double StraightDistance = 10.0;   // metres

    course1 = normalizeHeading(course1);
    course2 = normalizeHeading(course2);
    const double change = foldHeadingDifference(course2 - course1);
    Vector2<double> end;
    if (std::abs(change) < MinimumCourseChange) {
        end = alongCourse(course1, StraightDistance);
    } else {
        const double toCentre = turnsLeft(direction, change < 0.0) ? -90.0 : 90.0;
        end = alongCourse(course1 + toCentre, radius) + alongCourse(course2 - toCentre, radius);
    }
    grid2LatLong(lat, lon, end.x, end.y, latOut, lonOut);
    return true;
}

Points calcFlyOverPoints(Vector2<double> previous, Vector2<double> waypoint, Vector2<double> next, double radius,
                         int direction, bool& radiusLimited)
{
    radiusLimited = false;
    const std::optional<Arc> arc = flyOverArc(previous, waypoint, next, radius, direction, radiusLimited);
    if (!arc) {
        return {waypoint};
    }
    Points points;
    points.reserve(pointBound(*arc) + 1);
    points.push_back(waypoint);
    appendArc(points, *arc, 0.0);
    return points;
}

Points calcFlyByPoints(Vector2<double> previous, Vector2<double> waypoint, Vector2<double> next, double radius,
                       int direction, bool& radiusLimited)
{
    radiusLimited = false;
    const std::optional<Arc> arc = flyByArc(previous, waypoint, next, radius, direction, radiusLimited);
    if (!arc) {
        return {waypoint};
    }
    Points points;
    points.reserve(pointBound(*arc));
    appendArc(points, *arc, arc->step);
    return points;
}

double calcRadius(Vector2<double> a, Vector2<double> b, Vector2<double> c)
{
    return (b - a).length() * (c - b).length() * (a - c).length() / (4.0 * calcTriangleArea(a, b, c));
}

double calcTriangleArea(Vector2<double> a, Vector2<double> b, Vector2<double> c)
{
    // Half the cross product, which unlike Heron's formula stays exact for slim triangles.
    return std::abs((b - a).cross(c - a)) / 2.0;
}

} // namespace Tavik::Geodetic
