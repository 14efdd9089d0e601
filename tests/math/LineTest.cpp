#include <tavik/math/Line.h>

#include <gtest/gtest.h>

#include <limits>

using namespace Tavik::Math;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST(Line, DistanceToPoint)
{
    Line leg({9.0, 9.0}, {9.0, 9.0});
    leg.setP1({1.0, 2.0});
    leg.setP2({5.0, 5.0});
    EXPECT_EQ((leg.p2() - leg.p1()).length(), 5.0);
    const Line dot({1.0, 2.0}, {1.0, 2.0});
    const struct
    {
        const char* name;
        const Line& line;
        Vector2<double> p;
        double distance;
        bool within;
        double t;
    } cases[] = {
        {"beside the middle", leg, {3.0 - 3.0, 3.5 + 4.0}, 5.0, true, 0.5},
        {"beside the first end", leg, {1.0 + 3.0, 2.0 - 4.0}, 5.0, false, 0.0},
        {"beside the second end", leg, {5.0 + 3.0, 5.0 - 4.0}, 5.0, false, 1.0},
        {"before the first end", leg, {1.0 - 8.0, 2.0 - 6.0}, 10.0, false, -2.0},
        {"beyond the second end", leg, {5.0 + 4.0, 5.0 + 3.0}, 5.0, false, 2.0},
        {"no length", dot, {4.0, 6.0}, 5.0, false, 0.0},
    };
    for (const auto& c : cases) {
        bool within = !c.within;
        double t = NaN;
        EXPECT_DOUBLE_EQ(c.line.distanceToPoint(c.p, within, t), c.distance) << c.name;
        EXPECT_EQ(within, c.within) << c.name;
        EXPECT_DOUBLE_EQ(t, c.t) << c.name;
    }
}

TEST(Line, CrossingOfInfiniteLinesAndOfSegments)
{
    const struct
    {
        const char* name;
        Line a, b;
        Vector2<double> point; // checked where ok
        bool ok;
        bool segmentsCross;
    } cases[] = {
        {"diagonals", {{0, 0}, {2, 2}}, {{0, 2}, {2, 0}}, {1, 1}, true, true},
        {"beyond both segments", {{0, 0}, {0, 1}}, {{5, 4}, {6, 4}}, {0, 4}, true, false},
        {"touching ends", {{0, 0}, {4, 0}}, {{4, 0}, {4, 2}}, {4, 0}, true, true},
        {"overlapping", {{0, 0}, {4, 0}}, {{1, 0}, {2, 0}}, {}, false, false},
        {"determinant just under 1e-6", {{0, 0}, {1, 0}}, {{0.5, 0}, {1.5, 0.99e-6}}, {}, false, true},
        {"determinant just over 1e-6", {{0, 0}, {1, 0}}, {{0.5, 0}, {1.5, 1.01e-6}}, {0.5, 0}, true, true},
        {"determinant just under 1e-12", {{0, 0}, {1, 0}}, {{0.5, 0}, {1.5, 0.99e-12}}, {}, false, false},
        {"determinant just over 1e-12", {{0, 0}, {1, 0}}, {{0.5, 0}, {1.5, 1.01e-12}}, {}, false, true},
        {"determinant overflows", {{0, 0}, {1e200, 1e200}}, {{1, 0}, {1e200, 2e200}}, {0, 0}, true, false},
        {"NaN", {{0, 0}, {1, NaN}}, {{0, 2}, {2, 0}}, {0, 0}, true, false},
    };
    for (const auto& c : cases) {
        bool ok = !c.ok;
        const Vector2<double> point = c.a.crossLine(c.b, ok);
        EXPECT_EQ(ok, c.ok) << c.name;
        if (c.ok) {
            EXPECT_DOUBLE_EQ(point.x, c.point.x) << c.name;
            EXPECT_DOUBLE_EQ(point.y, c.point.y) << c.name;
        }
        EXPECT_EQ(c.a.cross(c.b), c.segmentsCross) << c.name;
    }
}
