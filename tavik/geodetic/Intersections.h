#pragma once

#include <tavik/Export.h>

/// @file
/// Where courses meet: two courses with each other, and a course with a DME distance circle.
///
/// Positions, latitudes positive north and longitudes positive east, and courses clockwise from true north are in
/// degrees, distances in metres. The work is done in the local plane of <tavik/geodetic/EarthModel.h>, so courses are
/// straight lines there, and longitudes are not folded at the antimeridian. At a pole the plane has no east, and
/// longitudes of results are meaningless.
///
///     double lat, lon;
///     calcIntersection(50.0, 8.0, 45.0, 50.0, 9.0, 315.0, lat, lon);          // half way between, 36 km north
///     if (calcDmeDistIntersection(50.0, 8.0, 45.0, 50.2, 8.2, 10000.0, lat, lon)) {
///         // where the course from 50 N 8 E meets the 10 km circle
///     }
///
/// Output references may be any variables of the caller, the arguments included. Safe from any thread.
namespace Tavik::Geodetic {

/// Crossing of two courses, ahead of or behind either point.
///
/// The second course is laid through two points one metre apart, in single precision, so its direction is only as good
/// as a float resolves the metres between both points. Measured, that direction is off by up to 0.06 degrees for points
/// 10 km apart, 0.6 degrees for 100 km and 2.5 degrees for 500 km; the crossing moves accordingly along the first
/// course. Multiples of 90 degrees stay exact, so give such a course second where that matters.
/// @param lat1,lon1,course1  first point, the origin of the plane, and its course; any range
/// @param lat2,lon2,course2  second point and its course
/// @param lat,lon            the crossing; the first point unchanged when the courses are parallel or opposite (within
///                           1e-7 radians, or the resolution above) or when a value is NaN or infinite, but for a first
///                           point that is so itself
TAVIK_API void calcIntersection(double lat1, double lon1, double course1, double lat2, double lon2, double course2,
                                double& lat, double& lon);

/// Crossing of a course with the circle of a given distance around a DME station, whose plane is used.
///
/// From inside the circle it is the crossing ahead; from outside the nearer one, be it ahead or behind.
/// @param lat,lon,course    start of the course
/// @param dmeLat,dmeLon     the station
/// @param distance          radius of the circle along the ground, metres; its sign does not matter
/// @param latOut,lonOut     the crossing; the start unchanged where there is none
/// @return true when the course, prolonged both ways, reaches the circle; false too when a value is NaN or infinite
TAVIK_API bool calcDmeDistIntersection(double lat, double lon, double course, double dmeLat, double dmeLon,
                                       double distance, double& latOut, double& lonOut);

} // namespace Tavik::Geodetic
