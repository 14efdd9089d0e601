#include <tavik/math/Interpolation.h>

namespace Tavik::Math {

namespace {

struct CubicCoefficients
{
    double a1;
    double a2;
    double a3;

    explicit CubicCoefficients(const double p[4])
        : a1(-0.5 * p[0] + 0.5 * p[2]), a2(p[0] - 2.5 * p[1] + 2.0 * p[2] - 0.5 * p[3]),
          a3(-0.5 * p[0] + 1.5 * p[1] - 1.5 * p[2] + 0.5 * p[3])
    {}
};

} // namespace

double getCubicValue(const double p[4], double x)
{
    const CubicCoefficients c(p);
    return p[1] + c.a1 * x + c.a2 * x * x + c.a3 * x * x * x;
}

double getCubicDerivate(const double p[4], double x)
{
    const CubicCoefficients c(p);
    return c.a1 + 2.0 * c.a2 * x + 3.0 * c.a3 * x * x;
}

double getBiCubicValue(const double p[4][4], double x, double y)
{
    const double rows[4] = {getCubicValue(p[0], y), getCubicValue(p[1], y), getCubicValue(p[2], y),
                            getCubicValue(p[3], y)};
    return getCubicValue(rows, x);
}

Vector2<double> getBiCubicDerivate(const double p[4][4], double x, double y)
{
    double values[4];
    double slopes[4];
    for (int i = 0; i < 4; ++i) {
        values[i] = getCubicValue(p[i], y);
        slopes[i] = getCubicDerivate(p[i], y);
    }
    return {getCubicDerivate(values, x), getCubicValue(slopes, x)};
}

} // namespace Tavik::Math
