#include <moving_map/HeightGrid.h>

#include <algorithm>
#include <cmath>

namespace MovingMap {

HeightGrid::HeightGrid(const HeightRaster& raster)
    : mHeights(
          raster.smoothed(0, raster.samplesPerCell(), static_cast<int>(Nodes), std::max(raster.samplesPerCell(), 2)))
{}

bool HeightGrid::isCovered(std::size_t column, std::size_t row) const
{
    return !std::isnan(at(column, row) + at(column + 1, row) + at(column, row + 1) + at(column + 1, row + 1));
}

} // namespace MovingMap
