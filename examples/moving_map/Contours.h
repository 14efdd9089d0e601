#pragma once

#include <moving_map/HeightGrid.h>
#include <moving_map/Palette.h>
#include <tavik/math/Vector2.h>

#include <vector>

namespace MovingMap {

/// A line of equal height, with the higher ground on its left.
struct ContourLine
{
    double heightMetres = 0.0;

    /// In cells from the south-west corner of the block. A closed line ends with its first point.
    std::vector<Tavik::Math::Vector2<float>> points;
};

/// Traces the lines of some heights through a grid, by marching squares.
///
/// What each cell contributes is joined into lines as long as possible, so that they can be drawn wide and smooth.
/// A node exactly at a height counts as above it: level ground has no line of its own height. Cells with a corner
/// without terrain have none at all. Closed lines shorter than two cells across are left out.
/// @param heightsMetres  of the lines
std::vector<ContourLine> traceContours(const HeightGrid& grid, const std::vector<double>& heightsMetres);

/// The multiples of an interval, and the coast, that lie between the lowest and the highest node.
///
/// The coast, at CoastMetres, takes the place of the line at 0 m.
std::vector<double> contourHeights(const HeightGrid& grid, double intervalMetres);

} // namespace MovingMap
