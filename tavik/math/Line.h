#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>

namespace Tavik::Math {

/// Segment in the plane, also taken as the infinite line through its ends.
///
///     Line leg({0.0, 0.0}, {1000.0, 0.0});
///     bool withinSegment;
///     double t;
///     double offTrack = leg.distanceToPoint({250.0, 40.0}, withinSegment, t); // 40, with t = 0.25
///
/// Plain value; safe from any thread.
class TAVIK_API Line
{
public:
    /// The segment from p1 to p2.
    Line(Vector2<double> p1, Vector2<double> p2);

    /// @{
    /// The ends.
    Vector2<double> p1() const;
    Vector2<double> p2() const;
    void setP1(Vector2<double> p1);
    void setP2(Vector2<double> p2);
    /// @}

    /// Distance of a point from the nearest point of the segment.
    /// @param p              the point, in the unit of the ends
    /// @param withinSegment  set to true when the foot of the perpendicular lies strictly between the ends
    /// @param t              set to the place of that foot on the infinite line: 0 at p1, 1 at p2
    /// @return distance, not negative; from p1, with t = 0, when the segment has no length
    double distanceToPoint(Vector2<double> p, bool& withinSegment, double& t) const;

    /// Crossing of the infinite lines.
    /// @param other  the other line
    /// @param ok  set to false when the lines are parallel: the determinant of their directions, which is the product
    ///            of both lengths and the sine of the angle between them, is less than 1e-6. Scale very short segments
    ///            up. NaN coordinates answer (0, 0) with ok true; infinite ones have no meaningful answer.
    /// @return the crossing; without meaning when ok is false
    Vector2<double> crossLine(const Line& other, bool& ok) const;

    /// Whether the segments cross or touch, ends included. Parallel segments do not, even where they overlap; here a
    /// determinant below 1e-12 counts as parallel.
    bool cross(const Line& other) const;

private:
    Vector2<double> mP1;
    Vector2<double> mP2;
};

} // namespace Tavik::Math
