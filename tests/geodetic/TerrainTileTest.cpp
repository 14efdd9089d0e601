#include <tavik/geodetic/TerrainTile.h>

#include <support/DtedWriter.h>
#include <support/TemporaryDirectory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <random>
#include <vector>

using Tavik::Geodetic::TerrainTile;
using Tavik::Support::DtedGrid;
using Tavik::Support::DtedHeights;
using Tavik::Support::DtedSign;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

constexpr long HeaderLength = 3428;

class TerrainTileTest : public testing::Test
{
protected:
    /// A tile of one degree from 47 N, 11 E with rows x columns samples, one arc minute apart.
    void write(unsigned int rows, unsigned int columns, const DtedHeights& height)
    {
        writeDted(path, DtedGrid{47, 11, rows, columns, 600, 600}, height, DtedSign::TwosComplement);
    }

    /// One column of the given heights.
    void write(const std::vector<int>& heights)
    {
        write(static_cast<unsigned int>(heights.size()), 1, [&](unsigned int i, unsigned int) { return heights[i]; });
    }

    bool load() { return tile.loadTile(path) && tile.loadAllData(); }

    std::vector<int> column(int j)
    {
        std::vector<int> heights(tile.latitudeCount());
        for (std::size_t i = 0; i < heights.size(); ++i) {
            heights[i] = static_cast<int>(tile.getAltitude(static_cast<int>(i), j));
        }
        return heights;
    }

    /// Asks everything everywhere; the sanitizers tell whether that was safe.
    static void askEverything(TerrainTile& tile)
    {
        tile.calcNormals();
        const double steps[] = {-1.5, -0.5, 0.0, 0.5, 1.0, 1.5, 8.0, 9.5, 1e300, -1e300, NaN, Infinity};
        for (const double a : steps) {
            for (const double b : steps) {
                double height = 0.0;
                unsigned char x, y, z;
                const double lat = tile.latitudeOrigin() + a * tile.latitudeSpacing();
                const double lon = tile.longitudeOrigin() + b * tile.longitudeSpacing();
                tile.getAltitude(lat, lon, height);
                tile.getNormal(lat, lon, x, y, z);
                tile.getNormalOld(lat, lon, x, y, z);
            }
        }
        for (const int i : {INT_MIN, -1, 0, 1, 8, INT_MAX}) {
            for (const int j : {INT_MIN, -1, 0, 1, 8, INT_MAX}) {
                tile.getAltitude(i, j);
            }
        }
    }

    Tavik::Support::TemporaryDirectory directory;
    std::string path = directory.path() + "/N47E011.DT1";
    TerrainTile tile;
};

/// The rule as it is defined, sample by sample.
std::vector<int> smoothed(std::vector<int> heights)
{
    for (std::size_t k = 0; k < heights.size(); ++k) {
        heights[k] = heights[k] < -9000 ? 0 : heights[k];
        if (k >= 2 && heights[k - 2] == heights[k - 1]) {
            heights[k - 1] = static_cast<int>(heights[k - 2] + (heights[k] - heights[k - 2]) * 0.5);
        }
    }
    return heights;
}

TEST_F(TerrainTileTest, DtedHeaderFields)
{
    const struct
    {
        const char* name;
        const char* origin; // longitude, then latitude
        const char* intervals;
        double lat, lon, latSpacing, lonSpacing;
        std::uint32_t latIndex, lonIndex;
    } cases[] = {
        {"north east", "0110000E0470000N", "00300060", 47, 11, 60 / 36000.0, 30 / 36000.0, 137, 191},
        {"south west", "1233000W0451530S", "00300030", -(45 + 15 / 60.0 + 30 / 3600.0), -123.5, 30 / 36000.0,
         30 / 36000.0, 44, 56},
        {"lower case is not west or south", "0110000w0470000s", "00100010", 47, 11, 10 / 36000.0, 10 / 36000.0, 137,
         191},
        {"sixty seconds make a minute", "0105960E0465960N", "00300030", 47, 11, 30 / 36000.0, 30 / 36000.0, 137, 191},
        {"no numbers", "????????????????", "????????", 0, 0, 0, 0, 90, 180},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        write(3, 2, [](unsigned int, unsigned int) { return 100; });
        Tavik::Support::overwriteBytes(path, 4, std::string(c.origin) + c.intervals);
        ASSERT_TRUE(load());
        EXPECT_DOUBLE_EQ(tile.latitudeOrigin(), c.lat);
        EXPECT_DOUBLE_EQ(tile.longitudeOrigin(), c.lon);
        EXPECT_EQ(tile.latitudeSpacing(), c.latSpacing);
        EXPECT_EQ(tile.longitudeSpacing(), c.lonSpacing);
        EXPECT_EQ(tile.latitudeExtent(), c.latSpacing * 3);
        EXPECT_EQ(tile.longitudeExtent(), c.lonSpacing * 2);
        EXPECT_EQ(tile.latitudeIndex(), c.latIndex);
        EXPECT_EQ(tile.longitudeIndex(), c.lonIndex);
        EXPECT_FALSE(tile.isLowRes());
    }
}

