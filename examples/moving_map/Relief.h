#pragma once

#include <moving_map/HeightGrid.h>
#include <moving_map/HeightRaster.h>

#include <cstddef>
#include <vector>

namespace MovingMap {

/// Surface normals and heights of a block, packed for Tavik's TextureTerrain.
///
/// Heights are those of the block's grid, straight between its nodes, so that colours change exactly where contours
/// run. Normals come from samples twice as dense where the raster has them: they show what the cells are too coarse
/// for. Texels on the edge of a block are those of its neighbour.
struct Relief
{
    Relief(const HeightRaster& raster, const HeightGrid& grid);

    std::size_t texelsPerCell;          ///< 1 or 2
    std::size_t size;                   ///< texels along each edge: the first and the last lie on the block's edges
    std::vector<unsigned short> texels; ///< size × size × 4, row by row from the south-west corner
};

/// How many times steeper the slopes of a level are shown than they are. Seen from farther away mountains would be
/// flat.
double verticalExaggeration(int level);

} // namespace MovingMap
