#include <tavik/geodetic/TerrainTile.h>

#include <tavik/geodetic/TerrainTileCell.h>

#include <algorithm>

namespace Tavik::Geodetic {

namespace {

/// An index outside a grid axis: the sample nearest to it and the one next to that; twice the same inside, and where
/// there is only one.
struct Neighbours
{
    std::size_t nearest;
    std::size_t inward;
};

Neighbours neighboursOf(int index, std::uint32_t count)
{
    const int last = static_cast<int>(count) - 1;
    if (index < 0) {
        return {0, static_cast<std::size_t>(std::min(1, last))};
    }
    if (index > last) {
        return {static_cast<std::size_t>(last), static_cast<std::size_t>(std::max(0, last - 1))};
    }
    return {static_cast<std::size_t>(index), static_cast<std::size_t>(index)};
}

} // namespace

bool TerrainTile::getAltitude(double lat, double lon, double& height) const
{
    Cell cell;
    if (!findCell(lat, lon, mNumLon, cell)) {
        return false;
    }
    const bool lastRow = cell.i + 1 == mNumLat;
    const bool lastColumn = cell.j + 1 == mNumLon;
    const std::int16_t* south = mHeights.get() + (cell.i + std::size_t{mNumLat} * cell.j);
    const int h00 = south[0];
    const int h01 = lastColumn ? h00 : south[mNumLat];
    const int h10 = lastRow ? h00 : south[1];
    const int h11 = lastRow || lastColumn ? h00 : south[mNumLat + 1];
    height = bilinearHeight(h00, h10, h01, h11, cell.ti, cell.tj);
    return true;
}

double TerrainTile::getAltitude(int i, int j) const
{
    if (mHeights == nullptr) {
        return 0.0;
    }
    const Neighbours latitude = neighboursOf(i, mNumLat);
    const Neighbours longitude = neighboursOf(j, mNumLon);
    return 2 * sample(latitude.nearest, longitude.nearest) - sample(latitude.inward, longitude.inward);
}

} // namespace Tavik::Geodetic
