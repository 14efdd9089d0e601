#include <tavik/geodetic/Intersections.h>

#include <tavik/geodetic/EarthModel.h>
#include <tavik/math/PlaneGeometry.h>
#include <tavik/math/SinglePrecision.h>
#include <tavik/math/Trigonometry.h>

#include <cmath>

namespace Tavik::Geodetic {

namespace {

using Math::SinCos;
using Math::sinCosDegrees;
using Math::Vector2;

/// Sine of the angle below which single precision cannot tell two directions apart.
constexpr double ParallelTolerance = 1.2e-7;

/// Unit vector of a course, without the leftovers that sines and cosines of multiples of 90 degrees have.
///
/// The crossing of lines divides by the east component. 1e-16 there, instead of 0, puts the crossing of a course of
/// 180 kilometres off. What is dropped is well below the single precision of the crossing.
Vector2<double> courseDirection(double course)
{
    constexpr double Leftover = 1e-9;
    const SinCos direction = sinCosDegrees(std::remainder(course, 360.0));
    return {std::abs(direction.sin) < Leftover ? 0.0 : direction.sin,
            std::abs(direction.cos) < Leftover ? 0.0 : direction.cos};
}

} // namespace

void calcIntersection(double lat1, double lon1, double course1, double lat2, double lon2, double course2, double& lat,
                      double& lon)
{
    Vector2<double> point2;
    latLong2Grid(lat1, lon1, lat2, lon2, point2.x, point2.y);
    const Vector2<double> direction1 = courseDirection(course1);
    const Vector2<double> direction2 = courseDirection(course2);

    Vector2<float> crossing; // the origin, which is the first point, until there is a crossing
    // Tested here, because the float coordinates of the second line are parallel to the first only by accident.
    if (!(std::abs(direction1.cross(direction2)) < ParallelTolerance)) {
        double tA = 0.0;
        double tB = 0.0;
        Math::crossLines({0.0f, 0.0f}, Math::toFloat(direction1), Math::toFloat(point2),
                         Math::toFloat(point2 + direction2), crossing, tA, tB);
    }
    grid2LatLong(lat1, lon1, crossing.x, crossing.y, lat, lon);
}

bool calcDmeDistIntersection(double lat, double lon, double course, double dmeLat, double dmeLon, double distance,
                             double& latOut, double& lonOut)
{
    Vector2<double> start;
    latLong2Grid(dmeLat, dmeLon, lat, lon, start.x, start.y);
    const SinCos direction = sinCosDegrees(course);

    const double a = direction.sin * direction.sin + direction.cos * direction.cos;
    const double b = 2.0 * (start.y * direction.cos + start.x * direction.sin);
    const double c = start.y * start.y + start.x * start.x - distance * distance;
    const double discriminant = b * b - 4.0 * a * c;
    if (!(discriminant >= 0.0 && std::isfinite(discriminant))) {
        latOut = lat;
        lonOut = lon;
        return false;
    }
    const double ahead = (-b + std::sqrt(discriminant)) / (2.0 * a);
    const double behind = (-b - std::sqrt(discriminant)) / (2.0 * a); // never greater than ahead
    const bool startInside = ahead > 0.0 && behind < 0.0;
    const double t = startInside || std::abs(ahead) < std::abs(behind) ? ahead : behind;
    grid2LatLong(dmeLat, dmeLon, start.x + t * direction.sin, start.y + t * direction.cos, latOut, lonOut);
    return true;
}

} // namespace Tavik::Geodetic
