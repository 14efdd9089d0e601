#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/Intersections.h>
#include <tavik/geodetic/TerrainTile.h>
#include <tavik/geodetic/Turns.h>
#include <tavik/math/Filter.h>
#include <tavik/math/Interpolation.h>
#include <tavik/math/Line.h>
#include <tavik/math/PlaneGeometry.h>

#include <support/DtedWriter.h>
#include <support/TemporaryDirectory.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

// One digest over the results of a million calls, which every compiler and every optimisation must reach.
//
// Additions, multiplications, divisions and square roots are exact to the last bit everywhere. Sines and their like are
// the C library's: glibc has one set for processors with fused multiply-add and one for those without, and their last
// bits differ. So the results that depend on them have an expected digest for each set, which a digest over the C
// library's own results tells apart.

using namespace Tavik::Geodetic;
using namespace Tavik::Math;

namespace {

using Point = Vector2<double>;
using PointF = Vector2<float>;

class Digest
{
public:
    void add(std::uint64_t value)
    {
        mState = (mState ^ value) * 0x9E3779B97F4A7C15U;
        mState ^= mState >> 32;
    }
    /// The bits; those of a NaN say nothing.
    void add(double value)
    {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        add(std::isnan(value) ? std::uint64_t{1} : bits);
    }
    void add(Point point)
    {
        add(point.x);
        add(point.y);
    }
    void add(PointF point) { add(Point(point.x, point.y)); }
    void add(const std::vector<Point>& points)
    {
        for (const Point& point : points) {
            add(point);
        }
        add(std::uint64_t{points.size()});
    }
    std::uint64_t value() const { return mState; }

private:
    std::uint64_t mState = 0;
};

/// The same numbers from every standard library, whose distributions are their own affair. One draw for each argument
/// list at most: compilers differ in the order in which they evaluate arguments.
class Numbers
{
public:
    explicit Numbers(std::uint64_t seed) : mState(seed) {}

    std::uint64_t bits()
    {
        mState += 0x9E3779B97F4A7C15U;
        std::uint64_t z = mState;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31);
    }
    double between(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(bits() >> 11) * 0x1p-53);
    }
    Point point(double most)
    {
        const double x = between(-most, most);
        return {x, between(-most, most)};
    }
    PointF pointF(double most)
    {
        const Point exact = point(most);
        return {static_cast<float>(exact.x), static_cast<float>(exact.y)};
    }
    double latitude() { return between(-90.0, 90.0); }
    double longitude() { return between(-180.0, 180.0); }
    /// Any course, and often one of the four winds.
    double course() { return bits() % 4 == 0 ? static_cast<double>(bits() % 5) * 90.0 : between(-360.0, 720.0); }

private:
    std::uint64_t mState;
};

/// 11 calls.
void planeGeometry(Numbers& numbers, Digest& digest)
{
    const Point a = numbers.point(1e4), b = numbers.point(1e4), c = numbers.point(1e4), d = numbers.point(1e4);
    Point crossing;
    double tA = 0.0, tB = 0.0;
    digest.add(std::uint64_t{crossLines(a, b, c, d, crossing, tA, tB)});
    digest.add(crossing);
    digest.add(Point(tA, tB));
    bool flag = false;
    digest.add(Line(a, b).distanceToPoint(c, flag, tA));
    digest.add(Line(a, b).crossLine(Line(c, d), flag));
    digest.add(std::uint64_t{pointInPolygon(a * 0.1, {b, c, d})});
    digest.add(std::uint64_t{getWindingDirection(std::vector<Point>{a, b, c, d})});

    const PointF aF = numbers.pointF(500.0), bF = numbers.pointF(500.0), cF = numbers.pointF(500.0);
    const double distance = numbers.between(-20.0, 20.0);
    PointF corner, begin, end;
    getParallelLine(aF, bF, distance, static_cast<int>(numbers.bits() % 2), begin, end);
    digest.add(begin);
    digest.add(end);
    getInnerCross(aF, bF, cF, distance, static_cast<int>(numbers.bits() % 2), corner);
    digest.add(corner);

    double samples[4][4];
    for (double(&row)[4] : samples) {
        for (double& sample : row) {
            sample = numbers.between(0.0, 4000.0);
        }
    }
    const double x = numbers.between(0.0, 1.0), y = numbers.between(0.0, 1.0);
    digest.add(getCubicDerivate(samples[0], x));
    digest.add(getBiCubicValue(samples, x, y));
    digest.add(getBiCubicDerivate(samples, x, y));
    double state = samples[0][0];
    digest.add(Filter::pt1(samples[0][1], y, x, &state));
}

/// 8 calls.
void earthModel(Numbers& numbers, Digest& digest)
{
    const double lat1 = numbers.latitude(), lon1 = numbers.longitude();
    // Half of the pairs as close as fixes of one route.
    const bool isNear = numbers.bits() % 2 == 0;
    const double lat2 = isNear ? lat1 + numbers.between(-0.5, 0.5) : numbers.latitude();
    const double lon2 = isNear ? lon1 + numbers.between(-0.5, 0.5) : numbers.longitude();
    Point out;
    double z = 0.0;
    digest.add(calcDistance(lat1, lon1, lat2, lon2));
    digest.add(calcBearing(lat1, lon1, lat2, lon2));
    const double course = numbers.course(), course2 = numbers.course();
    calcPointFromBrgDistance(lat1, lon1, course, numbers.between(0.0, 1e6), out.x, out.y);
    digest.add(out);
    latLong2Cartesian(lat1, lon1, out.x, out.y, z);
    digest.add(out);
    cartesian2LatLong(out.x, out.y, z, out.x, out.y);
    digest.add(out);
    latLong2Grid(lat1, lon1, lat2, lon2, out.x, out.y);
    digest.add(out);
    grid2LatLong(lat2, lon2, out.x, out.y, out.x, out.y);
    digest.add(out);
    digest.add(getHeadingDifference(course, course2));
}

