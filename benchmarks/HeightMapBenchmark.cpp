// Heights of points: inside one tile, along a track and at random over as many tiles as stay in memory. Times are for
// all points together; items are points.

#include <tavik/geodetic/HeightMap.h>

#include <support/TemporaryDirectory.h>
#include <support/ZipWriter.h>

#include <benchmark/benchmark.h>

#ifdef TAVIK_PEER_GDAL
#include <gdal.h>
#endif

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

using Tavik::Geodetic::HeightMap;
using namespace Tavik::Support;

namespace {

// 15 x 20 tiles of one degree north and east of 0, 0: the 300 that stay in memory.
constexpr int Rows = 15;
constexpr int Columns = 20;
constexpr int SamplesPerDegree = 1200;
constexpr double Spacing = 1.0 / SamplesPerDegree;

struct Point
{
    double lat;
    double lon;
};
using Points = std::vector<Point>;

/// Hills that repeat every degree, so that one file serves for all tiles. Indices count north and east.
std::int16_t terrain(int i, int j)
{
    i %= SamplesPerDegree; // of the same angle by other numbers the sine would be the same but for rounding
    j %= SamplesPerDegree;
    const double turn = 2.0 * 3.14159265358979323846 / SamplesPerDegree;
    return static_cast<std::int16_t>(1000.0 + 600.0 * std::sin(7.0 * turn * i) * std::cos(5.0 * turn * j) +
                                     80.0 * std::sin(60.0 * turn * (i + j)));
}

/// An SRTM file of one degree: big-endian, north row first.
std::string srtmFile()
{
    std::string bytes;
    for (int i = SamplesPerDegree; i >= 0; --i) {
        for (int j = 0; j <= SamplesPerDegree; ++j) {
            const int height = terrain(i, j);
            bytes += static_cast<char>(height >> 8);
            bytes += static_cast<char>(height & 0xFF);
        }
    }
    return bytes;
}

/// The least that answers: all tiles as one array, column by column, without bounds.
class FlatArray
{
public:
    FlatArray() : mCount(Rows * SamplesPerDegree + 1), mHeights(mCount * (Columns * SamplesPerDegree + 1))
    {
        std::vector<std::int16_t> degree(std::size_t{SamplesPerDegree} * SamplesPerDegree);
        for (std::size_t k = 0; k < degree.size(); ++k) {
            degree[k] = terrain(static_cast<int>(k % SamplesPerDegree), static_cast<int>(k / SamplesPerDegree));
        }
        for (std::size_t k = 0; k < mHeights.size(); ++k) {
            mHeights[k] = degree[k % mCount % SamplesPerDegree + k / mCount % SamplesPerDegree * SamplesPerDegree];
        }
    }

    double height(double lat, double lon) const
    {
        const double y = (lat - mOrigin) / mSpacing;
        const double x = (lon - mOrigin) / mSpacing;
        const int i = static_cast<int>(y);
        const int j = static_cast<int>(x);
        const std::int16_t* south = &mHeights[static_cast<std::size_t>(i) + mCount * static_cast<std::size_t>(j)];
        const double a = south[0] + (x - j) * (south[mCount] - south[0]);
        const double b = south[1] + (x - j) * (south[mCount + 1] - south[1]);
        return a + (y - i) * (b - a);
    }

private:
    std::size_t mCount; // samples of a column
    double mOrigin = 0.0;
    double mSpacing = Spacing;
    std::vector<std::int16_t> mHeights;
};

struct World
{
    World()
    {
        const std::string srtm = srtmFile();
        std::ofstream(hgt()) << srtm;
        const std::string zip = directory.path() + "/archive";
        ZipWriter writer(zip);
        writer.add("heights", srtm.data(), srtm.size(), 1);
        writer.close();
        for (int lat = 0; lat < Rows; ++lat) {
            for (int lon = 0; lon < Columns; ++lon) {
                char name[40];
                std::snprintf(name, sizeof name, "/N%02dE%03d.SRTMGL3.hgt.zip", lat, lon);
                std::filesystem::create_symlink(zip, directory.path() + name);
            }
        }
        map.setDataPath(directory.path());
        map.loadThread();
        for (int lat = 0; lat < Rows; ++lat) {
            for (int lon = 0; lon < Columns; ++lon) {
                map.getAltitude(lat + 0.5, lon + 0.5, true, false);
            }
        }
    }

