#include "TerrainTileForms.h"

#include <support/DtedWriter.h>
#include <support/TemporaryDirectory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <random>

using namespace Tavik::Support;
using Tavik::Geodetic::TerrainTile;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

constexpr long HeaderLength = 3428;

/// Asks everything everywhere; the sanitizers tell whether that was safe.
void askEverything(TerrainTile& tile)
{
    tile.calcNormals();
    for (const double a : {-1.5, -0.5, 0.0, 0.5, 1.5, 8.0, 9.5, 1e300, NaN, Infinity}) {
        for (const double b : {-1.5, -0.5, 0.0, 0.5, 1.5, 8.0, 9.5, 1e300, NaN, Infinity}) {
            const double lat = tile.latitudeOrigin() + a * tile.latitudeSpacing();
            const double lon = tile.longitudeOrigin() + b * tile.longitudeSpacing();
            double height = 0.0;
            unsigned char x = 0, y = 0, z = 0;
            tile.getAltitude(lat, lon, height);
            tile.getNormal(lat, lon, x, y, z);
            tile.getNormalOld(lat, lon, x, y, z);
            tile.getAltitude(a > 8.0 ? INT_MAX : -1, b > 8.0 ? INT_MAX : -1);
        }
    }
}

class TerrainTileTest : public testing::Test
{
protected:
    /// A tile at 47 N, 11 E with samples one arc minute apart.
    void write(unsigned int rows, unsigned int columns, const DtedHeights& height)
    {
        writeDted(path, {47, 11, rows, columns, 600, 600}, height, DtedSign::TwosComplement);
    }

    /// Nine rows of nine samples, all different.
    void write()
    {
        write(9, 9, [](unsigned int i, unsigned int j) { return static_cast<int>(100 * i + j); });
    }

    bool load() { return tile.loadTile(path) && tile.loadAllData(); }

    TemporaryDirectory directory;
    std::string path = directory.path() + "/N47E011.DT1";
    TerrainTile tile;
};

TEST_F(TerrainTileTest, DtedHeaderFields)
{
    const struct
    {
        const char* fields; // longitude and latitude of the origin, then intervals
        std::vector<double> origin, spacing;
    } cases[] = {
        {"0110000E0470000N00300060", {47, 11, 137, 191}, {60 / 36000.0, 30 / 36000.0}},
        {"1233000W0451530S00300030", {-(45 + 15 / 60.0 + 30 / 3600.0), -123.5, 44, 56}, {30 / 36000.0, 30 / 36000.0}},
        {"0110000w0470000s00100010", {47, 11, 137, 191}, {10 / 36000.0, 10 / 36000.0}}, // only upper case negates
        {"????????????????????????", {0, 0, 90, 180}, {0, 0}}};
    for (const auto& c : cases) {
        write();
        overwriteBytes(path, 4, c.fields);
        ASSERT_TRUE(load());
        EXPECT_EQ(originOf(tile), c.origin) << c.fields;
        EXPECT_EQ(gridOf(tile),
                  (std::vector<double>{9, 9, c.spacing[0], c.spacing[1], 9 * c.spacing[0], 9 * c.spacing[1]}));
    }
}

TEST_F(TerrainTileTest, SmoothingAndVoids)
{
    const struct
    {
        DtedSign sign;
        std::vector<int> stored, read;
    } cases[] = {{DtedSign::TwosComplement, {5, 5, 9}, {5, 7, 9}},
                 {DtedSign::TwosComplement, {5, 5, 5, 9}, {5, 5, 7, 9}},
                 {DtedSign::TwosComplement, {-4, -4, -7, 0, 0, -1}, {-4, -5, -7, 0, 0, -1}}, // toward zero, not down
                 {DtedSign::TwosComplement, {-9000, -9001, -32768, 3}, {-9000, 0, 1, 3}},
                 {DtedSign::TwosComplement, {32767, 32767, 32766}, {32767, 32766, 32766}},
                 {DtedSign::TwosComplement, {7, 7}, {7, 7}},
                 {DtedSign::SignAndMagnitude, {100, DtedVoid, -7, 50}, {100, -1, 0, 50}}};
    for (const auto& c : cases) {
        const auto rows = static_cast<unsigned int>(c.stored.size());
        writeDted(
            path, {47, 11, rows, 1}, [&](unsigned int i, unsigned int) { return c.stored[i]; }, c.sign);
        ASSERT_TRUE(load());
        EXPECT_EQ(columnOf(tile, 0), c.read) << testing::PrintToString(c.stored);
    }
}

