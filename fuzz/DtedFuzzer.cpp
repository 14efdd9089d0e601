// DTED files: registers the tile, reads its samples, and asks for heights and normals.
//
// The input is a file without its second and third header record, which nobody reads: 3348 bytes that every mutation
// would otherwise be likely to hit.

#include <fuzz/InputFile.h>
#include <fuzz/Require.h>
#include <tavik/geodetic/TerrainTile.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <vector>

using Tavik::Fuzz::require;
using Tavik::Geodetic::TerrainTile;

namespace {

constexpr std::size_t UserHeaderSize = 80;
constexpr std::size_t OtherHeadersSize = 648 + 2700;

// A file of a few bytes may name a grid of 200 MB, which is read as zeros and only costs time here.
constexpr std::uint64_t LargestGrid = 40'000;

std::vector<std::uint8_t> withAllHeaders(const std::uint8_t* data, std::size_t size)
{
    const std::size_t userHeader = std::min(size, UserHeaderSize);
    std::vector<std::uint8_t> file(data, data + userHeader);
    if (size > UserHeaderSize) {
        file.insert(file.end(), OtherHeadersSize, ' ');
        file.insert(file.end(), data + userHeader, data + size);
    }
    return file;
}

void askAt(const TerrainTile& tile, double lat, double lon)
{
    double height = 0.0;
    if (tile.getAltitude(lat, lon, height)) {
        require(std::isfinite(height));
    }
    unsigned char x = 1;
    unsigned char y = 1;
    unsigned char z = 1;
    if (!tile.getNormal(lat, lon, x, y, z)) {
        require(x == 0 && y == 0 && z == 0);
    }
    if (!tile.getNormalOld(lat, lon, x, y, z)) {
        require(x == 0 && y == 0 && z == 0);
    }
}

void askEverywhere(const TerrainTile& tile)
{
    const double steps[] = {-1.0, -0.5, 0.0, 0.3, 0.999, 1.0, 1.5};
    for (const double i : steps) {
        for (const double j : steps) {
            askAt(tile, tile.latitudeOrigin() + i * tile.latitudeExtent(),
                  tile.longitudeOrigin() + j * tile.longitudeExtent());
        }
    }
    askAt(tile, std::numeric_limits<double>::quiet_NaN(), 0.0);
    askAt(tile, 1e300, -1e300);
    const int indices[] = {INT_MIN, -1, 0, 1, static_cast<int>(tile.latitudeCount()), INT_MAX};
    for (const int i : indices) {
        for (const int j : indices) {
            require(std::isfinite(tile.getAltitude(i, j)));
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Tavik::Fuzz::InputFile file;
    const std::vector<std::uint8_t> content = withAllHeaders(data, size);
    file.write(content.data(), content.size());

    TerrainTile tile;
    require(tile.loadTile(file.path()));
    tile.latitudeIndex();
    tile.longitudeIndex();
    if (std::uint64_t{tile.latitudeCount()} * tile.longitudeCount() > LargestGrid) {
        return 0;
    }
    const bool loaded = tile.loadAllData();
    require(loaded == tile.loaded() && loaded == (tile.samples() != nullptr));
    askEverywhere(tile);
    tile.calcNormals();
    askEverywhere(tile);
    tile.clear();
    return 0;
}
