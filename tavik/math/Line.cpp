#include <tavik/math/Line.h>

#include <tavik/math/LineCrossing.h>

#include <cmath>

namespace Tavik::Math {

namespace {

/// Determinants below these count as parallel. A crossing point must be usable, a yes or no need only be right.
constexpr double CrossingPointTolerance = 1e-6;
constexpr double SegmentCrossTolerance = 1e-12;

} // namespace

Line::Line(Vector2<double> p1, Vector2<double> p2) : mP1(p1), mP2(p2) {}

Vector2<double> Line::p1() const
{
    return mP1;
}

Vector2<double> Line::p2() const
{
    return mP2;
}

void Line::setP1(Vector2<double> p1)
{
    mP1 = p1;
}

void Line::setP2(Vector2<double> p2)
{
    mP2 = p2;
}

double Line::distanceToPoint(Vector2<double> p, bool& withinSegment, double& t) const
{
    const Vector2<double> d = mP2 - mP1;
    const double lengthSquared = d.dot(d);
    t = lengthSquared == 0.0 ? 0.0 : (p - mP1).dot(d) / lengthSquared;
    withinSegment = t > 0.0 && t < 1.0;
    if (t < 0.0) {
        return (p - mP1).length();
    }
    if (t > 1.0) {
        return (p - mP2).length();
    }
    return (mP1 + t * d - p).length();
}

Vector2<double> Line::crossLine(const Line& other, bool& ok) const
{
    const Vector2<double> d = mP2 - mP1;
    const Vector2<double> otherD = other.mP2 - other.mP1;
    ok = !(std::abs(d.cross(otherD)) < CrossingPointTolerance);
    const auto crossing = crossInfiniteLines(mP1, d, other.mP1, otherD);
    return crossing ? mP1 + crossing->tA * d : Vector2<double>();
}

bool Line::cross(const Line& other) const
{
    const Vector2<double> d = mP2 - mP1;
    const Vector2<double> otherD = other.mP2 - other.mP1;
    if (std::abs(d.cross(otherD)) < SegmentCrossTolerance) {
        return false;
    }
    const auto crossing = crossInfiniteLines(mP1, d, other.mP1, otherD);
    return crossing && crossing->withinBothSegments();
}

} // namespace Tavik::Math