/// 7 calls.
void coursesAndTurns(Numbers& numbers, Digest& digest)
{
    const double lat = numbers.latitude() * 0.9, lon = numbers.longitude();
    const double lat2 = lat + numbers.between(-1.0, 1.0), lon2 = lon + numbers.between(-1.0, 1.0);
    const double course = numbers.course(), course2 = numbers.course();
    const int direction = static_cast<int>(numbers.bits() % 3);
    Point out;
    calcIntersection(lat, lon, course, lat2, lon2, course2, out.x, out.y);
    digest.add(out);
    digest.add(std::uint64_t{
        calcDmeDistIntersection(lat, lon, course, lat2, lon2, numbers.between(100.0, 1e5), out.x, out.y)});
    digest.add(out);
    calcOutboundPoint(lat, lon, course, numbers.between(500.0, 9000.0), course2, direction, out.x, out.y);
    digest.add(out);

    const Point previous = numbers.point(2e4), waypoint = numbers.point(2e4), next = numbers.point(2e4);
    const double radius = numbers.between(100.0, 6000.0);
    bool isLimited = false;
    digest.add(calcFlyByPoints(previous, waypoint, next, radius, direction, isLimited));
    digest.add(std::uint64_t{isLimited});
    digest.add(calcFlyOverPoints(previous, waypoint, next, radius, direction, isLimited));
    digest.add(std::uint64_t{isLimited});
    digest.add(calcRadius(previous, waypoint, next));
    const PointF a = numbers.pointF(9.0), b = numbers.pointF(9.0);
    digest.add(angle(a, b));
}

/// 3 calls, on points of a tile of one degree.
void terrain(Numbers& numbers, const TerrainTile& tile, Digest& digest)
{
    const double lat = tile.latitudeOrigin() + numbers.between(0.0, 1.0);
    const double lon = tile.longitudeOrigin() + numbers.between(0.0, 1.0);
    double height = 0.0;
    unsigned char x = 0, y = 0, z = 0;
    digest.add(std::uint64_t{tile.getAltitude(lat, lon, height)});
    digest.add(height);
    digest.add(std::uint64_t{tile.getNormal(lat, lon, x, y, z)});
    digest.add(std::uint64_t{x} << 16 | std::uint64_t{y} << 8 | z);
    digest.add(std::uint64_t{tile.getNormalOld(lat, lon, x, y, z)});
    digest.add(std::uint64_t{x} << 16 | std::uint64_t{y} << 8 | z);
}

/// What tells one set of the C library's functions from another.
std::uint64_t mathLibraryDigest()
{
    Numbers numbers(5);
    Digest digest;
    for (int i = 0; i < 50'000; ++i) {
        const double radians = numbers.between(-4.0, 4.0), cosine = numbers.between(-1.0, 1.0);
        digest.add(std::sin(radians));
        digest.add(std::cos(radians));
        digest.add(std::tan(radians));
        digest.add(std::acos(cosine));
        digest.add(std::atan2(cosine, radians));
    }
    return digest.value();
}

TEST(SameBitsTest, PlaneGeometryAndTerrain)
{
    const Tavik::Support::TemporaryDirectory directory;
    const std::string file = directory.path() + "/N47E011.DT1";
    Tavik::Support::DtedGrid grid;
    grid.latitudeDegrees = 47;
    grid.longitudeDegrees = 11;
    Numbers heights(1);
    Tavik::Support::writeDted(
        file, grid, [&](unsigned int i, unsigned int j) { return static_cast<int>(i + 2 * j + heights.bits() % 64); });
    TerrainTile tile;
    tile.loadTile(file);
    ASSERT_TRUE(tile.loadAllData());
    tile.calcNormals();

    Numbers numbers(2);
    Digest digest;
    for (int i = 0; i < 25'000; ++i) { // 275,000 calls
        planeGeometry(numbers, digest);
    }
    for (int i = 0; i < 75'000; ++i) { // 225,000 calls
        terrain(numbers, tile, digest);
    }
    EXPECT_EQ(digest.value(), 0x5EF844B0AB8BDD65U) << std::hex << "0x" << digest.value();
}

TEST(SameBitsTest, Navigation)
{
    Numbers numbers(3);
    Digest digest;
    for (int i = 0; i < 45'000; ++i) { // 360,000 calls
        earthModel(numbers, digest);
    }
    for (int i = 0; i < 20'000; ++i) { // 140,000 calls
        coursesAndTurns(numbers, digest);
    }

    const struct
    {
        const char* name;
        std::uint64_t mathLibrary;
        std::uint64_t expected;
    } sets[] = {
        {"glibc 2.36 with fused multiply-add", 0x274C6BEED4B42D45U, 0x90E627C75BC3B11EU},
        {"glibc 2.36 without fused multiply-add", 0x32397197841D25BFU, 0xE6EE2D9252F1642AU},
    };
    const std::uint64_t mathLibrary = mathLibraryDigest();
    for (const auto& set : sets) {
        if (set.mathLibrary == mathLibrary) {
            EXPECT_EQ(digest.value(), set.expected) << set.name << std::hex << ", 0x" << digest.value();
            return;
        }
    }
    GTEST_SKIP() << "nobody has measured this C library's sines: " << std::hex << "0x" << mathLibrary << ", 0x"
                 << digest.value();
}

} // namespace
