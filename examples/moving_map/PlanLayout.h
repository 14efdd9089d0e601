#pragma once

#include <moving_map/FlightPlan.h>
#include <moving_map/HeightSource.h>
#include <moving_map/LocalPlane.h>

#include <string>
#include <vector>

namespace MovingMap {

/// One-degree cells for which there is terrain, by their south-west corners.
struct TerrainCells
{
    std::vector<Position> corners;
    bool areOverview = false; ///< from overview tiles: there are no others
};

/// The cells for which a folder has tiles, sorted, without those near a pole or the antimeridian, where plans and map
/// would have to wrap round. The files are told by their names and headers, no heights are read.
TerrainCells terrainCells(const std::string& folder);

/// Lays a flight plan over the cell with the greatest differences of height, and over those beside it.
///
/// It begins at low ground, flies an arc about a station in the mountains, passes over the highest point and returns,
/// always well clear of the ground. There are airspaces about its departure and its highest point.
/// @param cells   not empty; at most 24 of them, evenly chosen, are looked at, or all those of overview tiles
/// @param source  asked for some thousand heights of each cell
FlightPlan layOutPlan(const TerrainCells& cells, const HeightSource& source);

} // namespace MovingMap
