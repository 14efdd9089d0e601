#include <moving_map/HeightGrid.h>

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
        const HeightGrid grid(HeightRaster({level, 5, -3}, hills));
        const HeightGrid east(HeightRaster({level, 5, -2}, hills));
        const HeightGrid north(HeightRaster({level, 6, -3}, hills));
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
        const HeightGrid grid(HeightRaster(key, [](double lat, double lon) { return 100.0 * lat + lon; }));
        const double cell = key.edgeDegrees() / BlockKey::Cells;
        const double expected = 100.0 * (key.southDegrees() + 30 * cell) + key.westDegrees() + 10 * cell;
        EXPECT_NEAR(grid.at(10, 30), expected, 1e-3 * std::abs(expected)) << "level " << level;
    }
}

TEST(HeightGrid, UnknownGroundIsLeftOutOfTheMean)
{
    // Block 0, 0 of level 3 spans half a degree; the terrain ends at 0.25 degrees of longitude, on node 37.5.
    const HeightGrid grid(HeightRaster({3, 0, 0}, [](double, double lon) { return lon < 0.25 ? 500.0 : Unknown; }));
    EXPECT_EQ(grid.at(0, 0), 500.0f);
    EXPECT_EQ(grid.at(37, 40), 500.0f);
    EXPECT_TRUE(std::isnan(grid.at(40, 40)));
}