TEST_F(TerrainTileTest, SmoothingAndVoids)
{
    const struct
    {
        std::vector<int> stored, read;
    } cases[] = {
        {{5, 5, 9}, {5, 7, 9}},
        {{5, 5, 5, 9}, {5, 5, 7, 9}},
        {{4, 4, 7}, {4, 5, 7}},
        {{-4, -4, -7}, {-4, -5, -7}}, // toward zero, not down
        {{0, 0, -1}, {0, 0, -1}},
        {{-9000, -9001, -32768, 3}, {-9000, 0, 1, 3}},
        {{32767, 32767, 32766}, {32767, 32766, 32766}},
        {{7, 7}, {7, 7}},
        {{-20000}, {0}},
    };
    for (const auto& c : cases) {
        write(c.stored);
        ASSERT_TRUE(load());
        EXPECT_EQ(column(0), c.read) << testing::PrintToString(c.stored);
    }
}

TEST_F(TerrainTileTest, SmoothingOfManyColumns)
{
    std::mt19937 random(1);
    // Around the eight columns and eight samples taken at once, and the 64 columns read at once.
    for (const unsigned int rows : {1u, 2u, 8u, 9u, 10u, 16u, 17u, 60u}) {
        for (const unsigned int columns : {1u, 7u, 8u, 9u, 64u, 75u, 130u}) {
            SCOPED_TRACE(testing::Message() << rows << " x " << columns);
            // Few different heights make many equal neighbours; rare ones reach the ends of the range.
            std::vector<std::vector<int>> heights(columns, std::vector<int>(rows));
            for (auto& column : heights) {
                for (int& height : column) {
                    const int rare[] = {-32768, -9001, -9000, 32767};
                    height = random() % 16 == 0 ? rare[random() % 4] : static_cast<int>(random() % 7) - 3;
                }
            }
            write(rows, columns, [&](unsigned int i, unsigned int j) { return heights[j][i]; });
            ASSERT_TRUE(load());
            for (unsigned int j = 0; j < columns; ++j) {
                ASSERT_EQ(column(static_cast<int>(j)), smoothed(heights[j])) << "column " << j;
            }
        }
    }
}

TEST_F(TerrainTileTest, SignAndMagnitudeIsReadAsTwosComplement)
{
    const int heights[] = {100, Tavik::Support::DtedVoid, -7, 50};
    writeDted(path, DtedGrid{47, 11, 4, 1}, [&](unsigned int i, unsigned int) { return heights[i]; });
    ASSERT_TRUE(load());
    EXPECT_EQ(column(0), (std::vector<int>{100, -1, 0, 50}));
}