    std::string hgt() const { return directory.path() + "/N00E000.hgt"; }

    TemporaryDirectory directory;
    HeightMap map;
    FlatArray flat;
};

World& world()
{
    static World all;
    return all;
}

Points randomPoints(std::size_t count, double latLimit, double lonLimit)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> lat(0.0, latLimit - 2.0 * Spacing);
    std::uniform_real_distribution<double> lon(0.0, lonLimit - 2.0 * Spacing);
    Points points(count);
    for (Point& point : points) {
        point = {lat(random), lon(random)};
    }
    return points;
}

Points insideOneTile()
{
    return randomPoints(std::size_t{1} << 16, 1.0, 1.0);
}

Points randomOverAllTiles()
{
    return randomPoints(std::size_t{1} << 20, Rows, Columns);
}

/// Straight from corner to corner, a point about every 40 metres.
Points alongATrack()
{
    const std::size_t count = std::size_t{1} << 16;
    Points points;
    for (std::size_t k = 0; k < count; ++k) {
        const double way = static_cast<double>(k) / static_cast<double>(count);
        points.push_back({0.3 + way * (Rows - 0.6), 0.2 + way * (Columns - 0.4)});
    }
    return points;
}

template <typename Height>
void measure(benchmark::State& state, const Points& points, const Height& height)
{
    for ([[maybe_unused]] auto _ : state) {
        double sum = 0.0;
        for (const Point& point : points) {
            sum += height(point.lat, point.lon);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points.size()));
}

/// Both answer alike, but for rounding and for points less than a millionth of a degree south or west of a tile: the
/// height map extrapolates those from it, by as much as a thousandth of a step.
void checkAnswers(const Points& points)
{
    for (const Point& point : points) {
        const double ours = world().map.getAltitude(point.lat, point.lon, true, false);
        if (std::abs(ours - world().flat.height(point.lat, point.lon)) > 0.1) {
            std::fprintf(stderr, "heights differ at %.9f, %.9f\n", point.lat, point.lon);
            std::abort();
        }
    }
}

void ours(benchmark::State& state, Points (*makePoints)())
{
    const Points points = makePoints();
    checkAnswers(points);
    HeightMap& map = world().map;
    measure(state, points, [&](double lat, double lon) { return map.getAltitude(lat, lon, true, false); });
}

void limit(benchmark::State& state, Points (*makePoints)())
{
    const Points points = makePoints();
    const FlatArray& flat = world().flat;
    measure(state, points, [&](double lat, double lon) { return flat.height(lat, lon); });
}

BENCHMARK_CAPTURE(ours, inside, insideOneTile)->Name("height_inside_tile/ours");
BENCHMARK_CAPTURE(limit, inside, insideOneTile)->Name("height_inside_tile/limit");
BENCHMARK_CAPTURE(ours, track, alongATrack)->Name("height_along_track/ours");
BENCHMARK_CAPTURE(limit, track, alongATrack)->Name("height_along_track/limit");
BENCHMARK_CAPTURE(ours, random, randomOverAllTiles)->Name("height_random_300_tiles/ours");
BENCHMARK_CAPTURE(limit, random, randomOverAllTiles)->Name("height_random_300_tiles/limit");

#ifdef TAVIK_PEER_GDAL
/// The four samples around each point, read as pixels of the same tile.
void peerGdal(benchmark::State& state)
{
    const Points points = insideOneTile();
    GDALAllRegister();
    GDALDatasetH tile = GDALOpen(world().hgt().c_str(), GA_ReadOnly);
    GDALRasterBandH band = GDALGetRasterBand(tile, 1);
    measure(state, points, [&](double lat, double lon) {
        const double row = (1.0 - lat) / Spacing;
        const double column = lon / Spacing;
        const int r = static_cast<int>(row);
        const int c = static_cast<int>(column);
        std::int16_t h[4] = {};
        if (GDALRasterIO(band, GF_Read, c, r, 2, 2, h, 2, 2, GDT_Int16, 0, 0) != CE_None) {
            std::abort();
        }
        const double north = h[0] + (column - c) * (h[1] - h[0]);
        const double south = h[2] + (column - c) * (h[3] - h[2]);
        return north + (row - r) * (south - north);
    });
    GDALClose(tile);
}
BENCHMARK(peerGdal)->Name("height_inside_tile/peer_gdal");
#endif

} // namespace
