#include <tavik/math/PlaneGeometry.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace Tavik::Math;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

using Points = std::vector<Vector2<double>>;

Vector2<float> toFloat(Vector2<double> v)
{
    return {static_cast<float>(v.x), static_cast<float>(v.y)};
}

// A clockwise rectangle without a side along an axis, and the same one with its first vertex repeated.
const Points Clockwise = {{0.0, 1.0}, {3.0, 7.0}, {7.0, 5.0}, {4.0, -1.0}};
const Points ClosedClockwise = {{0.0, 1.0}, {3.0, 7.0}, {7.0, 5.0}, {4.0, -1.0}, {0.0, 1.0}};
const Points UnitSquare = {{0.0, 0.0}, {0.0, 1.0}, {1.0, 1.0}, {1.0, 0.0}};
const Points CounterClockwise = {{1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}, {0.0, 0.0}};

} // namespace

TEST(PlaneGeometry, CrossLines)
{
    const struct
    {
        const char* name;
        Vector2<double> a1, a2, b1, b2;
        bool segmentsCross;
        Vector2<double> point;
        double tA, tB; // -1: untouched
    } cases[] = {
        {"diagonals", {0, 0}, {2, 2}, {0, 2}, {2, 0}, true, {1, 1}, 0.5, 0.5},
        {"parallel", {0, 0}, {1, 1}, {3, 0}, {4, 1}, false, {-1, -1}, -1, -1},
        {"parallel verticals", {0, 0}, {0, 1}, {3, 0}, {3, 9}, false, {-1, -1}, -1, -1},
        {"no length", {1, 1}, {1, 1}, {0, 0}, {2, 3}, false, {-1, -1}, -1, -1},
        {"NaN", {NaN, 0}, {1, 1}, {0, 2}, {2, 0}, false, {-1, -1}, -1, -1},
        {"NaN upwards", {0, 0}, {0, NaN}, {-1, 1}, {1, 1}, false, {-1, -1}, -1, -1},
        {"first vertical", {2, 0}, {2, 8}, {0, 4}, {4, 0}, true, {2, 2}, 0.25, 0.5},
        {"ends count", {0, 0}, {4, 0}, {4, 0}, {4, 5}, true, {4, 0}, 1, 0},
        {"beyond the end of the first", {0, 0}, {1, 0}, {2, -1}, {2, 1}, false, {2, 0}, 2, 0.5},
        {"before the start of the second", {0, 0}, {2, 0}, {1, 1}, {1, 2}, false, {1, 0}, 0.5, -1},
    };
    for (const auto& c : cases) {
        Vector2<double> point(-1, -1);
        double tA = -1.0;
        double tB = -1.0;
        EXPECT_EQ(crossLines(c.a1, c.a2, c.b1, c.b2, point, tA, tB), c.segmentsCross) << c.name;
        EXPECT_EQ(point, c.point) << c.name;
        EXPECT_EQ(tA, c.tA) << c.name;
        EXPECT_EQ(tB, c.tB) << c.name;
    }
}

TEST(PlaneGeometry, CrossLinesOfFloatsComputesInDouble)
{
    // The determinant is 10003 · 10003 - 10001 · 10005 = 4; in single precision it would be 0.
    Vector2<float> point;
    double tA = 0.0;
    double tB = 0.0;
    EXPECT_FALSE(crossLines({0.0f, 0.0f}, {10001.0f, 10003.0f}, {1.0f, 0.0f}, {10004.0f, 10005.0f}, point, tA, tB));
    EXPECT_EQ(tA, -2501.25);
    EXPECT_EQ(tB, -2500.75);
    EXPECT_EQ(point, Vector2<float>(-25015002.0f, -25020004.0f));

    EXPECT_FALSE(crossLines({0.0f, 0.0f}, {1.0f, 1.0f}, {3.0f, 0.0f}, {4.0f, 1.0f}, point, tA, tB));
    EXPECT_EQ(point, Vector2<float>(-25015002.0f, -25020004.0f)) << "parallel: untouched";
}

TEST(PlaneGeometry, ParallelLineStandsAtNinetyRadians)
{
    // By hand with cos 90 = -0.4480736161291702 and sin 90 = 0.8939966636005579; the last one, whose y of b shows the
    // rounding of the offset before its turn, with 50 digits.
    const struct
    {
        const char* name;
        Vector2<float> a, b;
        double distance;
        int side;
        Vector2<float> outA, outB;
    } cases[] = {
        {"left", {0, 0}, {10, 0}, 5, 0, {-2.2403681f, 4.4699833f}, {7.7596319f, 4.4699833f}},
        {"any other side is right", {0, 0}, {10, 0}, 5, -3, {-2.2403681f, -4.4699833f}, {7.7596319f, -4.4699833f}},
        {"slanted, right", {0, 0}, {3, 4}, 10, 1, {4.4635316f, -8.9485689f}, {7.4635316f, -4.9485689f}},
        {"rounding",
         {36.779892f, -31.987970f},
         {-0.81379765f, 1.5178872f},
         7.0,
         0,
         {34.957626f, -38.746620f},
         {-2.6360641f, -5.2407627f}},
    };
    for (const auto& c : cases) {
        Vector2<float> outA;
        Vector2<float> outB;
        getParallelLine(c.a, c.b, c.distance, c.side, outA, outB);
        EXPECT_EQ(outA, c.outA) << c.name << " " << outA.x << " " << outA.y;
        EXPECT_EQ(outB, c.outB) << c.name << " " << outB.x << " " << outB.y;
    }
}

