#include "TerrainTileForms.h"

#include <support/TemporaryDirectory.h>
#include <support/ZipWriter.h>

#include <gtest/gtest.h>

#include <string>

using Tavik::Geodetic::TerrainTile;
using Tavik::Support::ZipMember;

namespace {

constexpr std::size_t Side = 1201;

/// A height that tells its row (north first) and column apart from others near it, with voids among them.
std::int16_t heightAt(std::size_t row, std::size_t column)
{
    return static_cast<std::int16_t>(row * 37 + column * 5);
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

/// Number of samples that are not what the file holds, which ends after some rows.
std::size_t wrongSamples(const TerrainTile& tile, std::size_t rowsThere)
{
    std::size_t wrong = 0;
    for (std::size_t column = 0; column < tile.longitudeCount(); ++column) {
        const std::vector<int> heights = columnOf(tile, column);
        for (std::size_t row = 0; row < heights.size(); ++row) {
            const int stored = row < rowsThere ? heightAt(row, column) : 0;
            wrong += heights[heights.size() - 1 - row] != (stored < -9000 ? 0 : stored);
        }
    }
    return wrong;
}

TEST(TerrainTileSrtmTest, NameTellsOriginAndKind)
{
    const struct
    {
        const char* path;
        bool lowRes, answer;
        std::vector<double> origin;
    } cases[] = {{"N47E011.SRTMGL3.hgt.zip", false, true, {47, 11, 137, 191}},
                 {"/data/v1.SRTMGL30.x/S01W123.SRTMGL1.hgt.zip", false, true, {-1, -123, 89, 57}},
                 {"./s01w123.SRTMGL1", false, true, {-1, -123, 89, 57}},
                 {"E020N40.SRTMGL30.dem.zip", true, true, {-10, 20, 80, 200}},
                 {"w180s10.SRTMGL30.dem.zip", true, true, {-60, -180, 30, 0}},
                 {"N47E011.SRTMGL2.hgt.zip", false, true, {0, 0, 90, 180}},
                 {".SRTMGL3", false, true, {0, 0, 90, 180}},
                 {"N47E011", false, true, {0, 0, 90, 180}},
                 {"folder/", false, true, {0, 0, 90, 180}},
                 {"N47E01", false, false, {0, 0, 90, 180}}};
    for (const auto& c : cases) {
        TerrainTile tile;
        EXPECT_EQ(tile.loadTileHGT(c.path), c.answer) << c.path;
        EXPECT_EQ(tile.isLowRes(), c.lowRes) << c.path;
        EXPECT_EQ(originOf(tile), c.origin) << c.path;
    }
}

TEST(TerrainTileSrtmTest, EachSizeHasItsGrid)
{
    const struct
    {
        const char* name;
        std::vector<double> grid;
    } cases[] = {{"N47E011.SRTMGL3.zip",
                  {1201, 1201, 0.0008333333333333334, 0.0008333333333333334, 1.0008333333333335, 1.0008333333333335}},
                 {"N47E011.SRTMGL1.zip",
                  {3601, 3601, 0.0002777777777777778, 0.0002777777777777778, 1.0002777777777778, 1.0002777777777778}},
                 {"E020N40.SRTMGL30.zip", {6000, 4800, 0.008333333333333333, 0.008333333333333333, 50.0, 40.0}}};
    const Tavik::Support::TemporaryDirectory directory;
    TerrainTile tile;
    for (const auto& c : cases) {
        const std::string path = directory.path() + "/" + c.name;
        const auto rows = static_cast<std::size_t>(c.grid[0]);
        const std::string heights = heightFile(rows, static_cast<std::size_t>(c.grid[1]));
        Tavik::Support::ZipWriter writer(path);
        writer.add("heights", heights.data(), heights.size(), 1);
        ASSERT_TRUE(writer.close() && tile.loadTileHGT(path) && tile.loadAllData());
        EXPECT_EQ(gridOf(tile), c.grid);
        EXPECT_EQ(wrongSamples(tile, rows), 0u) << c.name;
    }
}

TEST(TerrainTileSrtmTest, DamagedArchives)
{
    const std::string heights = heightFile(Side, Side);
    ZipMember shorter{"early end", heights.substr(0, 2 * Side * 100)};
    ZipMember longer{"more than promised", heights + "xx"};
    shorter.claimedUncompressedSize = longer.claimedUncompressedSize = static_cast<std::uint32_t>(heights.size());
    ZipMember corrupt{"corrupt", heights};
    corrupt.rawData = std::string(100000, '\xFF');
    ZipMember bomb{"promises what it cannot hold", "x"};
    bomb.claimedUncompressedSize = 57600000;
    const struct
    {
        ZipMember member;
        std::size_t rowsThere; // 0: not read
    } cases[] = {{shorter, 100},
                 {longer, 0},
                 {corrupt, 0},
                 {bomb, 0},
                 {{"one sample short", heights.substr(2)}, 0},
                 {{"whole", heights}, Side}};
    const Tavik::Support::TemporaryDirectory directory;
    const std::string path = directory.path() + "/N47E011.SRTMGL3.hgt.zip";
    TerrainTile tile;
    ASSERT_TRUE(tile.loadTileHGT(path));
    EXPECT_FALSE(tile.loadAllData()); // no archive yet
    for (const auto& c : cases) {
        SCOPED_TRACE(c.member.name);
        tile.clear();
        Tavik::Support::writeZip(path, {c.member});
        EXPECT_EQ(tile.loadAllData(), c.rowsThere > 0); // a failure is no reason not to try again
        EXPECT_EQ(tile.loaded(), c.rowsThere > 0);
        EXPECT_EQ(tile.loaded() ? wrongSamples(tile, c.rowsThere) : 0, 0u);
    }
    Tavik::Support::writeZip(path, {corrupt});
    EXPECT_FALSE(tile.loadAllData());
    EXPECT_EQ(wrongSamples(tile, Side), 0u) << "samples in memory stay";
    EXPECT_TRUE(tile.loadTileHGT(path));
    EXPECT_FALSE(tile.loaded()) << "registering a file drops them";

    TerrainTile aside; // for normals alone: its grid is not known before the samples are
    aside.loadTileHGT(path);
    aside.calcNormals();
    Tavik::Support::writeZip(path, {{"whole", heights}});
    double height = 0.0;
    unsigned char x, y, z;
    EXPECT_TRUE(aside.loadAllData() && aside.getAltitude(47.5, 11.5, height));
    EXPECT_FALSE(aside.getNormal(47.5, 11.5, x, y, z));
}

} // namespace
