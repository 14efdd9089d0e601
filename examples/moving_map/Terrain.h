#pragma once

#include <tavik/geodetic/HeightMap.h>

#include <map>
#include <string>
#include <utility>

namespace MovingMap {

/// Heights from a folder of tiles, and the knowledge where there are any.
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
    };

    bool covers(double latDegrees, double lonDegrees);
    bool hasTile(double southDegrees, double westDegrees);

    Tavik::Geodetic::HeightMap mHeights;
    std::map<std::pair<int, int>, bool> mCovered; // by whole degrees of latitude and longitude
    Cell mLast;                                   // the cell that was asked for last
};

} // namespace MovingMap
