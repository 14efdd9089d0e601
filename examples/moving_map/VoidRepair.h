#pragma once

#include <cstddef>
#include <vector>

namespace MovingMap {

/// Closes the holes of radar heights: places that the radar did not see read as sea level in the middle of mountains.
///
/// A patch of 0 m (or −1 m) whose whole shore lies higher than 100 m is taken for such a hole and filled with heights
/// from its shore. A patch that reaches the edge of the raster may be the sea and stays.
/// @param heights  row by row, size × size; NaN where there is no terrain
void repairVoids(std::vector<float>& heights, std::size_t size);

} // namespace MovingMap
