#include <tavik/geodetic/TerrainTile.h>

#include <support/TemporaryDirectory.h>
#include <support/ZipWriter.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <string>

using Tavik::Geodetic::TerrainTile;
using Tavik::Support::ZipMember;

namespace {

constexpr std::size_t Srtm3Side = 1201;
constexpr std::size_t Srtm3Bytes = 2 * Srtm3Side * Srtm3Side;

/// A height that tells its row (north first) and column apart from any other near it, with voids among them.
std::int16_t heightAt(std::size_t row, std::size_t column)
{
    return static_cast<std::int16_t>(row * 37 + column * 5);
}

/// What the library makes of it.
int expectedAt(std::size_t row, std::size_t column)
{
    return heightAt(row, column) < -9000 ? 0 : heightAt(row, column);
}

std::string heightFile(std::size_t rows, std::size_t columns)
{
    std::string bytes(2 * rows * columns, '\0');
    for (std::size_t k = 0; k < rows * columns; ++k) {
        const int height = heightAt(k / columns, k % columns);
        bytes[2 * k] = static_cast<char>(height >> 8 & 0xFF);
        bytes[2 * k + 1] = static_cast<char>(height & 0xFF);
    }
    return bytes;
}

/// Number of samples that are not what the file holds; the first `rowsThere` rows from the north are in the file.
std::size_t wrongSamples(const TerrainTile& tile, std::size_t rowsThere)
{
    const std::size_t rows = tile.latitudeCount();
    std::size_t wrong = 0;
    for (std::size_t column = 0; column < tile.longitudeCount(); ++column) {
        for (std::size_t row = 0; row < rows; ++row) {
            const int expected = row < rowsThere ? expectedAt(row, column) : 0;
            wrong += tile.getAltitude(static_cast<int>(rows - 1 - row), static_cast<int>(column)) != expected;
        }
    }
    return wrong;
}

class TerrainTileSrtmTest : public testing::Test
{
protected:
    Tavik::Support::TemporaryDirectory directory;
    std::string path = directory.path() + "/N47E011.SRTMGL3.hgt.zip";
    TerrainTile tile;
};

TEST(TerrainTileSrtmName, TellsOriginAndKind)
{
    const struct
    {
        const char* path;
        bool answer;
        int lat, lon;
        bool lowRes;
        std::uint32_t latIndex, lonIndex;
    } cases[] = {
        {"N47E011.SRTMGL3.hgt.zip", true, 47, 11, false, 137, 191},
        {"/data/v1.SRTMGL30.x/S01W123.SRTMGL1.hgt.zip", true, -1, -123, false, 89, 57},
        {"./s01w123.SRTMGL1", true, -1, -123, false, 89, 57},
        {"E020N40.SRTMGL30.dem.zip", true, -10, 20, true, 80, 200},
        {"w180s10.SRTMGL30.dem.zip", true, -60, -180, true, 30, 0},
        {"N47E011.SRTMGL2.hgt.zip", true, 0, 0, false, 90, 180},
        {"N47E011.hgt", true, 0, 0, false, 90, 180},
        {".SRTMGL3", true, 0, 0, false, 90, 180}, // no digits
        {"N47E011", true, 0, 0, false, 90, 180},
        {"folder/", true, 0, 0, false, 90, 180},
        {"N47E01", false, 0, 0, false, 90, 180},
        {"", false, 0, 0, false, 90, 180},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        TerrainTile tile;
        EXPECT_EQ(tile.loadTileHGT(c.path), c.answer);
        EXPECT_EQ(tile.latitudeOrigin(), c.lat);
        EXPECT_EQ(tile.longitudeOrigin(), c.lon);
        EXPECT_EQ(tile.isLowRes(), c.lowRes);
        EXPECT_EQ(tile.latitudeIndex(), c.latIndex);
        EXPECT_EQ(tile.longitudeIndex(), c.lonIndex);
        EXPECT_FALSE(tile.loaded());
    }
}

TEST_F(TerrainTileSrtmTest, EachSizeHasItsGrid)
{
    const struct
    {
        const char* name;
        std::size_t rows, columns;
        double spacing, latExtent, lonExtent;
    } cases[] = {
        {"N47E011.SRTMGL3.hgt.zip", 1201, 1201, 0.0008333333333333334, 1.0008333333333335, 1.0008333333333335},
        {"N47E011.SRTMGL1.hgt.zip", 3601, 3601, 0.0002777777777777778, 1.0002777777777778, 1.0002777777777778},
        {"E020N40.SRTMGL30.dem.zip", 6000, 4800, 0.008333333333333333, 50.0, 40.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string archive = directory.path() + "/" + c.name;
        const std::string heights = heightFile(c.rows, c.columns);
        Tavik::Support::ZipWriter writer(archive);
        writer.add("heights", heights.data(), heights.size(), 1);
        ASSERT_TRUE(writer.close());
        ASSERT_TRUE(tile.loadTileHGT(archive));
        ASSERT_TRUE(tile.loadAllData());
        EXPECT_EQ(tile.latitudeSpacing(), c.spacing);
        EXPECT_EQ(tile.longitudeSpacing(), c.spacing);
        EXPECT_EQ(tile.latitudeExtent(), c.latExtent);
        EXPECT_EQ(tile.longitudeExtent(), c.lonExtent);
        ASSERT_EQ(tile.latitudeCount(), c.rows);
        ASSERT_EQ(tile.longitudeCount(), c.columns);
        EXPECT_EQ(wrongSamples(tile, c.rows), 0u);
    }
}

TEST_F(TerrainTileSrtmTest, DamagedArchives)
{
    const std::string heights = heightFile(Srtm3Side, Srtm3Side);
    ZipMember shorter{"early end", heights.substr(0, 2 * Srtm3Side * 100)};
    shorter.claimedUncompressedSize = Srtm3Bytes;
    ZipMember longer{"more than promised", heights + "xx"};
    longer.claimedUncompressedSize = Srtm3Bytes;
    ZipMember stored{"stored", heights};
    stored.stored = true;
    ZipMember corrupt{"corrupt", heights};
    corrupt.rawData = std::string(100000, '\xFF');
    ZipMember bomb{"promises what it cannot hold", "x"};
    bomb.claimedUncompressedSize = 57600000;
    const struct
    {
        ZipMember member;
        bool answer;
        std::size_t rowsThere;
    } cases[] = {
        {shorter, true, 100},      {longer, false, 0},
        {stored, false, 0},        {corrupt, false, 0},
        {bomb, false, 0},          {{"one sample short", heights.substr(2)}, false, 0},
        {{"empty", ""}, false, 0}, {{"whole", heights}, true, Srtm3Side},
    };
    ASSERT_TRUE(tile.loadTileHGT(path));
    EXPECT_FALSE(tile.loadAllData()); // no archive yet
    for (const auto& c : cases) {
        SCOPED_TRACE(c.member.name);
        Tavik::Support::writeZip(path, {c.member});
        EXPECT_EQ(tile.loadAllData(), c.answer); // a failure is no reason not to try again
        EXPECT_EQ(tile.loaded(), c.answer);
        EXPECT_EQ(wrongSamples(tile, c.rowsThere), 0u);
        tile.clear();
    }
    ASSERT_TRUE(tile.loadAllData());
    Tavik::Support::writeZip(path, {stored});
    EXPECT_FALSE(tile.loadAllData());
    EXPECT_TRUE(tile.loaded()) << "samples in memory stay";
    EXPECT_EQ(wrongSamples(tile, Srtm3Side), 0u);
    ASSERT_TRUE(tile.loadTileHGT(path));
    EXPECT_FALSE(tile.loaded()) << "registering another file drops them";

    TerrainTile aside; // for normals alone: its grid is not known before the samples are
    aside.loadTileHGT(path);
    aside.calcNormals();
    Tavik::Support::writeZip(path, {{"whole", heights}});
    ASSERT_TRUE(aside.loadAllData());
    double height = 0.0;
    unsigned char x, y, z;
    EXPECT_TRUE(aside.getAltitude(47.5, 11.5, height));
    EXPECT_FALSE(aside.getNormal(47.5, 11.5, x, y, z));
}

} // namespace
