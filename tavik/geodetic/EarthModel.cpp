#include <tavik/geodetic/EarthModel.h>

#include <tavik/geodetic/Heading.h>
#include <tavik/math/Trigonometry.h>

#include <algorithm>
#include <cmath>

namespace Tavik::Geodetic {

using Math::DegreesToRadians;
using Math::RadiansToDegrees;
using Math::SinCos;
using Math::sinCos;
using Math::sinCosDegrees;

namespace {

/// Positions closer than this, in degrees, are one position.
constexpr double CoincidenceTolerance = 1e-15;

/// Cosines beyond this belong to points within ten metres of each other, or of the antipode; only these need care.
constexpr double NearlyOne = 1.0 - 1e-12;

/// lon2 - lon1 in radians. Halving first costs no bit and keeps the difference of huge finite longitudes finite.
double longitudeDifference(double lon1, double lon2)
{
    return (0.5 * lon2 - 0.5 * lon1) * (2.0 * DegreesToRadians);
}

} // namespace

double calcDistance(double lat1, double lon1, double lat2, double lon2)
{
    const SinCos phi1 = sinCosDegrees(lat1);
    const SinCos phi2 = sinCosDegrees(lat2);
    double cosAngle = phi1.sin * phi2.sin + phi1.cos * phi2.cos * std::cos(longitudeDifference(lon1, lon2));
    if (std::abs(cosAngle) > NearlyOne) {
        if (std::abs(lat1 - lat2) < CoincidenceTolerance && std::abs(lon1 - lon2) < CoincidenceTolerance) {
            return 0.0;
        }
        // Rounding lifts the cosine above 1 for many points less than a metre apart.
        cosAngle = std::clamp(cosAngle, -1.0, 1.0);
    }
    return std::acos(cosAngle) * RadiansToDegrees * MinutesPerDegree * MetresPerArcMinute;
}

double calcBearing(double lat1, double lon1, double lat2, double lon2)
{
    const SinCos phi1 = sinCosDegrees(lat1);
    const SinCos phi2 = sinCosDegrees(lat2);
    const SinCos delta = sinCos(longitudeDifference(lon1, lon2));
    const double bearing =
        std::atan2(delta.sin * phi2.cos, phi1.cos * phi2.sin - phi1.sin * phi2.cos * delta.cos) * RadiansToDegrees;
    // What normalising comes to for -180 to 180 degrees; a sum, because a branch would be mispredicted half the time.
    return std::isnan(bearing) ? 0.0 : bearing + (bearing < 0.0 ? 360.0 : 0.0);
}

void calcPointFromBrgDistance(double lat, double lon, double bearing, double distance, double& latOut, double& lonOut)
{
    const SinCos direction = sinCosDegrees(bearing);
    latOut = lat + distance * direction.cos / MetresPerDegree;
    lonOut = lon + distance * direction.sin / (std::cos(lat * DegreesToRadians) * MetresPerDegree);
}

void latLong2Cartesian(double lat, double lon, double& x, double& y, double& z)
{
    const SinCos phi = sinCosDegrees(lat);
    const SinCos lambda = sinCosDegrees(lon);
    x = EarthRadius * phi.cos * lambda.sin;
    y = EarthRadius * phi.sin;
    z = EarthRadius * phi.cos * lambda.cos;
}

void cartesian2LatLong(double x, double y, double z, double& lat, double& lon)
{
    lat = std::atan2(y, std::sqrt(x * x + z * z)) * RadiansToDegrees;
    lon = std::atan2(x, z) * RadiansToDegrees;
}

void latLong2Grid(double refLat, double refLon, double lat, double lon, double& x, double& y)
{
    x = std::cos(refLat * DegreesToRadians) * (lon - refLon) * MetresPerDegree;
    y = (lat - refLat) * MetresPerDegree;
}

void grid2LatLong(double refLat, double refLon, double x, double y, double& lat, double& lon)
{
    lat = refLat + y / MetresPerDegree;
    lon = refLon + x / MetresPerDegree / std::cos(refLat * DegreesToRadians);
}

double getHeadingDifference(double heading1, double heading2)
{
    return foldHeadingDifference(normalizeHeading(heading2) - normalizeHeading(heading1));
}

double getHeadingDifference(double heading1, double heading2, bool clockwise)
{
    const double from = normalizeHeading(heading1);
    const double to = normalizeHeading(heading2);
    const double turn = clockwise ? to - from : from - to;
    const double positive = turn < 0.0 ? turn + 360.0 : turn;
    return clockwise ? positive : -positive;
}

} // namespace Tavik::Geodetic
