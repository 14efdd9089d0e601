#include "TerrainTileForms.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

// Genuine tiles (SRTM, NASA/NGA/USGS), from the folder that TAVIK_TERRAIN_DATA names. The figures were measured
// without the library.

using Tavik::Geodetic::TerrainTile;

namespace {

constexpr std::size_t Side = 1201;

/// The folder, empty where there is none.
std::string folder()
{
    const char* name = std::getenv("TAVIK_TERRAIN_DATA");
    return name != nullptr ? name : "";
}

class TerrainDataTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (folder().empty()) {
            GTEST_SKIP() << "TAVIK_TERRAIN_DATA does not name a folder of terrain tiles";
        }
    }
};

bool load(TerrainTile& tile, const std::string& name)
{
    const std::string path = folder() + "/" + name;
    return (path.back() == 'p' ? tile.loadTileHGT(path) : tile.loadTile(path)) && tile.loadAllData();
}

TEST_F(TerrainDataTest, SrtmTilesHaveTheirFigures)
{
    const struct
    {
        const char* name;
        int lowest, highest, peakI, peakJ; // lowest other than 0, which voids read as
        std::array<double, 4> corners;     // south-west, south-east, north-west, north-east
        long zeros;                        // voids and sea
    } cases[] = {{"srtm/N42E001.SRTMGL3.hgt.zip", 349, 3100, 800, 478, {828, 707, 838, 360}, 7652},
                 {"srtm/N41E001.SRTMGL3.hgt.zip", -20, 1204, 726, 974, {0, 0, 828, 707}, 134 + 234517},
                 {"srtm/N43E007.SRTMGL3.hgt.zip", -11, 2064, 1195, 516, {0, 0, 771, 763}, 1595 + 1060406}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TerrainTile tile;
        ASSERT_TRUE(load(tile, c.name));
        std::vector<std::int16_t> samples(tile.samples(), tile.samples() + Side * Side);
        std::sort(samples.begin(), samples.end());
        EXPECT_EQ(std::count(samples.begin(), samples.end(), 0), c.zeros);
        EXPECT_EQ(samples.front() < 0 ? samples.front() : *std::upper_bound(samples.begin(), samples.end(), 0),
                  c.lowest);
        EXPECT_EQ(samples.back(), c.highest);
        const int last = Side - 1;
        EXPECT_EQ((std::array<double, 4>{tile.getAltitude(0, 0), tile.getAltitude(0, last), tile.getAltitude(last, 0),
                                         tile.getAltitude(last, last)}),
                  c.corners);
        double height = 0.0;
        EXPECT_TRUE(tile.getAltitude(tile.latitudeOrigin() + c.peakI / 1200.0,
                                     tile.longitudeOrigin() + c.peakJ / 1200.0, height));
        EXPECT_NEAR(height, c.highest, 1e-6);
    }
}

TEST_F(TerrainDataTest, GenuineDtedStoresSignAndMagnitude)
{
    TerrainTile tile;
    ASSERT_TRUE(load(tile, "dted/n00_e006_3arc_v2.DT1"));
    EXPECT_EQ(tile.getAltitude(323, 650), 1979);
    std::ifstream file(folder() + "/dted/n00_e006_3arc_v2.DT1", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    int voids = 0;
    int belowSea = 0;
    for (std::size_t j = 0; j < Side; ++j) {
        std::vector<int> expected(Side);
        for (std::size_t i = 0; i < Side; ++i) {
            const std::size_t word = 3428 + j * (8 + 2 * Side + 4) + 8 + 2 * i;
            const int stored =
                static_cast<unsigned char>(bytes[word]) << 8 | static_cast<unsigned char>(bytes[word + 1]);
            voids += stored == 0xFFFF;
            belowSea += stored > 0x8000 && stored < 0xFFFF; // -4 and -7
            expected[i] = stored == 0xFFFF ? -1 : stored > 0x8000 ? 0 : stored;
        }
        ASSERT_EQ(columnOf(tile, j), asDtedReads(expected)) << j;
    }
    EXPECT_EQ(voids, 4072);
    EXPECT_EQ(belowSea, 2);
}

TEST_F(TerrainDataTest, DtedTwinDiffersBySmoothingAndVoidsOnly)
{
    TerrainTile srtm, dted;
    ASSERT_TRUE(load(srtm, "srtm/N42E001.SRTMGL3.hgt.zip") && load(dted, "derived/N42E001.DT1"));
    for (std::size_t j = 0; j < Side; ++j) {
        std::vector<int> expected = columnOf(srtm, j);
        std::replace(expected.begin(), expected.end(), 0, -1); // the tile has no other zeros than its voids
        ASSERT_EQ(columnOf(dted, j), asDtedReads(expected)) << j;
    }
}

TEST_F(TerrainDataTest, NoStepAtTheSeamOfTwoTiles)
{
    TerrainTile north, south;
    ASSERT_TRUE(load(north, "srtm/N42E001.SRTMGL3.hgt.zip") && load(south, "srtm/N41E001.SRTMGL3.hgt.zip"));
    for (std::size_t j = 0; j + 1 < Side; ++j) {
        const double lon = 1.0 + (static_cast<double>(j) + 0.3) / 1200.0;
        double above = 0.0;
        double below = 10000.0;
        EXPECT_TRUE(north.getAltitude(42.0 + 1e-9, lon, above));
        EXPECT_TRUE(south.getAltitude(42.0 - 1e-9, lon, below));
        ASSERT_NEAR(above, below, 1e-3) << j;
    }
}

TEST_F(TerrainDataTest, OverviewTile)
{
    TerrainTile tile;
    ASSERT_TRUE(load(tile, "derived/W020N90.SRTMGL30.dem.zip"));
    EXPECT_TRUE(tile.isLowRes());
    EXPECT_EQ(tile.latitudeOrigin(), 40.0);
    EXPECT_EQ(tile.longitudeOrigin(), -20.0);
    const std::int16_t* end = tile.samples() + 6000L * 4800;
    const std::int16_t* highest = std::max_element(tile.samples(), end);
    EXPECT_EQ(*highest, 2928);
    EXPECT_EQ(highest - tile.samples(), 5999 - 5679 + 6000 * 2568);
    EXPECT_LE(end - tile.samples() - std::count(tile.samples(), end, 0), 43198); // known samples, less those at sea
}

} // namespace
