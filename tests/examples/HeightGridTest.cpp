#include <moving_map/HeightGrid.h>
#include <moving_map/RouteProfile.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace MovingMap;

namespace {

constexpr double Unknown = std::numeric_limits<double>::quiet_NaN();

double hills(double lat, double lon)
{
    return 800.0 + 300.0 * std::sin(40.0 * lat) * std::cos(31.0 * lon);
}

} // namespace

TEST(HeightGrid, BlocksSideBySideAgreeOnTheirEdge)
{
    for (int level = 0; level <= BlockKey::HighestLevel; ++level) {
        const HeightGrid grid({level, 5, -3}, hills);
        const HeightGrid east({level, 5, -2}, hills);
        const HeightGrid north({level, 6, -3}, hills);
        for (std::size_t i = 0; i < HeightGrid::Nodes; ++i) {
            ASSERT_EQ(grid.at(BlockKey::Cells, i), east.at(0, i)) << "level " << level << " row " << i;
            ASSERT_EQ(grid.at(i, BlockKey::Cells), north.at(i, 0)) << "level " << level << " column " << i;
        }
    }
}

TEST(HeightGrid, NodesLieWhereTheBlockSays)
{
    for (int level = 0; level <= BlockKey::HighestLevel; ++level) {
        const BlockKey key = {level, 2, -1};
        const HeightGrid grid(key, [](double lat, double lon) { return 100.0 * lat + lon; });
        const double cell = key.edgeDegrees() / BlockKey::Cells;
        const double expected = 100.0 * (key.southDegrees() + 30 * cell) + key.westDegrees() + 10 * cell;
        EXPECT_NEAR(grid.at(10, 30), expected, 1e-3 * std::abs(expected)) << "level " << level;
    }
}

TEST(HeightGrid, UnknownGroundIsLeftOutOfTheMean)
{
    // Block 0, 0 of level 3 spans half a degree; the terrain ends at 0.25 degrees of longitude, on node 37.5.
    const HeightGrid grid({3, 0, 0}, [](double, double lon) { return lon < 0.25 ? 500.0 : Unknown; });
    EXPECT_EQ(grid.at(0, 0), 500.0f);
    EXPECT_EQ(grid.at(37, 40), 500.0f);
    EXPECT_TRUE(std::isnan(grid.at(40, 40)));
}

TEST(HeightGrid, HolesInMountainsAreFilledAndTheSeaIsNot)
{
    struct Case
    {
        const char* name;
        double ground; // metres
        double hole;   // metres
        double radius; // degrees
        bool filled;
    };
    const Case cases[] = {
        {"void", 1500.0, 0.0, 0.005, true},    {"void of DTED", 1500.0, -1.0, 0.005, true},
        {"lagoon", 60.0, 0.0, 0.005, false},   {"bay larger than the margin", 1500.0, 0.0, 0.2, false},
        {"lake", 1500.0, 300.0, 0.005, false},
    };
    for (const Case& c : cases) {
        // The hole lies on the edge between two blocks, which must treat it alike.
        const HeightSource source = [&](double lat, double lon) {
            return std::hypot(lat - 0.03, lon - 0.0625) < c.radius ? c.hole : c.ground;
        };
        const HeightGrid west({0, 0, 0}, source);
        const HeightGrid east({0, 0, 1}, source);
        const float expected = static_cast<float>(c.filled ? c.ground : c.hole);
        EXPECT_NEAR(west.at(BlockKey::Cells, 36), expected, 1.0) << c.name;
        for (std::size_t row = 0; row < HeightGrid::Nodes; ++row) {
            ASSERT_EQ(west.at(BlockKey::Cells, row), east.at(0, row)) << c.name << " row " << row;
        }
    }
}

TEST(RouteProfile, HolesBetweenHighGroundAreBridged)
{
    struct Case
    {
        const char* name;
        std::vector<float> heights;
        std::vector<float> bridged;
    };
    const Case cases[] = {
        {"void", {900, 900, 400, 0, -1, 0, 300, 600, 500}, {900, 850, 800, 750, 700, 650, 600, 550, 500}},
        {"sea before low coast", {900, 900, 900, 0, 0, 20, 20, 20}, {900, 900, 900, 0, 0, 20, 20, 20}},
        {"begins in a void", {0, 0, 0, 0, 700, 700, 700}, {0, 0, 0, 0, 700, 700, 700}},
        {"ends in a void", {700, 700, 700, 0, 700, 700}, {700, 700, 700, 0, 700, 700}},
        {"empty", {}, {}},
    };
    for (const Case& c : cases) {
        std::vector<float> heights = c.heights;
        bridgeVoids(heights);
        EXPECT_EQ(heights, c.bridged) << c.name;
    }
}
