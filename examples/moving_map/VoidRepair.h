#pragma once

#include <cstddef>
#include <vector>

namespace MovingMap {

/// Closes the holes of radar heights: places that the radar did not see read as sea level in the middle of mountains.
///
/// A patch of 0 m (or −1 m) whose whole shore lies higher than 100 m is taken for such a hole and filled with heights
/// from its shore. A patch of more than 1000 places that reaches the edge of the raster may be the sea and stays.
/// @param heights  row by row, size × size; NaN where there is no terrain
/// @return the indices of the heights that were filled, shores among them
std::vector<std::size_t> repairVoids(std::vector<float>& heights, std::size_t size);

} // namespace MovingMap
