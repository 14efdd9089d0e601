#include <moving_map/Terrain.h>

#include <cmath>
#include <limits>

namespace MovingMap {

namespace {

// The height map counts a point this little below a whole degree as being on it, degrees.
constexpr double CellBias = 1e-6;

// Far enough below a whole degree to fall into the tile before it, too little to change a height.
constexpr double StepBack = 2e-6;

} // namespace

Terrain::Terrain(const std::string& folder)
{
    mHeights.setDataPath(folder);
    mHeights.loadThread();
}

double Terrain::height(double latDegrees, double lonDegrees)
{
    for (const double lat : {latDegrees, latDegrees - StepBack}) {
        for (const double lon : {lonDegrees, lonDegrees - StepBack}) {
            if (covers(lat, lon)) {
                return mHeights.getAltitude(lat, lon, true, false);
            }
        }
    }
    return std::numeric_limits<double>::quiet_NaN();
}

bool Terrain::covers(double latDegrees, double lonDegrees)
{
    const double south = std::floor(latDegrees + CellBias);
    const double west = std::floor(lonDegrees + CellBias);
    if (south == mLast.south && west == mLast.west) {
        return mLast.covered;
    }
    if (!(std::abs(south) <= 90.0 && std::abs(west) <= 360.0)) {
        return false;
    }
    const auto [cell, isNew] = mCovered.try_emplace({static_cast<int>(south), static_cast<int>(west)}, false);
    if (isNew) {
        cell->second = hasTile(south, west);
    }
    mLast = {south, west, cell->second};
    return mLast.covered;
}

/// A height of 0 may be the sea or no tile at all. The normal tells them apart: it keeps its preset where there is no
/// tile, and is zero in a tile that could not be read.
bool Terrain::hasTile(double southDegrees, double westDegrees)
{
    unsigned char x = 0;
    unsigned char y = 0;
    unsigned char z = 0;
    mHeights.getNormal(southDegrees + 0.5, westDegrees + 0.5, true, false, x, y, z);
    const bool missing = x == 128 && y == 128 && z == 255;
    const bool unreadable = x == 0 && y == 0 && z == 0;
    return !missing && !unreadable;
}

} // namespace MovingMap
