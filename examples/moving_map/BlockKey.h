#pragma once

namespace MovingMap {

/// A square piece of the earth whose relief and contours are made at once.
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

} // namespace MovingMap