TEST_F(TerrainTileTest, BilinearHeight)
{
    const int heights[3][3] = {{10, 20, 40}, {110, 130, 170}, {1000, 1100, 1500}}; // [i][j]
    write(3, 3, [&](unsigned int i, unsigned int j) { return heights[i][j]; });
    ASSERT_TRUE(load());
    const struct
    {
        double i, j; // in spacings from the origin
        bool answer;
        double height;
    } cases[] = {
        {0, 0, true, 10},          {1, 2, true, 170},           {2, 2, true, 1500},
        {0.5, 0.5, true, 67.5},    {1.25, 0.5, true, 352.5}, // 120 + 0.25 * (1050 - 120)
        {-0.5, 0, true, -40},                                // first cell extrapolated to the south
        {0, -0.5, true, 5},                                  // and to the west
        {2.5, 0.5, true, 1025},                              // last row: h10 and h11 are h00
        {2.5, 2.5, true, 1500},                              // last row and column
        {1.25, 2.5, true, 336.25},                           // last column: a = 170, b = 1500 + 0.5 * (170 - 1500)
        {-1.001, 0, false, 0},     {0, -1.001, false, 0},       {3.001, 0, false, 0},
        {0, 3.001, false, 0},      {4294967297.0, 0, false, 0}, {NaN, 0, false, 0},
        {0, NaN, false, 0},        {Infinity, 0, false, 0},     {0, -Infinity, false, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.i << ", " << c.j);
        double height = -12345.0;
        EXPECT_EQ(tile.getAltitude(47 + c.i / 60, 11 + c.j / 60, height), c.answer);
        EXPECT_NEAR(height, c.answer ? c.height : -12345.0, 1e-6);
    }
}

TEST_F(TerrainTileTest, HeightAtIndex)
{
    const int heights[3][4] = {{10, 20, 40, 70}, {110, 130, 170, 200}, {1000, 1100, 1500, 1700}}; // [i][j]
    const struct
    {
        int i, j;
        double height;
    } cases[] = {
        {2, 3, 1700},      {1, -1, 90},        {1, 4, 230},      {-1, 2, -90},      {3, 2, 2830},
        {-1, -1, -110},    {3, 4, 3230},       {-1, 4, -30},     {3, -1, 1870},     {-5, 9, -30},
        {INT_MIN, 0, -90}, {INT_MAX, 0, 1890}, {1, INT_MIN, 90}, {1, INT_MAX, 230},
    };
    write(3, 4, [&](unsigned int i, unsigned int j) { return heights[i][j]; });
    EXPECT_EQ(tile.getAltitude(0, 0), 0.0);
    ASSERT_TRUE(load());
    for (const auto& c : cases) {
        EXPECT_EQ(tile.getAltitude(c.i, c.j), c.height) << c.i << ", " << c.j;
    }
    tile.clear();
    EXPECT_EQ(tile.getAltitude(2, 3), 0.0);
}

TEST_F(TerrainTileTest, DamagedHeaders)
{
    const struct
    {
        const char* name;
        long offset;
        const char* bytes;
        bool answer;
    } cases[] = {
        {"no columns", 47, "0000", false},
        {"no rows", 51, "0000", false},
        {"negative columns", 47, "-999", false},
        {"negative rows", 51, "-001", false},
        {"counts without digits", 47, "xxxxyyyy", false},
        {"one row", 51, "0001", true},
        {"one column", 47, "0001", true},
        {"one sample", 47, "00010001", true},
        {"more rows than there are", 51, "9999", true},
        {"more columns than there are", 47, "9999", true},
        {"spacing of zero", 20, "00000000", true},
        {"negative spacing", 20, "-600-600", true},
        {"origin far from the earth", 4, "9999999E9999999N", true},
        {"negative degrees", 4, "-99-9-9W-99-9-9S", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        write(9, 9, [](unsigned int i, unsigned int j) { return static_cast<int>(100 * i + j); });
        Tavik::Support::overwriteBytes(path, c.offset, c.bytes);
        TerrainTile fresh;
        EXPECT_TRUE(fresh.loadTile(path));
        EXPECT_EQ(fresh.loadAllData(), c.answer);
        EXPECT_EQ(fresh.loaded(), c.answer);
        askEverything(fresh);
        fresh.clear();
        askEverything(fresh);
    }
}

TEST_F(TerrainTileTest, TruncatedFiles)
{
    const long record = 8 + 2 * 20 + 4;
    const struct
    {
        long length;
        bool answer;
        long samples; // that are there
    } cases[] = {
        {0, false, 0},
        {79, false, 0},
        {HeaderLength, false, 0},
        {HeaderLength + 8, false, 0},
        {HeaderLength + 10, true, 1},
        {HeaderLength + record, true, 20},
        {HeaderLength + 69 * record + 8 + 10, true, 69L * 20 + 5},
        {HeaderLength + 70 * record - 4, true, 70L * 20},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.length);
        write(20, 70, [](unsigned int i, unsigned int) { return static_cast<int>(1000 + i); });
        std::filesystem::resize_file(path, static_cast<std::uintmax_t>(c.length));
        EXPECT_EQ(load(), c.answer);
        long samples = 0;
        for (int j = 0; j < 70; ++j) {
            const std::vector<int> heights = column(j);
            samples += std::count_if(heights.begin(), heights.end(), [](int height) { return height != 0; });
        }
        EXPECT_EQ(samples, c.samples);
    }
}

