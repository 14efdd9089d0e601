#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>

#include <vector>

/// @file
/// Offsets, crossings, polygons and angles in the plane.
///
/// x points right (east) and y up (north); both have the same unit, whichever it is. Angles are degrees.
///
///     Vector2<double> point;
///     double tA, tB;
///     if (crossLines({0.0, 0.0}, {2.0, 2.0}, {0.0, 2.0}, {2.0, 0.0}, point, tA, tB)) {
///         // point is (1, 1), half way along both segments
///     }
///
/// Output references may be variables that the same call reads. Safe from any thread.
namespace Tavik::Math {

/// Where two lines cross, and whether their segments do.
///
/// The lines run through a1 and a2, and through b1 and b2. The point is written even where the segments end before
/// they meet, so it serves as the crossing of the infinite lines.
/// @param a1,a2,b1,b2  two points of each line
/// @param point  crossing
/// @param tA,tB  place of the crossing on each line: 0 at a1 and b1, 1 at a2 and b2
/// @return true when both segments contain the crossing, ends included. False with all outputs untouched when the
///         lines are parallel, a segment has no length, or a coordinate is NaN. Only a determinant of exactly zero
///         counts as parallel: lines that are parallel but for rounding cross somewhere far away. Infinite coordinates
///         have no meaningful answer.
TAVIK_API bool crossLines(Vector2<double> a1, Vector2<double> a2, Vector2<double> b1, Vector2<double> b2,
                          Vector2<double>& point, double& tA, double& tB);

/// The same for single-precision points: computed in double precision, the point rounded to single.
TAVIK_API bool crossLines(Vector2<float> a1, Vector2<float> a2, Vector2<float> b1, Vector2<float> b2,
                          Vector2<float>& point, double& tA, double& tB);

/// Moves a segment sideways, as the drawing of wide lines and of routes beside routes needs it.
///
/// Both ends move by the same vector of the given length. It is not perpendicular: it stands at 116.62 degrees to the
/// direction from a to b, so the distance between the two lines is 0.894 of the given one.
/// @param a,b        ends of the segment
/// @param distance   length of the offset in the unit of the points; negative for the opposite direction
/// @param side       0: the vector is turned 116.62 degrees counter-clockwise, to the left; else as far clockwise, to
///                   the right
/// @param outA,outB  moved ends; NaN when a and b coincide
TAVIK_API void getParallelLine(Vector2<float> a, Vector2<float> b, double distance, int side, Vector2<float>& outA,
                               Vector2<float>& outB);

/// Corner of a polyline a, b, c that has been moved sideways: the crossing of both segments moved as by
/// getParallelLine().
/// @param a,b,c            points of the polyline
/// @param distance,side    as for getParallelLine()
/// @param out  corner; untouched when the segments are parallel or one has no length. Segments that are parallel but
///             for rounding have a corner anywhere along them.
TAVIK_API void getInnerCross(Vector2<float> a, Vector2<float> b, Vector2<float> c, double distance, int side,
                             Vector2<float>& out);

/// Whether a point lies in a convex polygon whose vertices run clockwise. A polygon that runs counter-clockwise
/// contains no point.
/// @param p        the point
/// @param polygon  vertices; the last one is joined to the first, and may repeat it
/// @return false when the point lies strictly to the left of any edge; true on an edge, for an empty polygon, and
///         for a NaN point, of which nothing can be said
TAVIK_API bool pointInPolygon(Vector2<double> p, const std::vector<Vector2<double>>& polygon);

/// Angle between two vectors, regardless of its direction.
///
/// Single precision up to the arc cosine. Measured errors: 0.05 degrees near 0 and 180, 0.001 degrees from 1 to 179.
/// @return degrees in [0, 180]; NaN when a vector has no length, and NaN or meaningless when a square leaves the range
///         of single precision (components beyond 1e19 or all below 1e-19)
TAVIK_API double angle(Vector2<float> a, Vector2<float> b);

/// @{
/// Whether the vertices of a polygon run clockwise (y up). Sums in double precision for either type.
/// @param points  vertices; the last one is joined to the first
/// @return true when clockwise, and for fewer than three points, polygons without area (but for rounding), and NaN
TAVIK_API bool getWindingDirection(const std::vector<Vector2<float>>& points);
TAVIK_API bool getWindingDirection(const std::vector<Vector2<double>>& points);
/// @}

} // namespace Tavik::Math
