#include <moving_map/Terrain.h>

#include <moving_map/VoidRepair.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace MovingMap {

namespace {

// The height map counts a point this little below a whole degree as being on it, degrees.
constexpr double CellBias = 1e-6;

// Far enough below a whole degree to fall into the tile before it, too little to change a height.
constexpr double StepBack = 2e-6;

// Where tiles are looked through for holes; those of DTED level 1 and SRTMGL3 have their samples there.
constexpr double PostsPerDegree = 1200.0;
constexpr std::size_t PostsAlongEdge = 1201;

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
            const Cell* cell = cellAt(lat, lon);
            if (cell != nullptr && cell->covered) {
                return heightIn(*cell, lat, lon);
            }
        }
    }
    return std::numeric_limits<double>::quiet_NaN();
}

/// The cell of a place, null off the earth.
const Terrain::Cell* Terrain::cellAt(double latDegrees, double lonDegrees)
{
    const double south = std::floor(latDegrees + CellBias);
    const double west = std::floor(lonDegrees + CellBias);
    if (mLast != nullptr && south == mLast->south && west == mLast->west) {
        return mLast;
    }
    if (!(std::abs(south) <= 90.0 && std::abs(west) <= 360.0)) {
        return nullptr;
    }
    const auto [found, isNew] = mCells.try_emplace({static_cast<int>(south), static_cast<int>(west)});
    Cell& cell = found->second;
    if (isNew) {
        cell.south = south;
        cell.west = west;
        cell.covered = hasTile(south, west);
        if (cell.covered) {
            fillVoids(cell);
        }
    }
    mLast = &cell;
    return mLast;
}

/// Decided for the whole tile at once, so that a hole looks the same from wherever a part of it is asked for.
void Terrain::fillVoids(Cell& cell)
{
    std::vector<float> heights;
    heights.reserve(PostsAlongEdge * PostsAlongEdge);
    for (std::size_t row = 0; row < PostsAlongEdge; ++row) {
        for (std::size_t column = 0; column < PostsAlongEdge; ++column) {
            heights.push_back(static_cast<float>(postHeight(cell, row, column)));
        }
    }
    const std::vector<std::size_t> posts = repairVoids(heights, PostsAlongEdge);
    cell.nearFilled.resize(posts.empty() ? 0 : heights.size());
    for (const std::size_t post : posts) {
        cell.filled[post] = heights[post];
        for (const std::size_t back : {std::size_t(0), std::size_t(1), PostsAlongEdge, PostsAlongEdge + 1}) {
            cell.nearFilled[post - std::min(back, post)] = true;
        }
    }
}

/// The height that the tile itself has at a post.
double Terrain::postHeight(const Cell& cell, std::size_t row, std::size_t column)
{
    const auto degrees = [](double edge, std::size_t post) {
        return edge + static_cast<double>(post) / PostsPerDegree - (post + 1 == PostsAlongEdge ? StepBack : 0.0);
    };
    return mHeights.getAltitude(degrees(cell.south, row), degrees(cell.west, column), true, false);
}

double Terrain::heightIn(const Cell& cell, double latDegrees, double lonDegrees)
{
    if (!cell.nearFilled.empty()) {
        const double north = std::max(latDegrees - cell.south, 0.0) * PostsPerDegree;
        const double east = std::max(lonDegrees - cell.west, 0.0) * PostsPerDegree;
        if (cell.nearFilled[static_cast<std::size_t>(north) * PostsAlongEdge + static_cast<std::size_t>(east)]) {
            return heightNearFilled(cell, north, east);
        }
    }
    return mHeights.getAltitude(latDegrees, lonDegrees, true, false);
}

/// Bilinear between the posts around a place, filled or not.
/// @param north,east  from the south-west corner of the cell, in posts
double Terrain::heightNearFilled(const Cell& cell, double north, double east)
{
    const auto row = static_cast<std::size_t>(north);
    const auto column = static_cast<std::size_t>(east);
    const auto post = [&](std::size_t up, std::size_t right) {
        const std::size_t r = std::min(row + up, PostsAlongEdge - 1);
        const std::size_t c = std::min(column + right, PostsAlongEdge - 1);
        const auto filled = cell.filled.find(r * PostsAlongEdge + c);
        return filled != cell.filled.end() ? filled->second : postHeight(cell, r, c);
    };
    const double up = north - static_cast<double>(row);
    const double right = east - static_cast<double>(column);
    const double southern = (1.0 - right) * post(0, 0) + right * post(0, 1);
    const double northern = (1.0 - right) * post(1, 0) + right * post(1, 1);
    return (1.0 - up) * southern + up * northern;
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
