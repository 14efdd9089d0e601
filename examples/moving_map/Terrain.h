#pragma once

#include <tavik/geodetic/HeightMap.h>

#include <cstddef>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace MovingMap {

/// Heights from a folder of tiles, and the knowledge where there are any.
///
/// Holes that the radar left in a tile are closed when the tile is first asked for (see VoidRepair.h), so that every
/// reader of heights sees the same ground there.
///
/// One thread at a time: the height map loads tiles while it answers.
class Terrain
{
public:
    /// Scans the folder; tiles are read when they are first asked for.
    explicit Terrain(const std::string& folder);

    /// Height in metres, NaN where no tile lies or its file cannot be read. The northern and eastern edges of a tile
    /// belong to it where no other tile goes on.
    double height(double latDegrees, double lonDegrees);

private:
    /// A cell of whole degrees. The default matches no place.
    struct Cell
    {
        double south = 1e9;
        double west = 1e9;
        bool covered = false;
        std::unordered_map<std::size_t, float> filled; // posts in holes: metres by index
        std::vector<bool> nearFilled; // by the post at the south-west of a place; empty where nothing was filled
    };

    const Cell* cellAt(double latDegrees, double lonDegrees);
    bool hasTile(double southDegrees, double westDegrees);
    void fillVoids(Cell& cell);
    double postHeight(const Cell& cell, std::size_t row, std::size_t column);
    double heightIn(const Cell& cell, double latDegrees, double lonDegrees);
    double heightNearFilled(const Cell& cell, double north, double east);

    Tavik::Geodetic::HeightMap mHeights;
    std::map<std::pair<int, int>, Cell> mCells; // by whole degrees of latitude and longitude
    const Cell* mLast = nullptr;                // the cell that was asked for last
};

} // namespace MovingMap
