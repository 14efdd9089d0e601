#pragma once

#include <moving_map/FlightPlan.h>
#include <moving_map/HeightSource.h>
#include <moving_map/LocalPlane.h>

#include <string>
#include <vector>

namespace MovingMap {

/// South-west corners of the one-degree cells for which a folder has tiles, sorted; of overview tiles, every other
/// cell, and only where there are no other tiles. The files are told by their names and headers, no heights are read.
std::vector<Position> terrainCells(const std::string& folder);

/// Lays a flight plan over the cell with the greatest differences of height, and over those beside it.
///
/// It begins at low ground, flies an arc about a station in the mountains, passes over the highest point and returns,
/// always well clear of the ground.
/// @param cells   not empty; at most 24 of them, evenly chosen, are looked at
/// @param source  asked for some thousand heights
FlightPlan layOutPlan(const std::vector<Position>& cells, const HeightSource& source);

} // namespace MovingMap
