#pragma once

#include <tavik/math/Vector2.h>

#include <optional>

/// For the library's own sources only.
namespace Tavik::Math {

/// Places of a crossing on its two lines, in units of their direction vectors.
struct LineCrossing
{
    double tA;
    double tB;

    bool withinBothSegments() const { return tA >= 0.0 && tA <= 1.0 && tB >= 0.0 && tB <= 1.0; }
};

/// Crossing of the infinite lines a + tA·dA and b + tB·dB; nothing when the determinant is exactly zero or NaN.
std::optional<LineCrossing> crossInfiniteLines(Vector2<double> a, Vector2<double> dA, Vector2<double> b,
                                               Vector2<double> dB);

} // namespace Tavik::Math
