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
        EXPECT_NEAR(points[first + i].x, expected.x, tolerance) << "point " << i;
        EXPECT_NEAR(points[first + i].y, expected.y, tolerance) << "point " << i;
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
        {"right, long way", 0, 270, 1, 1000, -1000},
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
        Point previous, waypoint, next;
        double radius;
        int direction;
        bool limited;
        ExpectedArc arc;
    } cases[] = {
        {"right", {0, 0}, {0, 1000}, {1000, 1000}, 100, 2, false, {{100, 900}, 100, 271, 1, 89}},
        {"right, asked for", {0, 0}, {0, 1000}, {1000, 1000}, 100, 1, false, {{100, 900}, 100, 271, 1, 89}},
        {"left", {0, 0}, {0, 1000}, {-1000, 1000}, 100, -1, false, {{-100, 900}, 100, 89, -1, 89}},
        {"right from the west", {0, 0}, {-700, 0}, {-700, 700}, 200, 2, false, {{-500, 200}, 200, 181, 1, 89}},
        {"left across north", {900, 0}, {0, 0}, {0, -900}, 300, 2, false, {{300, -300}, 300, 359, -1, 89}},
        {"sharp right", {0, 0}, {0, 1000}, {1000, 0}, 100, 2, false, {{100, 758.57864376269052}, 100, 271, 1, 134}},
        {"a degree at least", {0, 0}, {0, 1e5}, {100, 2e5}, 1e4, 2, false, {{1e4, 99995.000000625}, 1e4, 271, 1, 1}},
        {"left against a right corner", {0, 0}, {0, 1000}, {1000, 1000}, 100, 0, false, {{-100, 900}, 100, 89, -1, 26}},
        {"limited by the next leg", {0, 0}, {0, 1000}, {400, 1000}, 700, 2, true, {{400, 600}, 400, 271, 1, 89}},
        {"limited by the last leg", {0, 700}, {0, 1000}, {1e3, 1e3}, 1e300, 2, true, {{300, 700}, 300, 271, 1, 89}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        bool limited = !c.limited;
        const Points points = calcFlyByPoints(c.previous, c.waypoint, c.next, c.radius, c.direction, limited);
        EXPECT_EQ(limited, c.limited);
        expectArc(points, 0, c.arc, 1e-6);
    }
}

