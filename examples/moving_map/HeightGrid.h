#pragma once

#include <moving_map/HeightRaster.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace MovingMap {

/// Heights on the corners of a block's cells, smoothed to what the level can show, in metres; NaN where there is no
/// terrain. Blocks side by side have the same heights on the edge that they share.
class HeightGrid
{
public:
    static constexpr std::size_t Nodes = BlockKey::Cells + 1;

    explicit HeightGrid(const HeightRaster& raster);

    /// A grid of given heights, row by row from the south-west corner.
    explicit HeightGrid(std::vector<float> heights) : mHeights(std::move(heights)) {}

    /// @param column,row  from the south-west corner, in [0, Nodes)
    float at(std::size_t column, std::size_t row) const { return mHeights[row * Nodes + column]; }

    /// Whether there is terrain at all four corners of a cell; only such cells are drawn.
    /// @param column,row  from the south-west corner, in [0, BlockKey::Cells)
    bool isCovered(std::size_t column, std::size_t row) const;

private:
    std::vector<float> mHeights;
};

} // namespace MovingMap
