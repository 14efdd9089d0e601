#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/Turns.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace Tavik::Geodetic;
using Point = Tavik::Math::Vector2<double>;
using Points = std::vector<Point>;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double Radian = 57.29577951308232;

Point along(double courseDegrees)
{
    return {std::sin(courseDegrees / Radian), std::cos(courseDegrees / Radian)};
}

struct ExpectedArc
{
    Point centre;
    double radius, firstCourse, step;
    std::size_t count;
};

/// @param first  index of the first point of the arc
void expectArc(const Points& points, std::size_t first, const ExpectedArc& arc, double tolerance)
{
    ASSERT_EQ(points.size() - first, arc.count);
    for (std::size_t i = 0; i < arc.count; ++i) {
        const Point expected = arc.centre + along(arc.firstCourse + arc.step * static_cast<double>(i)) * arc.radius;
        ASSERT_NEAR(points[first + i].x, expected.x, tolerance) << "point " << i;
        ASSERT_NEAR(points[first + i].y, expected.y, tolerance) << "point " << i;
    }
}

} // namespace

TEST(Turns, CircleAndAreaOfThreePoints)
{
    EXPECT_DOUBLE_EQ(calcTriangleArea({0, 0}, {0, 3}, {4, 0}), 6.0);
    EXPECT_DOUBLE_EQ(calcRadius({0, 0}, {0, 3}, {4, 0}), 2.5);
    EXPECT_DOUBLE_EQ(calcTriangleArea({0, 0}, {1e6, 0}, {5e5, 1e-3}), 500.0) << "slim triangle";
    EXPECT_EQ(calcTriangleArea({0, 0}, {1, 1}, {3, 3}), 0.0);
    EXPECT_EQ(calcRadius({0, 0}, {1, 1}, {3, 3}), Infinity);
    EXPECT_TRUE(std::isnan(calcRadius({1, 1}, {1, 1}, {3, 3})));
}

// End of the turn in metres east and north of its start; by hand, "across north" with 20 digits.
TEST(Turns, OutboundPoint)
{
    const struct
    {
        const char* name;
        double course1, course2;
        int direction;
        double x, y;
    } cases[] = {
        {"no turn", 30, 30, 2, 5, 8.6602540378443865},
        {"no turn, less than a degree across north", 359.6, -359.5, 0, -0.069812602979615, 9.9997563070536},
        {"right, automatic", 0, 90, 2, 1000, 1000},
        {"left, automatic", 0, 270, 2, -1000, 1000},
        {"left, long way", 0, 90, 0, -1000, -1000},
        {"opposite course, rising: right", 0, 180, -1, 2000, 0},
        {"opposite course, falling: left", 180, 0, 7, 2000, 0},
        {"right across north", 350, 740, 2, 45.115132226299675, 515.66832099258191},
    };
    double lat = NaN;
    double lon = NaN;
    for (const auto& c : cases) {
        EXPECT_TRUE(calcOutboundPoint(50.0, 8.0, c.course1, 1000.0, c.course2, c.direction, lat, lon)) << c.name;
        double x = NaN;
        double y = NaN;
        latLong2Grid(50.0, 8.0, lat, lon, x, y);
        EXPECT_NEAR(x, c.x, 1e-7) << c.name;
        EXPECT_NEAR(y, c.y, 1e-7) << c.name;
    }
    EXPECT_TRUE(calcOutboundPoint(50.0, 8.0, NaN, 1000.0, 90.0, 2, lat, lon));
    EXPECT_TRUE(std::isnan(lat) && std::isnan(lon));
}

