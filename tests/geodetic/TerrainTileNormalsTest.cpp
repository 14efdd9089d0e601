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

using Tavik::Geodetic::TerrainTile;
using Tavik::Support::DtedGrid;
using Tavik::Support::DtedHeights;

namespace {

constexpr double DegreesToRadians = 0.017453292519943295;

using Bytes = std::array<int, 3>;

int packed(float component)
{
    const float scaled = (component + 1.0f) * 127.5f;
    return std::isnan(scaled) ? 0 : static_cast<int>(scaled);
}

/// The surface normal as it is defined, step by step, in cell (i, j) at (ti, tj).
Bytes expectedNormal(const TerrainTile& tile, int i, int j, double ti, double tj)
{
    const double latMetres = tile.latitudeSpacing() * 60 * 1852;
    const double lonMetres = tile.longitudeSpacing() * 60 * 1852 * std::cos(tile.latitudeOrigin() * DegreesToRadians);
    double v[4];
    double w[4];
    for (int k = 0; k < 4; ++k) {
        double alongLatitude[4];
        double alongLongitude[4];
        for (int l = 0; l < 4; ++l) {
            alongLatitude[l] = tile.getAltitude(i + l - 1, j + k - 1) / latMetres;
            alongLongitude[l] = tile.getAltitude(i + k - 1, j + l - 1) / lonMetres;
        }
        v[k] = Tavik::Math::getCubicValue(alongLatitude, ti);
        w[k] = Tavik::Math::getCubicValue(alongLongitude, tj);
    }
    const auto dx = static_cast<float>(Tavik::Math::getCubicDerivate(v, tj));
    const auto dy = static_cast<float>(Tavik::Math::getCubicDerivate(w, ti));
    const float s = 1.0f / std::sqrt(dx * dx + dy * dy + 1.0f);
    return {packed(-dx * s), packed(-dy * s), packed(s)};
}

/// An entry of the normal map as it is defined, from the four projected corners.
Bytes expectedMapEntry(const TerrainTile& tile, int i, int j)
{
    const int di[4] = {0, 1, 1, 0};
    const int dj[4] = {0, 0, 1, 1};
    double g1[4];
    double g2[4];
    float du[4];
    float dv[4];
    float dh[4];
    for (int k = 0; k < 4; ++k) {
        Tavik::Geodetic::latLong2Grid(tile.latitudeOrigin(), tile.longitudeOrigin(),
                                      tile.latitudeOrigin() + tile.latitudeSpacing() * (i + di[k]),
                                      tile.longitudeOrigin() + tile.longitudeSpacing() * (j + dj[k]), g1[k], g2[k]);
        du[k] = static_cast<float>(g1[k] - g1[0]);
        dv[k] = static_cast<float>(g2[k] - g2[0]);
        dh[k] = static_cast<float>(tile.getAltitude(i + di[k], j + dj[k]) - tile.getAltitude(i, j));
    }
    const float nx = (dv[2] * dh[1] - dh[2] * dv[1]) + (dv[3] * dh[2] - dh[3] * dv[2]);
    const float ny = (du[1] * dh[2] - dh[1] * du[2]) + (du[2] * dh[3] - dh[2] * du[3]);
    const float nz = (dv[1] * du[2] - dv[2] * du[1]) + (dv[2] * du[3] - dv[3] * du[2]);
    const float length = std::sqrt(nx * nx + ny * ny + nz * nz);
    return {packed(nx / length), packed(ny / length), packed(nz / length)};
}

/// The blend of four corners as it is defined.
Bytes expectedBlend(const Bytes (&corners)[4], double fi, double fj)
{
    const double d[4] = {std::sqrt(fi * fi + fj * fj), std::sqrt((1 - fi) * (1 - fi) + fj * fj),
                         std::sqrt((1 - fi) * (1 - fi) + (1 - fj) * (1 - fj)),
                         std::sqrt(fi * fi + (1 - fj) * (1 - fj))};
    float n[3];
    for (std::size_t axis = 0; axis < 3; ++axis) {
        double sum = 0.0;
        for (std::size_t k = 0; k < 4; ++k) {
            sum += (corners[k][axis] / 127.5 - 1) / (d[k] / (d[0] + d[1] + d[2] + d[3]));
        }
        n[axis] = static_cast<float>(sum);
    }
    const float length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    return {packed(n[0] / length), packed(n[1] / length), packed(n[2] / length)};
}

class TerrainTileNormalsTest : public testing::Test
{
protected:
    void load(const DtedGrid& grid, const DtedHeights& height)
    {
        writeDted(path, grid, height, Tavik::Support::DtedSign::TwosComplement);
        ASSERT_TRUE(tile.loadTile(path));
        ASSERT_TRUE(tile.loadAllData());
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

    Tavik::Support::TemporaryDirectory directory;
    std::string path = directory.path() + "/N00E000.DT1";
    TerrainTile tile;
};

TEST_F(TerrainTileNormalsTest, SurfaceNormalBytesAreThoseOfTheDefinition)
{
    const struct
    {
        const char* name;
        DtedGrid grid;
        int lowest, highest; // heights are random between these
        int cases;
    } terrains[] = {
        {"mountains", {47, 11, 200, 200}, 0, 60, 150000},
        {"cliffs", {-35, -70, 60, 60}, -9000, 32767, 50000},
        {"hills", {60, 11, 60, 60}, 0, 3, 50000},
        {"plain: slopes around the smallest that count", {0, 0, 60, 60, 9999, 9999}, 0, 3, 50000},
        {"sea", {0, 0, 9, 9}, 0, 0, 1000},
        {"beside the pole: cells shorter than a metre", {90, 0, 60, 60}, 0, 60, 20000},
        {"no width", {0, 0, 9, 9, 30, 0}, 0, 60, 1000},
        {"one row", {0, 0, 1, 9}, 0, 60, 1000},
        {"one cell", {0, 0, 2, 2}, 0, 60, 1000},
    };
    std::mt19937 random(2);
    for (const auto& terrain : terrains) {
        SCOPED_TRACE(terrain.name);
        load(terrain.grid, [&](unsigned int, unsigned int) {
            return std::uniform_int_distribution<int>(terrain.lowest, terrain.highest)(random);
        });
        std::uniform_real_distribution<double> row(-0.999, terrain.grid.latitudePoints - 0.001);
        std::uniform_real_distribution<double> column(-0.999, terrain.grid.longitudeLines - 1.001);
        int wrong = 0;
        for (int k = 0; k < terrain.cases; ++k) {
            const double lat = tile.latitudeOrigin() + row(random) * tile.latitudeSpacing();
            const double lon = tile.longitudeOrigin() + column(random) * tile.longitudeSpacing();
            const double i = (lat - tile.latitudeOrigin()) / tile.latitudeSpacing();
            const double j = (lon - tile.longitudeOrigin()) / tile.longitudeSpacing();
            unsigned char x, y, z;
            if (!tile.getNormal(lat, lon, x, y, z)) {
                wrong += tile.longitudeSpacing() > 0;
                continue;
            }
            const Bytes expected =
                expectedNormal(tile, static_cast<int>(i), static_cast<int>(j), i - std::trunc(i), j - std::trunc(j));
            wrong += expected != Bytes{x, y, z};
        }
        EXPECT_EQ(wrong, 0);
    }
}

TEST_F(TerrainTileNormalsTest, WhereAndWhichWay)
{
    const Bytes none = {0, 0, 0};
    EXPECT_EQ(ask(&TerrainTile::getNormal, 0, 0, false), none) << "nothing registered";
    // One metre up for each metre east, nearly.
    load({0, 0, 5, 5, 30, 30}, [](unsigned int, unsigned int j) { return static_cast<int>(93 * j); });
    const Bytes west = ask(&TerrainTile::getNormal, 2.5, 2.5);
    EXPECT_LT(west[0], 40); // the normal leans away from the slope
    EXPECT_EQ(west[1], 127);
    EXPECT_GT(west[2], 215);
    load({0, 0, 5, 5, 30, 30}, [](unsigned int, unsigned int) { return 100; });
    const struct
    {
        double i, j;
        bool answer;
    } cases[] = {
        {2, 2, true},      {-0.99, 2, true},  {2, -0.99, true}, {4.99, 2, true},  {2, 3.99, true},
        {-1.01, 2, false}, {2, -1.01, false}, {5.01, 2, false}, {2, 4.01, false}, {NAN, 2, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ask(&TerrainTile::getNormal, c.i, c.j, c.answer), (c.answer ? Bytes{127, 127, 255} : none));
        EXPECT_EQ(ask(&TerrainTile::getNormalOld, c.i, c.j, false), none) << "no map yet";
    }
    tile.clear();
    EXPECT_EQ(ask(&TerrainTile::getNormal, 2, 2, false), none);
}

TEST_F(TerrainTileNormalsTest, NormalMap)
{
    const DtedGrid grids[] = {{47, 11, 600, 4}, {-60, -70, 2, 2}, {0, 0, 257, 3, 9999, 9999}, {10, 10, 258, 3}};
    std::mt19937 random(3);
    for (const DtedGrid& grid : grids) {
        SCOPED_TRACE(grid.latitudePoints);
        load(grid, [&](unsigned int, unsigned int) { return static_cast<int>(random() % 4000) - 1000; });
        tile.calcNormals();
        tile.calcNormals(); // in place
        const int lastRow = static_cast<int>(grid.latitudePoints) - 1;
        const int lastColumn = static_cast<int>(grid.longitudeLines) - 1;
        const auto entry = [&](int i, int j) {
            const bool corner = i == lastRow && j == lastColumn;
            return corner ? Bytes{0, 0, 0}
                          : expectedMapEntry(tile, std::min(i, lastRow - 1), std::min(j, lastColumn - 1));
        };
        // Close to a sample its own entry decides; elsewhere the distances to all four.
        std::uniform_real_distribution<double> close(1e-6, 1e-4);
        std::uniform_real_distribution<double> anywhere(0.0, 1.0);
        const auto offset = [&](int i) { return i % 2 == 0 ? close(random) : anywhere(random); };
        int wrong = 0;
        for (int i = 0; i <= lastRow; ++i) {
            for (int j = 0; j < lastColumn; ++j) {
                const double lat = tile.latitudeOrigin() + (i + offset(i / 2 + j)) * tile.latitudeSpacing();
                const double lon = tile.longitudeOrigin() + (j + offset(i / 2 + j)) * tile.longitudeSpacing();
                const double fi = (lat - tile.latitudeOrigin()) / tile.latitudeSpacing() - i;
                const double fj = (lon - tile.longitudeOrigin()) / tile.longitudeSpacing() - j;
                const int north = std::min(i + 1, lastRow);
                const Bytes corners[4] = {entry(i, j), entry(north, j), entry(north, j + 1), entry(i, j + 1)};
                const Bytes expected = expectedBlend(corners, fi, fj);
                unsigned char x = 1, y = 2, z = 3;
                wrong += !tile.getNormalOld(lat, lon, x, y, z) || expected != Bytes{x, y, z};
            }
        }
        EXPECT_EQ(wrong, 0);
    }
}

TEST_F(TerrainTileNormalsTest, NormalMapAtItsLimits)
{
    const Bytes none = {0, 0, 0};
    load({0, 0, 3, 3}, [](unsigned int, unsigned int) { return 100; });
    tile.calcNormals();
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 0.5, 0.5), (Bytes{127, 127, 254})); // 127 unpacks to less than level
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 1, 1), none) << "no value exactly on a sample";
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 0.5, 2.5, false), none);
    tile.clear();
    tile.calcNormals(); // without samples: nothing, and no harm done
    ASSERT_TRUE(tile.loadAllData());
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 0.5, 0.5, false), none) << "the map went with the samples";

    load({0, 0, 1, 3}, [](unsigned int, unsigned int) { return 100; });
    tile.calcNormals();
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 0.5, 0.5), (Bytes{53, 53, 53})) << "entries 0, 0, 0: no cells";
    load({0, 0, 3, 1}, [](unsigned int, unsigned int) { return 100; });
    tile.calcNormals();
    EXPECT_EQ(ask(&TerrainTile::getNormalOld, 0.5, 0.5, false), none);

    TerrainTile empty;
    testing::internal::CaptureStdout();
    empty.calcNormals();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "TerrainTile::calcNormals load failed\n");
    empty.loadTile(path);
    EXPECT_FALSE(empty.loadAllData()) << "set aside";
}

} // namespace