TEST_F(TerrainTileTest, SmoothingOfManyColumns)
{
    std::mt19937 random(1);
    // Around the eight columns and eight samples taken at once, and the 64 columns read at once.
    for (const unsigned int rows : {1u, 2u, 8u, 9u, 10u, 17u, 60u}) {
        for (const unsigned int columns : {1u, 7u, 8u, 9u, 75u, 130u}) {
            // Few different heights make many equal neighbours; rare ones reach the ends of the range.
            std::vector<std::vector<int>> heights(columns, std::vector<int>(rows));
            write(rows, columns, [&](unsigned int i, unsigned int j) {
                const int rare[] = {-32768, -9001, -9000, 32767};
                return heights[j][i] = random() % 16 == 0 ? rare[random() % 4] : static_cast<int>(random() % 7) - 3;
            });
            ASSERT_TRUE(load());
            for (unsigned int j = 0; j < columns; ++j) {
                ASSERT_EQ(columnOf(tile, j), asDtedReads(heights[j]))
                    << rows << " rows, column " << j << " of " << columns;
            }
        }
    }
}

TEST_F(TerrainTileTest, Heights)
{
    const int heights[3][4] = {{10, 20, 40, 70}, {110, 130, 170, 200}, {1000, 1100, 1500, 1700}}; // [i][j]
    write(3, 4, [&](unsigned int i, unsigned int j) { return heights[i][j]; });
    ASSERT_TRUE(load());
    constexpr double None = -12345.0;
    const struct
    {
        double i, j, height; // position in spacings from the origin
    } points[] = {
        {0, 0, 10},        {1, 3, 200},        {2, 3, 1700},        {0.5, 0.5, 67.5},    {1.25, 0.5, 352.5},
        {-0.5, 0, -40},    {0, -0.5, 5},                         // the first cell extrapolated
        {2.5, 0.5, 1025},  {1.25, 3.5, 387.5}, {2.5, 3.5, 1700}, // last row: h10 = h11 = h00; column: h01 = h11 = h00
        {-1.001, 0, None}, {0, -1.001, None},  {3.001, 0, None},    {0, 4.001, None},    {4294967297.0, 0, None},
        {NaN, 0, None},    {0, NaN, None},     {Infinity, 0, None}, {0, -Infinity, None}};
    for (const auto& p : points) {
        double height = None;
        EXPECT_EQ(tile.getAltitude(47 + p.i / 60, 11 + p.j / 60, height), p.height != None) << p.i << ", " << p.j;
        EXPECT_NEAR(height, p.height, 1e-6) << p.i << ", " << p.j;
    }
    const int samples[][3] = {{2, 3, 1700},      {1, -1, 90},        {1, 4, 230},      {-1, 2, -90},  {3, 2, 2830},
                              {-1, -1, -110},    {3, 4, 3230},       {-1, 4, -30},     {3, -1, 1870}, {-5, 9, -30},
                              {INT_MIN, 0, -90}, {INT_MAX, 0, 1890}, {1, INT_MAX, 230}};
    for (const auto& s : samples) {
        EXPECT_EQ(tile.getAltitude(s[0], s[1]), s[2]) << s[0] << ", " << s[1];
    }
    tile.clear();
    EXPECT_EQ(tile.getAltitude(2, 3), 0.0);
}

TEST_F(TerrainTileTest, DamagedHeaders)
{
    const struct
    {
        long offset;
        const char* bytes;
        bool answer;
    } cases[] = {{47, "0000", false},
                 {51, "0000", false},
                 {47, "-999", false},
                 {51, "-001", false},
                 {47, "xxxxyyyy", false},
                 {51, "0001", true},
                 {47, "0001", true},
                 {47, "00010001", true},
                 {51, "9999", true},
                 {47, "9999", true},
                 {20, "00000000", true},
                 {20, "-600-600", true},
                 {4, "9999999E9999999N", true},
                 {4, "-99-9-9W-99-9-9S", true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.bytes << " at " << c.offset);
        write();
        overwriteBytes(path, c.offset, c.bytes);
        TerrainTile damaged;
        EXPECT_TRUE(damaged.loadTile(path));
        EXPECT_EQ(damaged.loadAllData(), c.answer);
        EXPECT_EQ(damaged.loaded(), c.answer);
        askEverything(damaged);
        damaged.clear();
        askEverything(damaged);
    }
}