TEST_F(TerrainTileTest, HeaderRereadWhileLoaded)
{
    write(9, 9, [](unsigned int i, unsigned int j) { return static_cast<int>(100 * i + j); });
    ASSERT_TRUE(load());
    const std::vector<int> before = column(8);

    Tavik::Support::overwriteBytes(path, 4, "0120000E0480000N");
    Tavik::Support::overwriteBytes(path, HeaderLength + 8L * (8 + 2 * 9 + 4) + 8, "\x22\x22"); // south end of column 8
    EXPECT_TRUE(tile.loadAllData());
    EXPECT_EQ(column(8), before);
    EXPECT_EQ(tile.latitudeOrigin(), 48);
    EXPECT_EQ(tile.longitudeOrigin(), 12);

    Tavik::Support::overwriteBytes(path, 47, "00990099");
    Tavik::Support::overwriteBytes(path, 4, "0130000E0490000N");
    EXPECT_TRUE(tile.loadAllData());
    EXPECT_EQ(tile.latitudeCount(), 9u);
    EXPECT_EQ(tile.latitudeOrigin(), 48);
    EXPECT_EQ(column(8), before);
    askEverything(tile);

    tile.clear();
    EXPECT_FALSE(tile.loaded());
    EXPECT_TRUE(tile.loadAllData());
    EXPECT_EQ(tile.latitudeCount(), 99u);
}

TEST_F(TerrainTileTest, MissingFileSetsTheTileAside)
{
    const std::string message = "could not open data file <" + path + ">\n";
    testing::internal::CaptureStdout();
    EXPECT_FALSE(tile.loadTile(path));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), message);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(tile.loadAllData());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), message);
    write({1, 2, 3});
    testing::internal::CaptureStdout();
    EXPECT_FALSE(tile.loadAllData());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    askEverything(tile);
}

TEST_F(TerrainTileTest, LoadsFromTheMiddleOfAFile)
{
    write(9, 9, [](unsigned int i, unsigned int j) { return static_cast<int>(100 * i + j); });
    ASSERT_TRUE(load());
    const std::vector<int> expected = column(8);
    std::FILE* file = std::tmpfile();
    std::FILE* source = std::fopen(path.c_str(), "rb");
    std::fputs("something else", file);
    for (int byte = std::fgetc(source); byte != EOF; byte = std::fgetc(source)) {
        std::fputc(byte, file);
    }
    std::fclose(source);
    std::fseek(file, 14, SEEK_SET);

    tile.clear();
    tile.loadHeader(file);
    EXPECT_EQ(std::ftell(file), 14 + HeaderLength);
    tile.loadData(file);
    EXPECT_FALSE(tile.loaded());
    EXPECT_EQ(column(8), expected);
    tile.loadData(file); // at its end: nothing in place of what there was
    EXPECT_EQ(tile.getAltitude(8, 8), 0.0);
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
    int number = -1;
    TerrainTile::readString(file, text, 3);
    EXPECT_EQ(text, std::string("a\0c", 3));
    EXPECT_EQ(TerrainTile::readBinary(file, word), 2);
    EXPECT_EQ(word, 0x1234);
    EXPECT_EQ(TerrainTile::readBinary(file, number, 1), 1);
    EXPECT_EQ(number, 1); // little-endian processors
    EXPECT_EQ(TerrainTile::readBinary(file, number, 4000000000u), 4);
    EXPECT_EQ(number, 0x05040302);
    EXPECT_EQ(TerrainTile::readBinary(file, word), 1);
    EXPECT_EQ(word, static_cast<short>(0x8000));
    EXPECT_EQ(TerrainTile::readBinary(file, number, 4), 0);
    EXPECT_EQ(number, 0);
    TerrainTile::readString(file, text, 4);
    EXPECT_EQ(text, std::string(4, '\0'));
    TerrainTile::swap2(&word);
    EXPECT_EQ(word, 0x0080);
    std::fclose(file);
}

} // namespace
