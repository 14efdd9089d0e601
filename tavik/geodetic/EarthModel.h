#pragma once

#include <tavik/Export.h>

/// @file
/// Distances, bearings and coordinate conversions on the earth.
///
/// Angles are degrees: latitude positive north, longitude positive east, bearings and headings clockwise from true
/// north. Distances are metres. Two earth figures are in use on purpose, and each function says which one is its own:
///
/// - the navigator's sphere, on which one minute of arc is one nautical mile of 1852 m: calcDistance();
/// - the equatorial radius of 6378137 m, 111319.49 m for a degree: the local plane, the step along a bearing and the
///   Cartesian coordinates.
///
/// One degree of latitude is therefore 111120 m of distance, and 111319.49 m in the plane.
///
/// The local plane of latLong2Grid() touches the earth at a reference point; x is east and y is north.
///
///     double x, y;
///     latLong2Grid(50.03, 8.57, 49.95, 8.94, x, y);      // about 26.5 km east and 8.9 km south of the reference
///     double metres = calcDistance(50.03, 8.57, 49.95, 8.94);
///     double bearing = calcBearing(50.03, 8.57, 49.95, 8.94);
///
/// Nothing here fails: NaN and infinity pass through to the results, except where a function says otherwise.
/// Output references may be any variables of the caller, the arguments included. Safe from any thread.
namespace Tavik::Geodetic {

/// The nautical mile: a minute of arc on the sphere of calcDistance().
inline constexpr double MetresPerArcMinute = 1852.0;
/// Minutes of arc in a degree.
inline constexpr double MinutesPerDegree = 60.0;
/// Length of a degree of latitude in the local plane.
inline constexpr double MetresPerDegree = 111319.49079327358;
/// Equatorial radius in metres.
inline constexpr double EarthRadius = 6378137.0;

/// Great-circle distance by the spherical law of cosines, on the sphere of 1852 m for a minute of arc.
///
/// The law of cosines tells small angles badly. Measured errors: up to 0.16 m for points closer than 0.2 m, which may
/// come out as 0; 13 mm at 1 m, 0.14 mm at 100 m, 1.3 µm at 10 km.
/// @param lat1,lon1,lat2,lon2  degrees, any range; the antimeridian and the poles need no care
/// @return metres in [0, 20001600]; exactly 0 for identical arguments, never NaN for finite arguments
TAVIK_API double calcDistance(double lat1, double lon1, double lat2, double lon2);

/// True bearing at the first point of the great circle to the second.
/// @param lat1,lon1,lat2,lon2  degrees, any range; the antimeridian needs no care
/// @return degrees in [0, 360]; 0 when both points coincide or when the result would be NaN. From a pole every
///         direction is south or north, and the bearing is the one that the given longitude of the pole implies.
///         Measured errors: 1.5e-7 degrees for points 1 m apart, in inverse proportion to the distance.
TAVIK_API double calcBearing(double lat1, double lon1, double lat2, double lon2);

/// One straight step in the plane around the start point: not a great-circle destination.
///
/// It leaves the great circle in proportion to distance² · tan(lat): computed, by up to 9 m after 10 km and 910 m after
/// 100 km at latitude 45. Towards the poles the longitude runs away. Longitudes are not folded at the antimeridian.
/// @param lat,lon        start, degrees
/// @param bearing        degrees, any range
/// @param distance       metres; negative steps backwards
/// @param latOut,lonOut  destination, degrees
TAVIK_API void calcPointFromBrgDistance(double lat, double lon, double bearing, double distance, double& latOut,
                                        double& lonOut);

/// Earth-centred coordinates on the sphere of 6378137 m.
/// @param lat,lon  degrees
/// @param x,y,z    metres: x through longitude 90 east, y through the north pole, z through latitude 0, longitude 0
TAVIK_API void latLong2Cartesian(double lat, double lon, double& x, double& y, double& z);

/// Direction of an earth-centred point, the inverse of latLong2Cartesian(); its length does not matter.
/// @param x,y,z    axes as in latLong2Cartesian(), any unit; squares must not overflow
/// @param lat,lon  degrees, latitude in [-90, 90], longitude in [-180, 180]; both 0 for the centre of the earth
TAVIK_API void cartesian2LatLong(double x, double y, double z, double& lat, double& lon);

/// Position in the local plane around a reference point (equirectangular projection).
///
/// Longitudes are not folded: a point beyond the antimeridian seen from the reference lies nearly 360 degrees away.
/// Add or take 360 degrees beforehand where that matters.
/// @param refLat,refLon  reference point, degrees
/// @param lat,lon        point, degrees
/// @param x,y            metres east and north of the reference
TAVIK_API void latLong2Grid(double refLat, double refLon, double lat, double lon, double& x, double& y);

/// Geographic position of a point of the local plane, the inverse of latLong2Grid().
///
/// The longitude comes back unfolded. At a reference pole it is meaningless.
/// @param refLat,refLon  reference point, degrees
/// @param x,y            metres east and north of the reference
/// @param lat,lon        degrees
TAVIK_API void grid2LatLong(double refLat, double refLon, double x, double y, double& lat, double& lon);

/// The shorter way round from one heading to another.
/// @param heading1,heading2  degrees, any range up to 2³¹ - 1 turns, NaN beyond
/// @return degrees in [-180, 180], positive when heading2 lies clockwise of heading1; opposite headings answer 180 or
///         -180, whichever their plain difference gives
TAVIK_API double getHeadingDifference(double heading1, double heading2);

/// The way from one heading to another in a given direction.
/// @param heading1,heading2  degrees, any range up to 2³¹ - 1 turns, NaN beyond
/// @param clockwise          true: answers in [0, 360]; false: answers in [-360, 0], the sign telling the direction
/// @return degrees; a heading of exactly 360 is kept apart from 0, so that from 0 to 360 clockwise is a full turn
TAVIK_API double getHeadingDifference(double heading1, double heading2, bool clockwise);

} // namespace Tavik::Geodetic