TEST_F(TerrainTileTest, TruncatedFiles)
{
    const long record = 8 + 2 * 20 + 4;
    const struct
    {
        long length, samples; // in the file
    } cases[] = {{0, 0},
                 {79, 0},
                 {HeaderLength + 8, 0},
                 {HeaderLength + 10, 1},
                 {HeaderLength + record, 20},
                 {HeaderLength + 69 * record + 8 + 10, 1385},
                 {HeaderLength + 70 * record - 4, 1400}};
    for (const auto& c : cases) {
        write(20, 70, [](unsigned int i, unsigned int) { return static_cast<int>(1000 + i); });
        std::filesystem::resize_file(path, static_cast<std::uintmax_t>(c.length));
        EXPECT_EQ(load(), c.samples > 0) << c.length;
        EXPECT_EQ(c.samples > 0 ? 1400 - std::count(tile.samples(), tile.samples() + 1400, 0) : 0, c.samples)
            << c.length;
    }
}

TEST_F(TerrainTileTest, HeaderRereadWhileLoaded)
{
    write();
    ASSERT_TRUE(load());
    overwriteBytes(path, 4, "0120000E0480000N");
    overwriteBytes(path, HeaderLength + 9L * (8 + 2 * 9 + 4) - 6, "\x22\x22"); // the north-east sample
    EXPECT_TRUE(tile.loadAllData());
    EXPECT_EQ(tile.latitudeOrigin(), 48);
    EXPECT_EQ(tile.getAltitude(8, 8), 808);
    overwriteBytes(path, 4, "0130000E0490000N");
    overwriteBytes(path, 47, "00990099");
    EXPECT_TRUE(tile.loadAllData());
    EXPECT_EQ(tile.latitudeOrigin(), 48);
    EXPECT_EQ(tile.getAltitude(8, 8), 808);
    askEverything(tile);
    tile.clear();
    EXPECT_TRUE(!tile.loaded() && tile.loadAllData());
    EXPECT_EQ(tile.latitudeCount(), 99u);
}

TEST_F(TerrainTileTest, MissingFileSetsTheTileAside)
{
    const std::string message = "could not open data file <" + path + ">\n";
    CaptureStdout();
    EXPECT_FALSE(tile.loadTile(path));
    EXPECT_FALSE(tile.loadAllData());
    write();
    EXPECT_FALSE(tile.loadAllData());
    EXPECT_EQ(GetCapturedStdout(), message + message);
}

TEST_F(TerrainTileTest, LoadsStepByStep)
{
    write();
    std::FILE* file = std::fopen(path.c_str(), "rb");
    tile.loadHeader(file);
    EXPECT_EQ(std::ftell(file), HeaderLength);
    tile.loadData(file);
    EXPECT_FALSE(tile.loaded());
    EXPECT_EQ(tile.getAltitude(8, 8), 808);
    tile.loadData(file); // at the end of the file: nothing in place of what there was
    EXPECT_EQ(tile.samples(), nullptr);
    std::fclose(file);
    tile.loadHeader(nullptr);
    tile.loadData(nullptr);
    EXPECT_EQ(tile.latitudeCount(), 0u);
}

TEST_F(TerrainTileTest, ReadsNumbersAndText)
{
    std::FILE* file = std::tmpfile();
    const unsigned char bytes[] = {'a', 0, 'c', 0x12, 0x34, 1, 2, 3, 4, 5, 0x80};
    std::fwrite(bytes, 1, sizeof bytes, file);
    std::rewind(file);
    std::string text;
    short word = 0;
    int number = -1; // in the order of little-endian processors
    TerrainTile::readString(file, text, 3);
    EXPECT_EQ(text, std::string("a\0c", 3));
    EXPECT_TRUE(TerrainTile::readBinary(file, word) == 2 && word == 0x1234);
    EXPECT_TRUE(TerrainTile::readBinary(file, number, 1) == 1 && number == 1);
    EXPECT_TRUE(TerrainTile::readBinary(file, number, 4000000000u) == 4 && number == 0x05040302);
    EXPECT_TRUE(TerrainTile::readBinary(file, word) == 1 && word == static_cast<short>(0x8000));
    TerrainTile::readString(file, text, 4); // beyond the end
    EXPECT_EQ(text, std::string(4, '\0'));
    std::fclose(file);
}

} // namespace