TEST(Turns, FlyByBeginsAndEndsOnTheLegs)
{
    std::mt19937_64 generator(23);
    std::uniform_real_distribution<double> course(0.0, 360.0);
    std::uniform_real_distribution<double> turn(2.0, 170.0);
    std::uniform_real_distribution<double> coordinate(-1e5, 1e5);
    for (int i = 0; i < 2000; ++i) {
        const double inbound = course(generator);
        const double change = turn(generator);
        const double side = i % 2 == 0 ? 1.0 : -1.0; // right, left
        const double radius = 500.0;
        const double toTangent = radius * std::tan(0.5 * change / Radian);
        const Point waypoint(coordinate(generator), coordinate(generator));
        const Point previous = waypoint - along(inbound) * (toTangent + 100.0);
        const Point next = waypoint + along(inbound + side * change) * (toTangent + 200.0);
        const Point centre = waypoint - along(inbound) * toTangent + along(inbound + side * 90.0) * radius;
        SCOPED_TRACE(testing::Message() << "course " << inbound << ", change " << side * change);

        bool limited = true;
        const Points points = calcFlyByPoints(previous, waypoint, next, radius, 2, limited);
        EXPECT_FALSE(limited);
        const auto count = static_cast<std::size_t>(std::ceil(change)) - 1;
        expectArc(points, 0, {centre, radius, inbound - side * 89.0, side, count}, 1e-6);
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
        {"negative radius", {0, 0}, {0, 1000}, {1000, 1000}, -100},
        {"NaN radius", {0, 0}, {0, 1000}, {1000, 1000}, NaN},
        {"short first leg", {0, 999.1}, {0, 1000}, {1000, 1000}, 100},
        {"short second leg", {0, 0}, {0, 1000}, {0.9, 1000}, 100},
        {"ends together", {0, 0}, {0, 1000}, {0.9, 0}, 100},
        {"straight north", {5.0009, 0}, {5, 1000}, {5, 3000}, 100},
        {"straight, slanted", {0, 0}, {300, 100}, {900, 300.0009}, 100},
        {"straight north but for rounding", {0, 0}, {1e-13, 1000}, {1.5e-13, 2000}, 100},
        {"straight south but for rounding", {1e-10, 9000}, {0, 1000}, {0, -2000}, 100},
        {"back again", {0, 0}, {300, 100}, {-300, -100}, 100},
        {"NaN previous", {NaN, 0}, {0, 1000}, {1000, 1000}, 100},
        {"NaN waypoint", {0, 0}, {0, NaN}, {1000, 1000}, 100},
        {"NaN next", {0, 0}, {0, 1000}, {1000, NaN}, 100},
        {"infinite previous", {0, -Infinity}, {0, 1000}, {1000, 1000}, 100},
        {"infinite waypoint", {0, 0}, {0, Infinity}, {1000, 1000}, 100},
        {"infinite next", {0, 0}, {0, 1000}, {Infinity, 1000}, 100},
        {"squares overflow", {1e200, 0}, {0, 1e200}, {-1e200, -1e200}, 1e200},
    };
    for (const auto& c : cases) {
        bool limited = true;
        const Points points = calcFlyByPoints(c.previous, c.waypoint, c.next, c.radius, 2, limited);
        ASSERT_EQ(points.size(), 1u) << c.name;
        EXPECT_TRUE(points[0] == c.waypoint || points[0] != points[0]) << c.name;
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
        int whole = degrees(generator);
        double inbound = anyCourse(generator);
        double straight = distance(generator) * radius;
        if (axial) {
            whole = 91 + whole % 70;
            inbound = 90.0 * (whole % 4);
        }
        const double sweep = whole + (more ? 1e-9 : -1e-9);
        if (axial) {
            straight = -radius * std::tan(sweep / Radian) + (i % 16 < 8 ? 0.0 : 1e-9 * (whole - 120));
        }
        const Point ahead = along(inbound);
        const Point abeam(side * ahead.y, side * -ahead.x); // towards the centre, exactly perpendicular
        const auto place = [&](double x, double y) { return abeam * x + ahead * y; };
        const double sine = std::sin(sweep / Radian);
        const double cosine = std::cos(sweep / Radian);
        const Point next = place(radius - radius * cosine + straight * sine, radius * sine + straight * cosine);
        SCOPED_TRACE(testing::Message() << "course " << inbound << ", sweep " << side * sweep << ", straight "
                                        << straight);

        bool limited = true;
        const int direction = whole < 170 ? 2 : i % 2 == 0 ? 1 : 0;
        const Points points = calcFlyOverPoints(place(0.0, -5000.0), {0, 0}, next, radius, direction, limited);
        ASSERT_FALSE(limited);
        ASSERT_EQ(points[0], Point(0, 0));
        const auto count = static_cast<std::size_t>(more ? whole + 1 : whole);
        expectArc(points, 1, {place(radius, 0.0), radius, inbound - side * 89.0, side, count}, 1e-8);
        if (HasFailure()) {
            return;
        }
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
        Point previous, waypoint, next;
        double radius;
        bool limited;
    } cases[] = {
        {"no radius", {0, 0}, {0, 1000}, {1000, 1000}, 0.0009, false},
        {"NaN radius", {0, 0}, {0, 1000}, {1000, 1000}, NaN, false},
        {"2.9 degrees", {0, 0}, {0, 1000}, along(2.9) * 5000 + Point(0, 1000), 100, false},
        {"2.9 degrees, limited", {0, 0}, {0, 1000}, along(2.9) * 5000 + Point(0, 1000), 1e6, true},
        {"no first leg", {0, 1000}, {0, 1000}, {1000, 1000}, 100, false},
        {"next on the circle", {-1000, 0}, {0, 0}, {0, 0}, 100, false},
        {"next inside the circle", {0, -1000}, {0, 0}, {0.1, 0.3}, 5, true},
        {"NaN previous", {NaN, 0}, {0, 1000}, {1000, 1000}, 100, false},
        {"NaN waypoint", {0, 0}, {0, NaN}, {1000, 1000}, 100, false},
        {"NaN next", {0, 0}, {0, 1000}, {NaN, 1000}, 100, false},
        {"infinite previous", {0, -Infinity}, {0, 1000}, {1000, 1000}, 100, false},
        {"infinite waypoint", {0, 0}, {Infinity, 0}, {1000, 1000}, 100, false},
        {"infinite next", {0, 0}, {0, 1000}, {Infinity, 1000}, 100, false},
        {"straight back with an infinite radius", {0, 0}, {0, 1000}, {0, -1000}, Infinity, false},
    };
    for (const auto& c : cases) {
        bool limited = !c.limited;
        const Points points = calcFlyOverPoints(c.previous, c.waypoint, c.next, c.radius, 2, limited);
        ASSERT_EQ(points.size(), 1u) << c.name;
        EXPECT_TRUE(points[0] == c.waypoint || points[0] != points[0]) << c.name;
        EXPECT_EQ(limited, c.limited) << c.name;
    }
    // At 3 degrees there is a turn.
    bool limited = true;
    EXPECT_EQ(calcFlyOverPoints({0, 0}, {0, 1000}, along(3.1) * 5000 + Point(0, 1000), 100, 2, limited).size(), 5u);
}