// Centres, courses and counts by hand.
TEST(Turns, FlyByArcs)
{
    const struct
    {
        const char* name;
        Point next;
        double radius;
        int direction;
        bool limited;
        ExpectedArc arc;
    } cases[] = {
        {"right", {1000, 1000}, 100, 2, false, {{100, 900}, 100, 271, 1, 89}},
        {"left", {-1000, 1000}, 100, -1, false, {{-100, 900}, 100, 89, -1, 89}},
        {"left at a right corner", {1000, 1000}, 100, 0, false, {{-100, 900}, 100, 89, -1, 26}},
        {"right at a left corner", {-1000, 1000}, 100, 1, false, {{100, 900}, 100, 271, 1, 26}},
        {"one degree at least", {1, 2000}, 800, 2, false, {{800, 999.6}, 800, 271, 1, 1}},
        {"limited by the second leg", {400, 1000}, 700, 2, true, {{400, 600}, 400, 271, 1, 89}},
        {"limited by the first leg", {1e6, 1000}, 1e300, 2, true, {{1000, 0}, 1000, 271, 1, 89}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        bool limited = !c.limited;
        const Points points = calcFlyByPoints({0, 0}, {0, 1000}, c.next, c.radius, c.direction, limited);
        ASSERT_NO_FATAL_FAILURE(expectArc(points, 0, c.arc, 1e-6));
        EXPECT_EQ(limited, c.limited);
    }
}

TEST(Turns, FlyByTouchesBothLegs)
{
    std::mt19937_64 generator(23);
    std::uniform_real_distribution<double> anyCourse(0.0, 360.0);
    std::uniform_real_distribution<double> anyTurn(2.0, 170.0);
    const Point waypoint(-34567.8, 98765.4);
    const double radius = 500.0;
    for (int i = 0; i < 2000; ++i) {
        const double inbound = anyCourse(generator);
        const double turn = anyTurn(generator);
        const double side = i % 2 == 0 ? 1.0 : -1.0; // right, left
        const double toTangent = radius * std::tan(0.5 * turn / Radian);
        const Point previous = waypoint - along(inbound) * (toTangent + 100.0);
        const Point next = waypoint + along(inbound + side * turn) * (toTangent + 200.0);
        const Point centre = waypoint - along(inbound) * toTangent + along(inbound + side * 90.0) * radius;
        const ExpectedArc arc = {centre, radius, inbound - side * 89.0, side, std::size_t(std::ceil(turn)) - 1};
        SCOPED_TRACE(testing::Message() << "course " << inbound << ", turn " << side * turn);
        bool limited = true;
        const Points points = calcFlyByPoints(previous, waypoint, next, radius, 2, limited);
        ASSERT_NO_FATAL_FAILURE(expectArc(points, 0, arc, 1e-6));
        EXPECT_FALSE(limited);
    }
}

TEST(Turns, FlyByWithoutTurnIsTheWaypoint)
{
    const struct
    {
        const char* name;
        Point previous, waypoint, next;
        double radius;
    } cases[] = {
        {"no radius", {0, 0}, {0, 1000}, {1000, 1000}, 0.0009},
        {"NaN radius", {0, 0}, {0, 1000}, {1000, 1000}, NaN},
        {"short first leg", {0, 999.1}, {0, 1000}, {1000, 1000}, 100},
        {"short second leg", {0, 0}, {0, 1000}, {0.9, 1000}, 100},
        {"ends together", {0, 0}, {0, 1000}, {0.9, 0}, 100},
        {"straight north", {5.0009, 0}, {5, 1000}, {5, 3000}, 100},
        {"straight, slanted", {0, 0}, {300, 100}, {900, 300.0009}, 100},
        {"straight north but for rounding", {0, 0}, {1e-13, 1000}, {1.5e-13, 2000}, 100},
        {"back again", {0, 0}, {300, 100}, {-300, -100}, 100},
        {"squares overflow", {1e200, 0}, {0, 1e200}, {-1e200, -1e200}, 1e200},
    };
    for (const auto& c : cases) {
        bool limited = true;
        EXPECT_EQ(calcFlyByPoints(c.previous, c.waypoint, c.next, c.radius, 2, limited), Points{c.waypoint}) << c.name;
        EXPECT_FALSE(limited) << c.name;
    }
}

// Right turns from a northerly course about (radius, 0), mirrored for left ones and rotated. The next point is built
// from the end of the turn: straight on from the point of the circle that is reached after `sweep` degrees. A billionth
// of a degree more or less than a whole number of degrees decides about the last point.
TEST(Turns, FlyOverEndsOnTheTangentThroughNext)
{
    std::mt19937_64 generator(24);
    std::uniform_int_distribution<int> degrees(10, 300);
    std::uniform_real_distribution<double> distance(8.0, 20.0);
    std::uniform_real_distribution<double> anyCourse(0.0, 360.0);
    const double radius = 1000.0;
    for (int i = 0; i < 20000; ++i) {
        const bool axial = i % 4 < 2; // along an axis, with next level with the centre, exactly or nearly
        const double side = i % 2 == 0 ? 1.0 : -1.0;
        const bool more = i % 8 < 4;
        const int whole = axial ? 91 + degrees(generator) % 70 : degrees(generator);
        const double sweep = whole + (more ? 1e-9 : -1e-9);
        const double inbound = axial ? 90.0 * (whole % 4) : anyCourse(generator);
        const double nearly = i % 16 < 8 ? 0.0 : 1e-9 * (whole - 120);
        const double straight = axial ? nearly - radius * std::tan(sweep / Radian) : distance(generator) * radius;
        const Point ahead = along(inbound);
        const Point abeam(side * ahead.y, side * -ahead.x); // towards the centre, exactly perpendicular
        const Point end = abeam * (1.0 - std::cos(sweep / Radian)) + ahead * std::sin(sweep / Radian);
        const Point endCourse = abeam * std::sin(sweep / Radian) + ahead * std::cos(sweep / Radian);
        const int direction = whole < 170 ? 2 : side > 0.0 ? 1 : 0;

        SCOPED_TRACE(testing::Message() << "course " << inbound << ", sweep " << side * sweep << " " << straight);
        bool limited = true;
        const Points points =
            calcFlyOverPoints(ahead * -5000.0, {0, 0}, end * radius + endCourse * straight, radius, direction, limited);
        ASSERT_FALSE(limited);
        ASSERT_EQ(points[0], Point(0, 0));
        const auto count = static_cast<std::size_t>(more ? whole + 1 : whole);
        const ExpectedArc arc = {abeam * radius, radius, inbound - side * 89.0, side, count};
        ASSERT_NO_FATAL_FAILURE(expectArc(points, 1, arc, 1e-8));
    }
}

TEST(Turns, FlyOverLimitsTheRadius)
{
    // 0.999 of the circle through (0, 0), (100, 300) and the point a metre ahead, which single precision puts at
    // y = 1.0000000298; with 40 digits. At y = 1 the radius would be 498.00175050144.
    bool limited = false;
    const Points points = calcFlyOverPoints({0, -3}, {0, 0}, {100, 300}, 1e6, 2, limited);
    EXPECT_TRUE(limited);
    ASSERT_GT(points.size(), 20u);
    EXPECT_NEAR(calcRadius(points[1], points[10], points[20]), 498.00175045679768, 3e-9);
}

TEST(Turns, FlyOverWithoutTurnIsTheWaypoint)
{
    const struct
    {
        const char* name;
        Point previous, next;
        double radius;
        bool limited;
    } cases[] = {
        {"no radius", {0, -1000}, {1000, 0}, 0.0009, false},
        {"NaN radius", {0, -1000}, {1000, 0}, NaN, false},
        {"2.9 degrees", {0, -1000}, along(2.9) * 5000, 100, false},
        {"2.9 degrees, limited", {0, -1000}, along(2.9) * 5000, 1e6, true},
        {"no first leg", {0, 0}, {1000, 0}, 100, false},
        {"next on the circle", {-1000, 0}, {0, 0}, 100, false},
        {"next inside the circle", {0, -1000}, {0.1, 0.3}, 5, true},
        {"straight back with an infinite radius", {0, -1000}, {0, -2000}, Infinity, false},
    };
    for (const auto& c : cases) {
        bool limited = !c.limited;
        EXPECT_EQ(calcFlyOverPoints(c.previous, {0, 0}, c.next, c.radius, 2, limited), Points{Point()}) << c.name;
        EXPECT_EQ(limited, c.limited) << c.name;
    }
    // At 3 degrees there is a turn.
    bool limited = true;
    EXPECT_EQ(calcFlyOverPoints({0, -1000}, {0, 0}, along(3.1) * 5000, 100, 2, limited).size(), 5u);
}

TEST(Turns, NaNAndInfiniteCoordinatesGiveOnePoint)
{
    for (int coordinate = 0; coordinate < 6; ++coordinate) {
        for (const double value : {NaN, Infinity, -Infinity}) {
            Point points[] = {{0, 0}, {0, 1000}, {1000, 1000}};
            (coordinate % 2 == 0 ? points[coordinate / 2].x : points[coordinate / 2].y) = value;
            bool limited = true;
            EXPECT_EQ(calcFlyByPoints(points[0], points[1], points[2], 100, 2, limited).size(), 1u) << coordinate;
            EXPECT_FALSE(limited);
            limited = true;
            EXPECT_EQ(calcFlyOverPoints(points[0], points[1], points[2], 100, 2, limited).size(), 1u) << coordinate;
            EXPECT_FALSE(limited);
        }
    }
}
