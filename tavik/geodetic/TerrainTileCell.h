#pragma once

#include <tavik/geodetic/TerrainTile.h>

// Where a point lies in the grid of a tile, and its height there. Internal.

namespace Tavik::Geodetic {

struct TerrainTile::Cell
{
    std::uint32_t i = 0; // south-west corner
    std::uint32_t j = 0;
    double ti = 0.0; // position from there in spacings, in (-1, 1)
    double tj = 0.0;
};

/// Finds the cell of a coordinate along one axis.
/// @param value,origin,spacing  degrees
/// @param count                 cells that count, 1 to 2^31 - 1
/// @param index                 receives the cell; the first one for less than one spacing before the origin
/// @param fraction              receives the position in the cell
/// @return false outside, for a spacing of 0 and for NaN
inline bool findOnAxis(double value, double origin, double spacing, std::uint32_t count, std::uint32_t& index,
                       double& fraction)
{
    const double steps = (value - origin) / spacing;
    if (!(steps > -1.0 && steps < count)) {
        return false;
    }
    const auto whole = static_cast<std::int32_t>(steps);
    index = static_cast<std::uint32_t>(whole);
    fraction = steps - whole;
    return true;
}

/// Height between the four samples at the corners of a cell, the first index counting north.
/// @param ti,tj  position in the cell, from the corner of h00
inline double bilinearHeight(int h00, int h10, int h01, int h11, double ti, double tj)
{
    const double a = h00 + tj * (h01 - h00);
    const double b = h10 + tj * (h11 - h10);
    return a + ti * (b - a);
}

/// @param columns  those that count, from the west
inline bool TerrainTile::findCell(double lat, double lon, std::uint32_t columns, Cell& cell) const
{
    return mLoaded && findOnAxis(lat, mLatOrigin, mLatSpacing, mNumLat, cell.i, cell.ti) &&
           findOnAxis(lon, mLonOrigin, mLonSpacing, columns, cell.j, cell.tj);
}

/// For normals the point must lie before the last column, but may lie beyond the last row.
inline bool TerrainTile::findNormalCell(double lat, double lon, Cell& cell) const
{
    return !mFailed && mNumLon > 1 && findCell(lat, lon, mNumLon - 1, cell);
}

} // namespace Tavik::Geodetic
