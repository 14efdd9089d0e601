#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/TerrainTile.h>
#include <tavik/math/Interpolation.h>

#include <support/DtedWriter.h>
#include <support/TemporaryDirectory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <utility>

using namespace Tavik::Support;
using Tavik::Geodetic::TerrainTile;

namespace {

using Bytes = std::array<int, 3>;

constexpr Bytes None = {0, 0, 0};
constexpr Bytes Level = {127, 127, 255};

int packed(float component)
{
    const float scaled = (component + 1.0f) * 127.5f;
    return std::isnan(scaled) ? 0 : static_cast<int>(scaled);
}

Bytes packedDirection(float x, float y, float z)
{
    const float length = std::sqrt(x * x + y * y + z * z);
    return {packed(x / length), packed(y / length), packed(z / length)};
}

/// The surface normal in cell (i, j) at (ti, tj), step by step as it is defined.
Bytes expectedNormal(const TerrainTile& tile, int i, int j, double ti, double tj)
{
    const double latMetres = tile.latitudeSpacing() * 60 * 1852;
    const double lonMetres =
        tile.longitudeSpacing() * 60 * 1852 * std::cos(tile.latitudeOrigin() * 0.017453292519943295);
    double v[4], w[4];
    for (int k = 0; k < 4; ++k) {
        double column[4], row[4];
        for (int l = 0; l < 4; ++l) {
            column[l] = tile.getAltitude(i + l - 1, j + k - 1) / latMetres;
            row[l] = tile.getAltitude(i + k - 1, j + l - 1) / lonMetres;
        }
        v[k] = Tavik::Math::getCubicValue(column, ti);
        w[k] = Tavik::Math::getCubicValue(row, tj);
    }
    const auto dx = static_cast<float>(Tavik::Math::getCubicDerivate(v, tj));
    const auto dy = static_cast<float>(Tavik::Math::getCubicDerivate(w, ti));
    const float s = 1.0f / std::sqrt(dx * dx + dy * dy + 1.0f);
    return {packed(-dx * s), packed(-dy * s), packed(s)};
}

/// An entry of the normal map, from the four projected corners as it is defined; edges repeat their neighbours.
Bytes expectedEntry(const TerrainTile& tile, int i, int j)
{
    const int lastRow = static_cast<int>(tile.latitudeCount()) - 1;
    const int lastColumn = static_cast<int>(tile.longitudeCount()) - 1;
    if (i == lastRow && j == lastColumn) {
        return None;
    }
    const int south = std::min(i, lastRow - 1);
    const int west = std::min(j, lastColumn - 1);
    double g1[4], g2[4];
    float du[4], dv[4], dh[4];
    for (int k = 0; k < 4; ++k) {
        const int row = south + (k == 1 || k == 2);
        const int column = west + (k >= 2);
        Tavik::Geodetic::latLong2Grid(tile.latitudeOrigin(), tile.longitudeOrigin(),
                                      tile.latitudeOrigin() + tile.latitudeSpacing() * row,
                                      tile.longitudeOrigin() + tile.longitudeSpacing() * column, g1[k], g2[k]);
        du[k] = static_cast<float>(g1[k] - g1[0]);
        dv[k] = static_cast<float>(g2[k] - g2[0]);
        dh[k] = static_cast<float>(tile.getAltitude(row, column) - tile.getAltitude(south, west));
    }
    return packedDirection((dv[2] * dh[1] - dh[2] * dv[1]) + (dv[3] * dh[2] - dh[3] * dv[2]),
                           (du[1] * dh[2] - dh[1] * du[2]) + (du[2] * dh[3] - dh[2] * du[3]),
                           (dv[1] * du[2] - dv[2] * du[1]) + (dv[2] * du[3] - dv[3] * du[2]));
}

/// The blend of the entries around a point as it is defined.
Bytes expectedBlend(const TerrainTile& tile, int i, int j, double fi, double fj)
{
    const int north = std::min(i + 1, static_cast<int>(tile.latitudeCount()) - 1);
    const Bytes corners[4] = {expectedEntry(tile, i, j), expectedEntry(tile, north, j),
                              expectedEntry(tile, north, j + 1), expectedEntry(tile, i, j + 1)};
    const auto length = [](double a, double b) { return std::sqrt(a * a + b * b); };
    const double d[4] = {length(fi, fj), length(1 - fi, fj), length(1 - fi, 1 - fj), length(fi, 1 - fj)};
    double sums[3] = {};
    for (std::size_t k = 0; k < 12; ++k) {
        sums[k % 3] += (corners[k / 3][k % 3] / 127.5 - 1) / (d[k / 3] / (d[0] + d[1] + d[2] + d[3]));
    }
    return packedDirection(static_cast<float>(sums[0]), static_cast<float>(sums[1]), static_cast<float>(sums[2]));
}

class TerrainTileNormalsTest : public testing::Test
{
protected:
    void load(const DtedGrid& grid, const DtedHeights& height)
    {
        writeDted(path, grid, height, DtedSign::TwosComplement);
        ASSERT_TRUE(tile.loadTile(path) && tile.loadAllData());
    }

    template <typename Query>
    Bytes ask(Query query, double i, double j, bool answer = true)
    {
        unsigned char x = 1, y = 2, z = 3;
        EXPECT_EQ((tile.*query)(tile.latitudeOrigin() + i * tile.latitudeSpacing(),
                                tile.longitudeOrigin() + j * tile.longitudeSpacing(), x, y, z),
                  answer)
            << i << ", " << j;
        return {x, y, z};
    }