TEST(PlaneGeometry, InnerCross)
{
    // By hand: a segment to the east moves by (-2.2403681, ±4.4699833), one to the north by (∓4.4699833, -2.2403681).
    const struct
    {
        const char* name;
        Vector2<float> a, b, c;
        int side;
        Vector2<float> out;
    } cases[] = {
        {"left turn, inside", {0, 0}, {10, 0}, {10, 10}, 0, {5.5300167f, 4.4699833f}},
        {"left turn, outside", {0, 0}, {10, 0}, {10, 10}, 1, {14.4699833f, -4.4699833f}},
        {"first segment vertical", {0, 0}, {0, 10}, {10, 10}, 1, {4.4699833f, 5.5300167f}},
        {"straight on: untouched", {0, 0}, {10, 0}, {20, 0}, 0, {-1, -1}},
        {"no length: untouched", {0, 0}, {0, 0}, {20, 0}, 0, {-1, -1}},
    };
    for (const auto& c : cases) {
        Vector2<float> out(-1, -1);
        getInnerCross(c.a, c.b, c.c, 5.0, c.side, out);
        EXPECT_FLOAT_EQ(out.x, c.out.x) << c.name;
        EXPECT_FLOAT_EQ(out.y, c.out.y) << c.name;
    }
}

TEST(PlaneGeometry, PointInPolygon)
{
    const struct
    {
        const char* name;
        const Points* polygon;
        Vector2<double> p;
        bool inside;
    } cases[] = {
        {"middle", &Clockwise, {3.5, 3.0}, true},
        {"on the first edge", &Clockwise, {1.0, 3.0}, true},
        {"on the closing edge", &Clockwise, {2.0, 0.0}, true},
        {"left of the closing edge", &Clockwise, {2.0, -0.000001}, false},
        {"repeated vertex, middle", &ClosedClockwise, {3.5, 3.0}, true},
        {"on a vertical edge", &UnitSquare, {0.0, 0.3}, true},
        {"above", &UnitSquare, {0.5, 1.000001}, false},
        {"counter-clockwise", &CounterClockwise, {0.5, 0.5}, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(pointInPolygon(c.p, *c.polygon), c.inside) << c.name;
    }
    EXPECT_TRUE(pointInPolygon({5.0, 5.0}, {}));
}

TEST(PlaneGeometry, WindingDirection)
{
    const struct
    {
        const char* name;
        Points points;
        bool clockwise;
    } cases[] = {
        {"clockwise", UnitSquare, true},
        {"counter-clockwise", CounterClockwise, false},
        {"clockwise only by the closing edge", {{0, -5}, {3, 7}, {4, -9}}, true},
        {"small and far away", {{6000000, 6000000}, {6000000.5, 6000000}, {6000000.5, 6000000.5}}, false},
        {"without area", {{0, 0}, {2, 5}}, true},
        {"empty", {}, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(getWindingDirection(c.points), c.clockwise) << c.name;
        std::vector<Vector2<float>> points;
        for (const Vector2<double>& point : c.points) {
            points.push_back(toFloat(point));
        }
        EXPECT_EQ(getWindingDirection(points), c.clockwise) << c.name << ", float";
    }
}

TEST(PlaneGeometry, AngleIsSinglePrecision)
{
    EXPECT_NEAR(angle({3, 0}, {0, -2}), 90.0, 4e-6);
    EXPECT_NEAR(angle({1, 0}, {5, 5}), 45.0, 4e-6);
    EXPECT_EQ(angle({1, 0}, {1, 1e-4f}), 0.0) << "less than single precision resolves";
    EXPECT_TRUE(std::isnan(angle({0, 0}, {1, 0})));

    std::mt19937_64 generator(22);
    std::uniform_real_distribution<float> component(-1000.0f, 1000.0f);
    for (int i = 0; i < 1000; ++i) {
        const Vector2<float> v(component(generator), component(generator));
        EXPECT_LT(angle(v, v * 3.0f), 0.06) << v.x << " " << v.y;
        EXPECT_GT(angle(v, v * -3.0f), 179.94) << v.x << " " << v.y;
    }
}
