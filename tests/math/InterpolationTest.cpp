#include <tavik/math/Interpolation.h>

#include <gtest/gtest.h>

using namespace Tavik::Math;

namespace {

// Catmull-Rom reproduces polynomials up to the second degree exactly, in each direction.
double surface(double x, double y)
{
    return x * x + 2.0 * x * y * y + 5.0 * y - 3.0;
}

} // namespace

TEST(Interpolation, CubicValuesAndDerivatives)
{
    const struct
    {
        const char* name;
        double samples[4];
        double x, value, derivative;
    } cases[] = {
        {"line", {0.0, 1.0, 2.0, 3.0}, 0.5, 1.5, 1.0},
        {"starts at the second sample", {7.0, 1.0, 2.0, -4.0}, 0.0, 1.0, -2.5},
        {"ends at the third sample", {7.0, 1.0, 2.0, -4.0}, 1.0, 2.0, -2.5},
        {"parabola", {1.0, 0.0, 1.0, 4.0}, 0.25, 0.0625, 0.5},
        {"peak with overshoot, by hand", {0.0, 0.0, 1.0, 0.0}, 0.5, 0.5625, 1.375},
        {"outer samples weigh -1/16", {16.0, 0.0, 0.0, 32.0}, 0.5, -3.0, -2.0},
    };
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(getCubicValue(c.samples, c.x), c.value) << c.name;
        EXPECT_DOUBLE_EQ(getCubicDerivate(c.samples, c.x), c.derivative) << c.name;
    }
}

TEST(Interpolation, BicubicTakesTheFirstIndexWithX)
{
    double samples[4][4];
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            samples[i][j] = surface(i - 1.0, j - 1.0);
        }
    }
    for (const double x : {0.0, 0.125, 0.5, 0.875, 1.0}) {
        for (const double y : {0.0, 0.25, 0.375, 0.75, 1.0}) {
            EXPECT_NEAR(getBiCubicValue(samples, x, y), surface(x, y), 1e-13) << x << " " << y;
            const Vector2<double> gradient = getBiCubicDerivate(samples, x, y);
            EXPECT_NEAR(gradient.x, 2.0 * x + 2.0 * y * y, 1e-13) << x << " " << y;
            EXPECT_NEAR(gradient.y, 4.0 * x * y + 5.0, 1e-13) << x << " " << y;
        }
    }
}
