#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>

#include <vector>

/// @file
/// Turns between the legs of a route: where they end, and the arcs that a display draws.
///
/// A turn has a constant radius. Its direction is 0 for left (counter-clockwise), 1 for right, and any other value to
/// turn to the side on which the next point or course lies.
///
/// The arc functions work on points of the local plane (<tavik/geodetic/EarthModel.h>), x east and y north, in metres.
/// They go along the arc in steps of one degree, in the order of flight:
///
///     bool limited;
///     std::vector<Vector2<double>> arc = calcFlyByPoints(previous, waypoint, next, 3000.0, 2, limited);
///     // draw previous, the arc and next as one line
///
/// A turn that cannot be built gives the waypoint alone, so that such a line has a plain corner. So do NaN and
/// infinite arguments; no result has more than 362 points. Safe from any thread.
namespace Tavik::Geodetic {

/// Point at which a turn that starts at once on course1 ends, established on course2.
/// @param lat,lon          start of the turn, degrees
/// @param course1,course2  degrees, any range
/// @param radius           metres
/// @param direction        0 left, 1 right, else the shorter way; for opposite courses, right when course2 is the
///                         greater one in [0, 360]
/// @param latOut,lonOut    end of the turn, degrees; the point 10 m ahead on course1 when the courses differ by less
///                         than a degree. Longitudes are not folded at the antimeridian, and meaningless at a pole.
/// @return always true; NaN passes through to the outputs that depend on it
TAVIK_API bool calcOutboundPoint(double lat, double lon, double course1, double radius, double course2, int direction,
                                 double& latOut, double& lonOut);

/// Turn that starts over the waypoint, on the course from the previous point, and ends on a course straight to the
/// next point.
/// @param previous,waypoint,next  three points of the route in the plane, metres
/// @param radius         metres; below 0.001 there is no turn
/// @param direction      0 left, 1 right, else the side on which next lies
/// @param radiusLimited  set to whether the radius had to be reduced for the turn to reach the course to next: it is
///                       at most 0.999 of that of the circle through waypoint, next and the point one metre
///                       beyond waypoint
/// @return waypoint and the arc; the last point lies up to one degree beyond the tangent to next. Waypoint alone
///         when the course changes by less than 3 degrees, when previous coincides with it, or when next lies inside
///         or on the turn's circle.
TAVIK_API std::vector<Math::Vector2<double>> calcFlyOverPoints(Math::Vector2<double> previous,
                                                               Math::Vector2<double> waypoint,
                                                               Math::Vector2<double> next, double radius, int direction,
                                                               bool& radiusLimited);

/// Turn inside the corner at the waypoint, along an arc that touches both legs.
/// @param previous,waypoint,next  three points of the route in the plane, metres
/// @param radius         metres; below 0.001 there is no turn
/// @param direction      0 left, 1 right, else the side on which next lies; against that side the arc does not touch
///                       the leg to next
/// @param radiusLimited  set to whether the radius had to be reduced for the arc to begin and end on the legs; the arc
///                       then reaches the far end of the shorter one
/// @return the arc without its ends on the legs: points from one degree after its begin to at most one degree before
///         its end, but at least one point. Waypoint alone when the legs are straight (to 0.001 m) or one turns back
///         on the other, and when two of the points are closer than 1 m.
TAVIK_API std::vector<Math::Vector2<double>> calcFlyByPoints(Math::Vector2<double> previous,
                                                             Math::Vector2<double> waypoint, Math::Vector2<double> next,
                                                             double radius, int direction, bool& radiusLimited);

/// Radius of the circle through three points; infinite or very large when they stand in a line, NaN when two of them
/// coincide.
TAVIK_API double calcRadius(Math::Vector2<double> a, Math::Vector2<double> b, Math::Vector2<double> c);

/// Area of a triangle, not negative; 0 for points in a line, but for the rounding of their differences.
TAVIK_API double calcTriangleArea(Math::Vector2<double> a, Math::Vector2<double> b, Math::Vector2<double> c);

} // namespace Tavik::Geodetic
