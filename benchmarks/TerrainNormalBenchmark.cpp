#include "TerrainFiles.h"

#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/TerrainTile.h>

#include <benchmark/benchmark.h>

#ifdef TAVIK_PEER_GDAL
#include <gdal.h>
#endif

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

// Surface normals: single ones from the bicubic surface, and the map of a whole tile.

namespace {

using namespace Tavik::Geodetic;
using namespace TerrainFiles;

constexpr double DegreesToRadians = 0.017453292519943295;

const TerrainTile& madeTile()
{
    static TerrainTile tile;
    if (!tile.loaded()) {
        tile.loadTile(dtedFile());
        tile.loadAllData();
    }
    return tile;
}

std::vector<std::int16_t> madeSamples()
{
    std::vector<std::int16_t> samples(DtedSide * DtedSide);
    for (std::size_t k = 0; k < samples.size(); ++k) {
        samples[k] = static_cast<std::int16_t>(
            madeTile().getAltitude(static_cast<int>(k % DtedSide), static_cast<int>(k / DtedSide)));
    }
    return samples;
}

struct Point
{
    double lat;
    double lon;
};

/// The points of 256 x 256 pixels of a map, turned against the grid, in the order in which a picture is filled.
std::vector<Point> mapPoints()
{
    constexpr std::size_t Pixels = 256;
    constexpr double Step = 0.7 / Pixels; // degrees; the turned square just fits into the tile
    std::vector<Point> points;
    points.reserve(Pixels * Pixels);
    for (std::size_t row = 0; row < Pixels; ++row) {
        for (std::size_t column = 0; column < Pixels; ++column) {
            const double right = (static_cast<double>(column) - Pixels * 0.5) * Step;
            const double up = (Pixels * 0.5 - static_cast<double>(row)) * Step;
            points.push_back({47.5 + 0.866 * up - 0.5 * right, 11.5 + 0.5 * up + 0.866 * right});
        }
    }
    return points;
}

/// Asks for the normal of one point after the other.
template <typename Query>
void queryPoints(benchmark::State& state, const Query& query)
{
    const std::vector<Point> points = mapPoints();
    std::size_t next = 0;
    while (state.KeepRunning()) {
        unsigned char normal[3];
        query(points[next], normal);
        benchmark::DoNotOptimize(normal);
        next = (next + 1) % points.size();
    }
}

void bicubicOurs(benchmark::State& state)
{
    const TerrainTile& tile = madeTile();
    queryPoints(state, [&](const Point& point, unsigned char* normal) {
        tile.getNormal(point.lat, point.lon, normal[0], normal[1], normal[2]);
    });
}

struct Weights
{
    double value[4];
    double slope[4];
};

Weights weightsAt(double t)
{
    const double u = 1.0 - t;
    const double tu = t * u;
    const double r = 1.5 * t;
    return {{-0.5 * tu * u, u + tu * (1.0 - r), t + tu * (r - 0.5), -0.5 * tu * t},
            {u * (r - 0.5), t * (3.0 * r - 5.0), u * (3.0 * r + 0.5), t * (r - 1.0)}};
}

/// Two sets of weights for each axis and one pass over the 4 x 4 samples; a point outside the tile is an error.
void bicubicLimit(benchmark::State& state)
{
    const std::vector<std::int16_t> samples = madeSamples();
    const double spacing = 30 / 36000.0;
    const double latScale = 1.0 / (spacing * 60 * 1852);
    const double lonScale = latScale / std::cos(47 * DegreesToRadians);
    queryPoints(state, [&](const Point& point, unsigned char* normal) {
        const double u = (point.lat - 47.0) / spacing;
        const double v = (point.lon - 11.0) / spacing;
        const auto i = static_cast<std::size_t>(static_cast<int>(u));
        const auto j = static_cast<std::size_t>(static_cast<int>(v));
        const Weights latitude = weightsAt(u - static_cast<double>(static_cast<int>(i)));
        const Weights longitude = weightsAt(v - static_cast<double>(static_cast<int>(j)));
        const std::int16_t* corner = samples.data() + (i - 1) + (j - 1) * DtedSide;
        double values[4] = {};
        double slopes[4] = {};
        for (std::size_t b = 0; b < 4; ++b) {
            for (std::size_t a = 0; a < 4; ++a) {
                values[a] += longitude.value[b] * corner[a + b * DtedSide];
                slopes[a] += longitude.slope[b] * corner[a + b * DtedSide];
            }
        }
        double dx = 0.0;
        double dy = 0.0;
        for (std::size_t a = 0; a < 4; ++a) {
            dx += latitude.value[a] * slopes[a];
            dy += latitude.slope[a] * values[a];
        }
        const auto x = static_cast<float>(-dx * latScale);
        const auto y = static_cast<float>(-dy * lonScale);
        const float s = 1.0f / std::sqrt(x * x + y * y + 1.0f);
        normal[0] = static_cast<unsigned char>((x * s + 1.0f) * 127.5f);
        normal[1] = static_cast<unsigned char>((y * s + 1.0f) * 127.5f);
        normal[2] = static_cast<unsigned char>((s + 1.0f) * 127.5f);
    });
}

#ifdef TAVIK_PEER_GDAL
/// What a program that reads its heights through GDAL pays for the 4 x 4 samples alone.
void bicubicGdal(benchmark::State& state)
{
    GDALAllRegister();
    const GDALDatasetH dataset = GDALOpen(dtedFile().c_str(), GA_ReadOnly);
    const GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    queryPoints(state, [&](const Point& point, unsigned char*) {
        const int column = static_cast<int>((point.lon - 11.0) * 1200);
        const int row = static_cast<int>((48.0 - point.lat) * 1200);
        std::int16_t heights[16];
        if (GDALRasterIO(band, GF_Read, column - 1, row - 1, 4, 4, heights, 4, 4, GDT_Int16, 0, 0) != CE_None) {
            state.SkipWithError("not read");
        }
        benchmark::DoNotOptimize(heights);
    });
    GDALClose(dataset);
}
BENCHMARK(bicubicGdal)->Name("bicubic_normal/peer_gdal");
#endif

void mapOurs(benchmark::State& state)
{
    TerrainTile tile;
    tile.loadTile(dtedFile());
    tile.loadAllData();
    while (state.KeepRunning()) {
        tile.calcNormals();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(DtedSide * DtedSide));
}

/// The cross products with their projections in tables, normalised and packed; a kept map.
void mapLimit(benchmark::State& state)
{
    const std::vector<std::int16_t> samples = madeSamples();
    std::vector<unsigned char> normals(3 * samples.size() + 1);
    const double spacing = 30 / 36000.0;
    std::vector<double> east(DtedSide);
    std::vector<double> north(DtedSide);
    for (std::size_t k = 0; k < DtedSide; ++k) {
        latLong2Grid(47, 11, 47 + spacing * static_cast<double>(k), 11 + spacing * static_cast<double>(k), east[k],
                     north[k]);
    }
    std::vector<float> rowDistances(DtedSide - 1);
    for (std::size_t i = 0; i + 1 < DtedSide; ++i) {
        rowDistances[i] = static_cast<float>(north[i + 1] - north[i]);
    }
    std::vector<std::uint32_t> words(DtedSide);
    while (state.KeepRunning()) {
        for (std::size_t j = 0; j + 1 < DtedSide; ++j) {
            const auto width = static_cast<float>(east[j + 1] - east[j]);
            const std::int16_t* west = samples.data() + DtedSide * j;
            const std::int16_t* right = west + DtedSide;
            for (std::size_t i = 0; i + 1 < DtedSide; ++i) {
                const float distance = rowDistances[i];
                const auto dh1 = static_cast<float>(west[i + 1] - west[i]);
                const auto dh2 = static_cast<float>(right[i + 1] - west[i]);
                const auto dh3 = static_cast<float>(right[i] - west[i]);
                const float nx = (distance * dh1 - dh2 * distance) - dh3 * distance;
                const float ny = -(dh1 * width) + (width * dh3 - dh2 * width);
                const float nz = distance * width + distance * width;
                const float length = std::sqrt(nx * nx + ny * ny + nz * nz);
                words[i] = static_cast<std::uint32_t>(static_cast<int>((nx / length + 1.0f) * 127.5f) |
                                                      static_cast<int>((ny / length + 1.0f) * 127.5f) << 8 |
                                                      static_cast<int>((nz / length + 1.0f) * 127.5f) << 16);
            }
            unsigned char* column = normals.data() + 3 * DtedSide * j;
            for (std::size_t i = 0; i + 1 < DtedSide; ++i) {
                std::memcpy(column + 3 * i, &words[i], 4);
            }
        }
        benchmark::DoNotOptimize(normals.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(DtedSide * DtedSide));
}

BENCHMARK(bicubicOurs)->Name("bicubic_normal/ours");
BENCHMARK(bicubicLimit)->Name("bicubic_normal/limit");
BENCHMARK(mapOurs)->Name("normal_map/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(mapLimit)->Name("normal_map/limit")->Unit(benchmark::kMicrosecond);

} // namespace
