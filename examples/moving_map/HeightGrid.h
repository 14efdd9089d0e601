#pragma once

#include <moving_map/HeightSource.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace MovingMap {

/// A square piece of the earth for which contours are made at once.
///
/// Blocks of level 0 are 1/16 of a degree wide; each level doubles that. Every block has the same number of cells, so
/// that a level suits a range of scales: its cells are about three pixels wide on the screen.
struct BlockKey
{
    int level = 0;  ///< 0 to HighestLevel
    int row = 0;    ///< from the equator northwards, in blocks
    int column = 0; ///< from longitude 0 eastwards, in blocks

    static constexpr int HighestLevel = 6;
    static constexpr int Cells = 75; ///< along each edge: at level 0 a cell is 3 arc-seconds, as terrain tiles have

    double edgeDegrees() const { return static_cast<double>(1 << level) / 16.0; }
    double southDegrees() const { return row * edgeDegrees(); }
    double westDegrees() const { return column * edgeDegrees(); }

    bool operator<(const BlockKey& b) const
    {
        return level != b.level ? level < b.level : row != b.row ? row < b.row : column < b.column;
    }
};

/// Heights on the corners of a block's cells, smoothed to what the level can show, in metres; NaN where there is no
/// terrain. Blocks side by side have the same heights on the edge that they share.
class HeightGrid
{
public:
    static constexpr std::size_t Nodes = BlockKey::Cells + 1;

    /// Asks the source for 7 000 to 95 000 heights.
    HeightGrid(const BlockKey& block, const HeightSource& source);

    /// A grid of given heights, row by row from the south-west corner.
    explicit HeightGrid(std::vector<float> heights) : mHeights(std::move(heights)) {}

    /// @param column,row  from the south-west corner, in [0, Nodes)
    float at(std::size_t column, std::size_t row) const { return mHeights[row * Nodes + column]; }

private:
    std::vector<float> mHeights;
};

} // namespace MovingMap
