#include <tavik/geodetic/EarthModel.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace Tavik::Geodetic;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

} // namespace

// Expected values: haversine and bearing formulas with 40 digits, on the same sphere.
TEST(EarthModel, DistanceAndBearing)
{
    const struct
    {
        const char* name;
        double lat1, lon1, lat2, lon2, distance, distanceTolerance, bearing, bearingTolerance;
    } cases[] = {
        {"a degree of the equator", 0, 0, 0, 1, 111120.0, 1e-6, 90.0, 1e-12},
        {"a degree of the meridian", 0, 0, 1, 0, 111120.0, 1e-6, 0.0, 1e-12},
        {"North Atlantic", 50.0333, 8.5706, 40.6398, -73.7789, 6185271.4974422038, 1e-6, 294.38623377270727, 1e-12},
        {"South Pacific", -33.9461, 151.1772, -33.393, -70.7858, 11332691.918483667, 1e-6, 145.20031969319990, 1e-12},
        {"across the antimeridian", 51, 179.5, 51.5, -179.5, 89018.153501205377, 1e-6, 50.992299090297533, 1e-11},
        {"pole to pole", 90, 0, -90, 0, 20001600.0, 1e-6, 180.0, 1e-12},
        {"over the pole", 89.9, 10, 89.9, -170, 22224.0, 1e-5, 360.0, 1e-9},
        {"antipodes, to which every bearing leads", 12, 34, -12, -146, 20001600.0, 0.2, 180.0, 180.0},
        {"less than a metre", 47, 11, 47, 11.00001, 0.75783657770144782, 0.02, 89.999996343231492, 1e-7},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(calcDistance(c.lat1, c.lon1, c.lat2, c.lon2), c.distance, c.distanceTolerance) << c.name;
        EXPECT_NEAR(calcBearing(c.lat1, c.lon1, c.lat2, c.lon2), c.bearing, c.bearingTolerance) << c.name;
    }
}

TEST(EarthModel, DistanceOfFinitePointsIsNeverNaN)
{
    std::mt19937_64 generator(20);
    std::uniform_real_distribution<double> lat(-90.0, 90.0);
    std::uniform_real_distribution<double> lon(-180.0, 180.0);
    std::uniform_real_distribution<double> offset(-1e-9, 1e-9);
    for (int i = 0; i < 20000; ++i) {
        const double lat1 = lat(generator);
        const double lon1 = lon(generator);
        EXPECT_EQ(calcDistance(lat1, lon1, lat1, lon1), 0.0) << lat1 << " " << lon1;
        const double lat2 = lat1 + offset(generator);
        const double lon2 = lon1 + offset(generator);
        EXPECT_LT(calcDistance(lat1, lon1, lat2, lon2), 0.3) << lat1 << " " << lon1 << " " << lat2 << " " << lon2;
        EXPECT_GT(calcDistance(lat1, lon1, -lat2, lon2 + 180.0), 20001599.7) << lat1 << " " << lon1;
    }
    const double huge = std::numeric_limits<double>::max();
    EXPECT_TRUE(std::isfinite(calcDistance(huge, -huge, -huge, huge)));
    EXPECT_TRUE(std::isnan(calcDistance(NaN, 0, 0, 0)));
    EXPECT_TRUE(std::isnan(calcDistance(0, 0, 0, Infinity)));
}

TEST(EarthModel, BearingThatCannotBeToldIsZero)
{
    EXPECT_EQ(calcBearing(47.3, 11.2, 47.3, 11.2), 0.0);
    EXPECT_EQ(calcBearing(NaN, 0, 1, 1), 0.0);
    EXPECT_EQ(calcBearing(0, Infinity, 1, 1), 0.0);
}

