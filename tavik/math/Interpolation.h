#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>

/// @file
/// Catmull-Rom interpolation (tension 0.5) in one and two dimensions, for samples at equal spacing.
///
/// The curve runs through the samples. Four samples p[0] to p[3] stand at the positions -1, 0, 1 and 2, and the curve
/// is meant for x in [0, 1], between p[1] and p[2]; outside that range the same cubic is continued. Derivatives are in
/// sample units for one spacing: divide by the spacing to get a slope.
///
///     const double heights[4] = {310.0, 320.0, 350.0, 340.0};
///     double height = getCubicValue(heights, 0.25);
///
/// A NaN or infinite sample spoils every result that it takes part in, and no other. Safe from any thread.
namespace Tavik::Math {

/// Value of the cubic at x; p[1] at x = 0 and, but for rounding, p[2] at x = 1.
TAVIK_API double getCubicValue(const double p[4], double x);

/// Derivative of the cubic at x.
TAVIK_API double getCubicDerivate(const double p[4], double x);

/// Value of the bicubic surface between p[1][1] and p[2][2].
/// @param p    samples; the first index goes with x, the second with y
/// @param x,y  position in the middle cell, each in [0, 1]
TAVIK_API double getBiCubicValue(const double p[4][4], double x, double y);

/// Gradient of the bicubic surface: the partial derivatives with respect to x and to y.
/// Arguments as for getBiCubicValue().
TAVIK_API Vector2<double> getBiCubicDerivate(const double p[4][4], double x, double y);

} // namespace Tavik::Math
