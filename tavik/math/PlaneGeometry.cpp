#include <tavik/math/PlaneGeometry.h>

#include <tavik/math/LineCrossing.h>
#include <tavik/math/SinglePrecision.h>
#include <tavik/math/Trigonometry.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Tavik::Math {

namespace {

/// Vector by which a segment is moved sideways; the components before the turn are rounded to single precision.
Vector2<double> sidewaysOffset(Vector2<double> a, Vector2<double> b, double distance, int side)
{
    // The turn is 90 radians: drawing code relies on the 116.62 degrees that this makes.
    constexpr double Cos = -0.4480736161291702;
    constexpr double Sin = 0.8939966636005579;

    const Vector2<double> ab = b - a;
    const Vector2<double> o = toDouble(toFloat(ab * (distance / ab.length())));
    return side != 0 ? Vector2<double>(o.x * Cos + o.y * Sin, -o.x * Sin + o.y * Cos)
                     : Vector2<double>(o.x * Cos - o.y * Sin, o.x * Sin + o.y * Cos);
}

template <typename T>
bool isClockwise(const std::vector<Vector2<T>>& points)
{
    double doubleArea = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Vector2<T>& from = points[i];
        const Vector2<T>& to = points[i + 1 < points.size() ? i + 1 : 0];
        doubleArea += (double(to.x) - double(from.x)) * (double(to.y) + double(from.y));
    }
    return !(doubleArea < 0.0);
}

} // namespace

std::optional<LineCrossing> crossInfiniteLines(Vector2<double> a, Vector2<double> dA, Vector2<double> b,
                                               Vector2<double> dB)
{
    if (dA.x == 0.0 || std::isnan(dA.x)) {
        const double determinant = dA.x * dB.y - dA.y * dB.x;
        if (determinant == 0.0 || std::isnan(determinant)) {
            return std::nullopt;
        }
        const double tB = (dA.x * a.y - dA.x * b.y + dA.y * b.x - a.x * dA.y) / determinant;
        return LineCrossing{(tB * dB.y + b.y - a.y) / dA.y, tB};
    }
    const double determinant = dA.y * dB.x - dA.x * dB.y;
    if (determinant == 0.0 || std::isnan(determinant)) {
        return std::nullopt;
    }
    const double tB = (dA.y * a.x - dA.y * b.x + dA.x * b.y - a.y * dA.x) / determinant;
    return LineCrossing{(tB * dB.x + b.x - a.x) / dA.x, tB};
}

bool crossLines(Vector2<double> a1, Vector2<double> a2, Vector2<double> b1, Vector2<double> b2, Vector2<double>& point,
                double& tA, double& tB)
{
    const std::optional<LineCrossing> crossing = crossInfiniteLines(a1, a2 - a1, b1, b2 - b1);
    if (!crossing) {
        return false;
    }
    point = a1 + crossing->tA * (a2 - a1);
    tA = crossing->tA;
    tB = crossing->tB;
    return crossing->withinBothSegments();
}

bool crossLines(Vector2<float> a1, Vector2<float> a2, Vector2<float> b1, Vector2<float> b2, Vector2<float>& point,
                double& tA, double& tB)
{
    Vector2<double> exact = toDouble(point);
    const bool segmentsCross = crossLines(toDouble(a1), toDouble(a2), toDouble(b1), toDouble(b2), exact, tA, tB);
    point = toFloat(exact);
    return segmentsCross;
}

void getParallelLine(Vector2<float> a, Vector2<float> b, double distance, int side, Vector2<float>& outA,
                     Vector2<float>& outB)
{
    const Vector2<double> offset = sidewaysOffset(toDouble(a), toDouble(b), distance, side);
    outA = toFloat(toDouble(a) + offset);
    outB = toFloat(toDouble(b) + offset);
}

void getInnerCross(Vector2<float> a, Vector2<float> b, Vector2<float> c, double distance, int side, Vector2<float>& out)
{
    // With the directions of the segments themselves: those of moved ends, rounded to single precision, would make
    // parallel lines cross somewhere.
    const Vector2<double> ab = toDouble(b) - toDouble(a);
    const Vector2<double> bc = toDouble(c) - toDouble(b);
    const Vector2<double> movedA = toDouble(a) + sidewaysOffset(toDouble(a), toDouble(b), distance, side);
    const Vector2<double> movedB = toDouble(b) + sidewaysOffset(toDouble(b), toDouble(c), distance, side);
    const std::optional<LineCrossing> crossing = crossInfiniteLines(movedA, ab, movedB, bc);
    if (crossing) {
        out = toFloat(movedA + crossing->tA * ab);
    }
}

bool pointInPolygon(Vector2<double> p, const std::vector<Vector2<double>>& polygon)
{
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Vector2<double> vertex = polygon[i];
        const Vector2<double> edge = polygon[i + 1 < polygon.size() ? i + 1 : 0] - vertex;
        // Without dividing by the length of the edge, so that points on a vertical or slanted edge give an exact 0.
        if (edge.cross(p - vertex) > 0.0) {
            return false;
        }
    }
    return true;
}

double angle(Vector2<float> a, Vector2<float> b)
{
    const float cosAngle = a.dot(b) / (a.length() * b.length());
    // Rounding lifts the cosine of many parallel vectors above 1.
    return std::acos(static_cast<double>(std::clamp(cosAngle, -1.0f, 1.0f))) * RadiansToDegrees;
}

bool getWindingDirection(const std::vector<Vector2<float>>& points)
{
    return isClockwise(points);
}

bool getWindingDirection(const std::vector<Vector2<double>>& points)
{
    return isClockwise(points);
}

} // namespace Tavik::Math