// Reference values with 40 digits.
TEST(EarthModel, StepAlongBearingIsFlatAndUsesTheStartLatitude)
{
    double lat = 60.0;
    double lon = 10.0;
    calcPointFromBrgDistance(lat, lon, 30.0, 100000.0, lat, lon);
    EXPECT_NEAR(lat, 60.777963856655341225, 1e-12);
    EXPECT_NEAR(lon, 10.898315284119521376, 1e-12);

    calcPointFromBrgDistance(0.0, 179.5, 90.0, MetresPerDegree, lat, lon);
    EXPECT_NEAR(lon, 180.5, 1e-12) << "longitudes are not folded";
}

// Reference values with 40 digits.
TEST(EarthModel, CartesianCoordinates)
{
    double x = NaN;
    double y = NaN;
    double z = NaN;
    latLong2Cartesian(90.0, 12.0, x, y, z);
    EXPECT_EQ(y, EarthRadius);
    latLong2Cartesian(-40.0, -75.0, x, y, z);
    EXPECT_NEAR(x, -4719452.1604526648, 2e-9);
    EXPECT_NEAR(y, -4099787.4364832749, 2e-9);
    EXPECT_NEAR(z, 1264573.3951106089, 2e-9);
    double lat = NaN;
    double lon = NaN;
    cartesian2LatLong(0.5 * x, 0.5 * y, 0.5 * z, lat, lon);
    EXPECT_NEAR(lat, -40.0, 1e-13);
    EXPECT_NEAR(lon, -75.0, 1e-13);
}

TEST(EarthModel, GridIsScaledByTheReferenceLatitude)
{
    double x = NaN;
    double y = NaN;
    latLong2Grid(50.03, 8.57, 49.95, 8.94, x, y);
    EXPECT_NEAR(x, 26458.747860149546, 1e-6);
    EXPECT_NEAR(y, -8905.5592634618864, 1e-6);
    grid2LatLong(50.03, 8.57, x, y, x, y);
    EXPECT_NEAR(x, 49.95, 1e-13);
    EXPECT_NEAR(y, 8.94, 1e-13);
    latLong2Grid(0, 179, 1, -179, x, y);
    EXPECT_NEAR(x, -358.0 * MetresPerDegree, 1e-6) << "longitudes are not folded";
    EXPECT_EQ(y, MetresPerDegree);
}

TEST(EarthModel, HeadingDifferences)
{
    const struct
    {
        const char* name;
        double from, to, shortest, clockwise, counterClockwise;
    } cases[] = {
        {"right across north", 350, 10, 20, 20, -340},
        {"left across north", 10, 350, -20, 340, -20},
        {"opposite", 0, 180, 180, 180, -180},
        {"opposite, falling", 180, 0, -180, 180, -180},
        {"360 is not folded", 0, 360, 0, 360, 0},
        {"-360 becomes 360", 0, -360, 0, 360, 0},
        {"720 becomes 0", 0, 720, 0, 0, 0},
        {"721 becomes 1", 0, 721, 1, 1, -359},
        {"-1 becomes 359", 0, -1, -1, 359, -1},
        {"many turns", 7200000090.0, -7200000090.0, 180, 180, -180},
    };
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(getHeadingDifference(c.from, c.to), c.shortest) << c.name;
        EXPECT_DOUBLE_EQ(getHeadingDifference(c.from, c.to, true), c.clockwise) << c.name;
        EXPECT_DOUBLE_EQ(getHeadingDifference(c.from, c.to, false), c.counterClockwise) << c.name;
    }
}

TEST(EarthModel, HeadingsBeyondAllTurnsAreNaN)
{
    // 360 · (2³¹ - 1) is the last one whose turns can be counted.
    EXPECT_TRUE(std::isfinite(getHeadingDifference(0.0, 773094113279.0)));
    for (const double heading : {773094113640.0, -773094113640.0, 1e300, Infinity, -Infinity, NaN}) {
        EXPECT_TRUE(std::isnan(getHeadingDifference(0.0, heading))) << heading;
        EXPECT_TRUE(std::isnan(getHeadingDifference(heading, 0.0, true))) << heading;
        EXPECT_TRUE(std::isnan(getHeadingDifference(heading, 0.0, false))) << heading;
    }
}
