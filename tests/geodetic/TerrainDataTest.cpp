#include <tavik/geodetic/TerrainTile.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

// Genuine tiles (SRTM, NASA/NGA/USGS), from the folder that TAVIK_TERRAIN_DATA names. The figures were measured
// without the library.

using Tavik::Geodetic::TerrainTile;

namespace {

constexpr int Side = 1201;

class TerrainDataTest : public testing::Test
{
protected:
    void SetUp() override
    {
        const char* folder = std::getenv("TAVIK_TERRAIN_DATA");
        if (folder == nullptr) {
            GTEST_SKIP() << "TAVIK_TERRAIN_DATA does not name a folder of terrain tiles";
        }
        mFolder = std::string(folder) + "/";
    }

    std::string pathOf(const char* name) const { return mFolder + name; }

    void load(TerrainTile& tile, const char* name) const
    {
        const std::string path = pathOf(name);
        ASSERT_TRUE(path.back() == 'p' ? tile.loadTileHGT(path) : tile.loadTile(path));
        ASSERT_TRUE(tile.loadAllData()) << path;
    }

private:
    std::string mFolder;
};

std::vector<int> columnOf(const TerrainTile& tile, int j)
{
    std::vector<int> heights(tile.latitudeCount());
    for (std::size_t i = 0; i < heights.size(); ++i) {
        heights[i] = static_cast<int>(tile.getAltitude(static_cast<int>(i), j));
    }
    return heights;
}

/// What DTED reading does to a column whose voids are there already.
std::vector<int> smoothed(std::vector<int> heights)
{
    for (std::size_t k = 2; k < heights.size(); ++k) {
        if (heights[k - 2] == heights[k - 1]) {
            heights[k - 1] = static_cast<int>(heights[k - 2] + (heights[k] - heights[k - 2]) * 0.5);
        }
    }
    return heights;
}

/// The words of a DTED level 1 file, [column][row].
std::vector<std::vector<int>> wordsOf(const std::string& path)
{
    std::vector<std::vector<int>> words(Side, std::vector<int>(Side));
    std::FILE* file = std::fopen(path.c_str(), "rb");
    for (std::size_t j = 0; file != nullptr && j < words.size(); ++j) {
        std::fseek(file, static_cast<long>(3428 + j * (12 + 2 * Side) + 8), SEEK_SET);
        for (int& word : words[j]) {
            const int high = std::fgetc(file);
            word = high << 8 | std::fgetc(file);
        }
    }
    if (file != nullptr) {
        std::fclose(file);
    }
    return words;
}

TEST_F(TerrainDataTest, SrtmTilesHaveTheirFigures)
{
    const struct
    {
        const char* name;
        int lat, lon;
        int lowest, highest, peakI, peakJ; // lowest other than 0, which voids read as
        int corners[4];                    // south-west, south-east, north-west, north-east
        int zeros;                         // voids and sea
    } cases[] = {
        {"srtm/N42E001.SRTMGL3.hgt.zip", 42, 1, 349, 3100, 800, 478, {828, 707, 838, 360}, 7652},
        {"srtm/N41E001.SRTMGL3.hgt.zip", 41, 1, -20, 1204, 726, 974, {0, 0, 828, 707}, 134 + 234517},
        {"srtm/N43E007.SRTMGL3.hgt.zip", 43, 7, -11, 2064, 1195, 516, {0, 0, 771, 763}, 1595 + 1060406},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TerrainTile tile;
        ASSERT_NO_FATAL_FAILURE(load(tile, c.name));
        EXPECT_EQ(tile.latitudeOrigin(), c.lat);
        EXPECT_EQ(tile.longitudeOrigin(), c.lon);
        int lowest = 32767;
        int highest = -32768;
        int zeros = 0;
        for (int j = 0; j < Side; ++j) {
            for (const int height : columnOf(tile, j)) {
                zeros += height == 0;
                lowest = height != 0 ? std::min(lowest, height) : lowest;
                highest = std::max(highest, height);
            }
        }
        EXPECT_EQ(lowest, c.lowest);
        EXPECT_EQ(highest, c.highest);
        EXPECT_EQ(zeros, c.zeros);
        EXPECT_EQ(tile.getAltitude(c.peakI, c.peakJ), c.highest);
        EXPECT_EQ(tile.getAltitude(0, 0), c.corners[0]);
        EXPECT_EQ(tile.getAltitude(0, Side - 1), c.corners[1]);
        EXPECT_EQ(tile.getAltitude(Side - 1, 0), c.corners[2]);
        EXPECT_EQ(tile.getAltitude(Side - 1, Side - 1), c.corners[3]);
        double height = 0.0;
        EXPECT_TRUE(tile.getAltitude(c.lat + c.peakI / 1200.0, c.lon + c.peakJ / 1200.0, height));
        EXPECT_NEAR(height, c.highest, 1e-6);
    }
}

TEST_F(TerrainDataTest, GenuineDtedStoresSignAndMagnitude)
{
    TerrainTile tile;
    ASSERT_NO_FATAL_FAILURE(load(tile, "dted/n00_e006_3arc_v2.DT1"));
    const std::vector<std::vector<int>> words = wordsOf(pathOf("dted/n00_e006_3arc_v2.DT1"));
    int voids = 0;
    int belowSea = 0;
    int wrongColumns = 0;
    for (std::size_t j = 0; j < words.size(); ++j) {
        std::vector<int> expected = words[j];
        for (int& height : expected) {
            voids += height == 0xFFFF;
            belowSea += height > 0x8000 && height < 0xFFFF; // -4 and -7
            height = height == 0xFFFF ? -1 : height > 0x8000 ? 0 : height;
        }
        wrongColumns += columnOf(tile, static_cast<int>(j)) != smoothed(expected);
    }
    EXPECT_EQ(voids, 4072);
    EXPECT_EQ(belowSea, 2);
    EXPECT_EQ(wrongColumns, 0);
    EXPECT_EQ(tile.getAltitude(323, 650), 1979);
    EXPECT_EQ(tile.latitudeOrigin(), 0);
    EXPECT_EQ(tile.longitudeOrigin(), 6);
}

TEST_F(TerrainDataTest, DtedTwinDiffersBySmoothingAndVoidsOnly)
{
    TerrainTile srtm;
    TerrainTile dted;
    ASSERT_NO_FATAL_FAILURE(load(srtm, "srtm/N42E001.SRTMGL3.hgt.zip"));
    ASSERT_NO_FATAL_FAILURE(load(dted, "derived/N42E001.DT1"));
    int different = 0;
    int wrongColumns = 0;
    for (int j = 0; j < Side; ++j) {
        std::vector<int> expected = columnOf(srtm, j);
        std::replace(expected.begin(), expected.end(), 0, -1); // the tile has no other zeros than its voids
        const std::vector<int> heights = columnOf(dted, j);
        wrongColumns += heights != smoothed(expected);
        different += heights != expected;
    }
    EXPECT_EQ(wrongColumns, 0);
    EXPECT_GT(different, 0) << "the smoothing shows";
}

TEST_F(TerrainDataTest, NoStepAtTheSeamOfTwoTiles)
{
    TerrainTile north;
    TerrainTile south;
    ASSERT_NO_FATAL_FAILURE(load(north, "srtm/N42E001.SRTMGL3.hgt.zip"));
    ASSERT_NO_FATAL_FAILURE(load(south, "srtm/N41E001.SRTMGL3.hgt.zip"));
    int differentSamples = 0;
    double largestStep = 0.0;
    for (int j = 0; j < Side; ++j) {
        differentSamples += north.getAltitude(0, j) != south.getAltitude(Side - 1, j);
        if (j == Side - 1) {
            break; // beyond the last column the tiles no longer look at the seam alone
        }
        const double lon = 1.0 + (j + 0.3) / 1200.0;
        double above = 0.0;
        double below = 10000.0;
        EXPECT_TRUE(north.getAltitude(42.0 + 1e-9, lon, above));
        EXPECT_TRUE(south.getAltitude(42.0 - 1e-9, lon, below));
        largestStep = std::max(largestStep, std::abs(above - below));
    }
    EXPECT_EQ(differentSamples, 0);
    EXPECT_LT(largestStep, 1e-3);
}

TEST_F(TerrainDataTest, OverviewTile)
{
    TerrainTile tile;
    ASSERT_NO_FATAL_FAILURE(load(tile, "derived/W020N90.SRTMGL30.dem.zip"));
    EXPECT_TRUE(tile.isLowRes());
    EXPECT_EQ(tile.latitudeOrigin(), 40.0);
    EXPECT_EQ(tile.longitudeOrigin(), -20.0);
    int known = 0;
    int highest = 0;
    for (int j = 0; j < 4800; ++j) {
        for (const int height : columnOf(tile, j)) {
            known += height != 0;
            highest = std::max(highest, height);
        }
    }
    EXPECT_LE(known, 43198); // and the sea
    EXPECT_GT(known, 25000);
    EXPECT_EQ(highest, 2928);
    EXPECT_EQ(tile.getAltitude(5999 - 5679, 2568), 2928);
}

} // namespace
