#pragma once

#include <tavik/math/Trigonometry.h>
#include <tavik/math/Vector2.h>

#include <cmath>
#include <limits>

/// Headings and plane courses; for the library's own sources only.
namespace Tavik::Geodetic {

/// value cut to a whole number that fits 32 bits; NaN where it does not fit.
inline double truncateToInt32(double value)
{
    constexpr double Limit = 2147483648.0;
    return value > -Limit && value < Limit ? std::trunc(value) : std::numeric_limits<double>::quiet_NaN();
}

/// Heading in degrees brought into [0, 360]; both ends can come back, 360 stays 360 and -360 becomes 360.
/// NaN for NaN, infinity and headings of more than 2³¹ - 1 turns.
inline double normalizeHeading(double heading)
{
    if (heading < 0.0) {
        heading = heading + 360.0 * truncateToInt32((0.0 - heading) / 360.0 + 1.0);
    }
    if (heading > 360.0) {
        heading = heading - 360.0 * truncateToInt32((heading - 360.0) / 360.0 + 1.0);
    }
    // The quotient of a heading just below a whole number of turns rounds up, and one turn too many is taken off.
    return heading < 0.0 ? 0.0 : heading;
}

/// Difference of two normalised headings folded once into [-180, 180]; -180 and 180 both stay.
inline double foldHeadingDifference(double difference)
{
    if (difference > 180.0) {
        return difference - 360.0;
    }
    if (difference < -180.0) {
        return difference + 360.0;
    }
    return difference;
}

/// Course of a vector in the navigation plane, clockwise from north, radians in [0, 2π]; 0 for the zero vector.
inline double planeCourse(Math::Vector2<double> v)
{
    constexpr double FullTurn = 6.283185307179586;
    const double course = std::atan2(v.x, v.y);
    return course < 0.0 ? course + FullTurn : course;
}

inline double planeCourseDegrees(Math::Vector2<double> v)
{
    return planeCourse(v) * Math::RadiansToDegrees;
}

} // namespace Tavik::Geodetic