    /// Number of points, i and j in spacings, where a query differs from what is expected.
    template <typename Query, typename Expected>
    int wrongAt(double i, double j, Query query, Expected expected)
    {
        const double lat = tile.latitudeOrigin() + i * tile.latitudeSpacing();
        const double lon = tile.longitudeOrigin() + j * tile.longitudeSpacing();
        const double u = (lat - tile.latitudeOrigin()) / tile.latitudeSpacing();
        const double v = (lon - tile.longitudeOrigin()) / tile.longitudeSpacing();
        unsigned char x, y, z;
        return !(tile.*query)(lat, lon, x, y, z) || expected(tile, static_cast<int>(u), static_cast<int>(v),
                                                             u - std::trunc(u), v - std::trunc(v)) != Bytes{x, y, z};
    }

    TemporaryDirectory directory;
    std::string path = directory.path() + "/N00E000.DT1";
    TerrainTile tile;
    std::mt19937 random{2};
};

TEST_F(TerrainTileNormalsTest, SurfaceNormalBytesAreThoseOfTheDefinition)
{
    const struct
    {
        const char* name;
        DtedGrid grid;
        int lowest, highest, points; // heights are random between these
    } terrains[] = {{"mountains", {47, 11, 200, 200}, 0, 60, 150000},
                    {"cliffs", {-35, -70, 60, 60}, -9000, 32767, 50000},
                    {"hills", {60, 11, 60, 60}, 0, 3, 50000},
                    {"plain with the smallest slopes that count", {0, 0, 60, 60, 9999, 9999}, 0, 3, 50000},
                    {"sea", {0, 0, 9, 9}, 0, 0, 1000},
                    {"beside the pole, cells shorter than a metre", {90, 0, 60, 60}, 0, 60, 20000},
                    {"one row", {0, 0, 1, 9}, 0, 60, 1000},
                    {"one cell", {0, 0, 2, 2}, 0, 60, 1000}};
    for (const auto& terrain : terrains) {
        std::uniform_int_distribution<int> height(terrain.lowest, terrain.highest);
        load(terrain.grid, [&](unsigned int, unsigned int) { return height(random); });
        std::uniform_real_distribution<double> row(-0.999, terrain.grid.latitudePoints - 0.001);
        std::uniform_real_distribution<double> column(-0.999, terrain.grid.longitudeLines - 1.001);
        int wrong = 0;
        for (int k = 0; k < terrain.points; ++k) {
            wrong += wrongAt(row(random), column(random), &TerrainTile::getNormal, expectedNormal);
        }
        EXPECT_EQ(wrong, 0) << terrain.name;
    }
}

TEST_F(TerrainTileNormalsTest, MapEntriesAreThoseOfTheDefinition)
{
    // Close to a sample its own entry decides; elsewhere the distances to all four.
    std::uniform_real_distribution<double> close(1e-6, 1e-4), anywhere(0.0, 0.999);
    for (const DtedGrid& grid :
         {DtedGrid{47, 11, 600, 4}, {-60, -70, 2, 2}, {0, 0, 257, 3, 9999, 9999}, {10, 10, 258, 3}}) {
        load(grid, [&](unsigned int, unsigned int) { return static_cast<int>(random() % 4000) - 1000; });
        tile.calcNormals();
        int wrong = 0;
        for (unsigned int i = 0; i < grid.latitudePoints; ++i) {
            for (unsigned int j = 0; j + 1 < grid.longitudeLines; ++j) {
                auto& offset = (i / 2 + j) % 2 == 0 ? close : anywhere;
                wrong += wrongAt(i + offset(random), j + offset(random), &TerrainTile::getNormalOld, expectedBlend);
            }
        }
        EXPECT_EQ(wrong, 0) << grid.latitudePoints;
    }
}

TEST_F(TerrainTileNormalsTest, WhereAndWhen)
{
    EXPECT_EQ(ask(&TerrainTile::getNormal, 0, 0, false), None) << "nothing registered";
    load({0, 0, 5, 5}, [](unsigned int, unsigned int) { return 100; });
    for (const auto& [i, j] : {std::pair{2.0, 2.0}, {-0.99, 2.0}, {2.0, -0.99}, {4.99, 2.0}, {2.0, 3.99}}) {
        EXPECT_EQ(ask(&TerrainTile::getNormal, i, j), Level);
        EXPECT_EQ(ask(&TerrainTile::getNormalOld, i, j, false), None) << "no map yet";
    }
    for (const auto& [i, j] : {std::pair{-1.01, 2.0}, {2.0, -1.01}, {5.01, 2.0}, {2.0, 4.01}, {double{NAN}, 2.0}}) {
        EXPECT_EQ(ask(&TerrainTile::getNormal, i, j, false), None);
    }
    tile.calcNormals();
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 0.5, 0.5), (Bytes{127, 127, 254})); // 127 unpacks to less than level
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 1, 1), None) << "no value exactly on a sample";
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 0.5, 4.5, false), None);
    tile.clear();
    EXPECT_EQ(ask(&TerrainTile::getNormal, 2, 2, false), None);
    tile.calcNormals(); // without samples: nothing, and no harm done
    ASSERT_TRUE(tile.loadAllData());
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 0.5, 0.5, false), None) << "the map went with the samples";
}

TEST_F(TerrainTileNormalsTest, MapsWithoutCells)
{
    load({0, 0, 1, 3}, [](unsigned int, unsigned int) { return 100; });
    tile.calcNormals();
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 0.5, 0.5), (Bytes{53, 53, 53})) << "the direction of an entry 0, 0, 0";
    TerrainTile empty;
    testing::internal::CaptureStdout();
    empty.calcNormals();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "TerrainTile::calcNormals load failed\n");
    empty.loadTile(path);
    EXPECT_FALSE(empty.loadAllData()) << "set aside";
}

} // namespace
