#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/Intersections.h>

#include <gtest/gtest.h>

#include <limits>

using namespace Tavik::Geodetic;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

constexpr double RefLat = 50.0;
constexpr double RefLon = 8.0;

} // namespace

// Points in metres east and north of the first one; crossings by hand.
TEST(Intersections, CoursesCross)
{
    const struct
    {
        const char* name;
        double course1, x2, y2, course2, x, y, tolerance;
    } cases[] = {
        {"ahead of both", 45, 2000, 0, 315, 1000, 1000, 1},
        {"behind both", 225, 2000, 0, 135, 1000, 1000, 1},
        {"second course rounded to single", 60, 50000, 0, 345, 43301.270, 25000, 400},
        {"along the axes", 0, 100000, 60000, 270, 0, 60000, 0.01},
        {"90", 90, 100000, 60000, 180, 100000, 0, 0.01},
        {"180", 180, 100000, 60000, 90, 0, 60000, 0.01},
        {"360", 360, 100000, 60000, -90, 0, 60000, 0.01},
        {"-90", -90, 100000, 60000, -180, 100000, 0, 0.01},
        {"many turns", 36000000000180, 100000, 60000, -36000000000270, 0, 60000, 0.01},
        {"180 but for rounding", 180.00000000000003, 100000, 60000, 90, 0, 60000, 0.01},
    };
    for (const auto& c : cases) {
        double lat = NaN;
        double lon = NaN;
        grid2LatLong(RefLat, RefLon, c.x2, c.y2, lat, lon);
        calcIntersection(RefLat, RefLon, c.course1, lat, lon, c.course2, lat, lon);
        double x = NaN;
        double y = NaN;
        latLong2Grid(RefLat, RefLon, lat, lon, x, y);
        EXPECT_NEAR(x, c.x, c.tolerance) << c.name;
        EXPECT_NEAR(y, c.y, c.tolerance) << c.name;
    }
}

TEST(Intersections, CoursesThatDoNotCrossGiveTheFirstPoint)
{
    const struct
    {
        const char* name;
        double course1, lat2, lon2, course2;
    } cases[] = {
        {"opposite course", 30, 50.5, 9, 210},
        {"a turn apart, but for rounding", 30, 50.5, 9, -330.00000000000006},
        {"opposite along the meridian", 0, 50.5, 9, 180},
        {"NaN course", NaN, 50.5, 9, 30},
        {"infinite course", 30, 50.5, 9, Infinity},
        {"NaN point", 30, NaN, 9, 60},
        {"beyond single precision", 30, 50.5, 1e300, 60},
    };
    for (const auto& c : cases) {
        double lat = NaN;
        double lon = NaN;
        calcIntersection(RefLat, RefLon, c.course1, c.lat2, c.lon2, c.course2, lat, lon);
        EXPECT_EQ(lat, RefLat) << c.name;
        EXPECT_EQ(lon, RefLon) << c.name;
    }
}

// Points in metres east and north of the station; crossings by hand.
TEST(Intersections, CourseMeetsDmeCircle)
{
    const struct
    {
        const char* name;
        double startX, startY, course, distance;
        bool reached;
        double x, y;
    } cases[] = {
        {"from the station", 0, 0, 60, 10000, true, 8660.2540378443865, 5000},
        {"inside: ahead, though it is nearer behind", 0, 5000, 180, 10000, true, 0, -10000},
        {"outside, towards: the near side", -20000, 0, 90, 10000, true, -10000, 0},
        {"outside, away: the near side", 20000, 0, 90, 10000, true, 10000, 0},
        {"secant", -20000, 6000, 90, 10000, true, -8000, 6000},
        {"passes outside", -20000, 10001, 90, 10000, false, -20000, 10001},
        {"NaN course", 100, 100, NaN, 10000, false, 100, 100},
        {"infinite distance", 100, 100, 90, Infinity, false, 100, 100},
    };
    for (const auto& c : cases) {
        double startLat = NaN;
        double startLon = NaN;
        grid2LatLong(RefLat, RefLon, c.startX, c.startY, startLat, startLon);
        double lat = startLat;
        double lon = startLon;
        EXPECT_EQ(calcDmeDistIntersection(lat, lon, c.course, RefLat, RefLon, c.distance, lat, lon), c.reached)
            << c.name;
        double x = NaN;
        double y = NaN;
        latLong2Grid(RefLat, RefLon, lat, lon, x, y);
        EXPECT_NEAR(x, c.x, 1e-6) << c.name;
        EXPECT_NEAR(y, c.y, 1e-6) << c.name;
        EXPECT_EQ(!c.reached, lat == startLat && lon == startLon) << c.name;
    }
}
