#pragma once

#include <tavik/geodetic/TerrainTile.h>

#include <cstddef>
#include <vector>

// Terrain tiles in forms that tests compare.

/// Latitude and longitude of the origin, and their indices.
inline std::vector<double> originOf(const Tavik::Geodetic::TerrainTile& tile)
{
    return {tile.latitudeOrigin(), tile.longitudeOrigin(), static_cast<double>(tile.latitudeIndex()),
            static_cast<double>(tile.longitudeIndex())};
}

/// Counts, spacings and extents, latitude first.
inline std::vector<double> gridOf(const Tavik::Geodetic::TerrainTile& tile)
{
    return {static_cast<double>(tile.latitudeCount()),
            static_cast<double>(tile.longitudeCount()),
            tile.latitudeSpacing(),
            tile.longitudeSpacing(),
            tile.latitudeExtent(),
            tile.longitudeExtent()};
}

/// The samples of a tile's column, south first.
inline std::vector<int> columnOf(const Tavik::Geodetic::TerrainTile& tile, std::size_t j)
{
    const std::int16_t* first = tile.samples() + tile.latitudeCount() * j;
    return {first, first + tile.latitudeCount()};
}

/// What DTED reading makes of a column, sample by sample as it is defined.
inline std::vector<int> asDtedReads(std::vector<int> heights)
{
    for (std::size_t k = 0; k < heights.size(); ++k) {
        heights[k] = heights[k] < -9000 ? 0 : heights[k];
        if (k >= 2 && heights[k - 2] == heights[k - 1]) {
            heights[k - 1] = static_cast<int>(heights[k - 2] + (heights[k] - heights[k - 2]) * 0.5);
        }
    }
    return heights;
}
