#pragma once

#include <cstddef>
#include <vector>

namespace Tavik::Support {

/// Heights of an invented coast below a mountain chain, with branching valleys, islands and lakes.
///
/// A pattern of uplift is worn down by rivers until uplift and erosion balance, first on a coarse grid for the large
/// valleys, then on finer ones for their branches. That balance is what makes real ranges look as they do: ridges that
/// divide, valleys that join, slopes that grow gentle towards the sea.
///
/// The same heights come out of every run. Making the object takes about a second; height() is cheap and may be called
/// from several threads.
class ErodedLandscape
{
public:
    ErodedLandscape();

    /// @param east,north  position in the square region, each in [0, 1]; a margin of 0.1 around it is defined too
    /// @return metres; exactly 0 at sea
    double height(double east, double north) const;

private:
    struct Grid
    {
        std::size_t size = 0;
        std::vector<double> heights;

        double& at(std::size_t column, std::size_t row) { return heights[row * size + column]; }
        double at(std::size_t column, std::size_t row) const { return heights[row * size + column]; }
    };

    static Grid refine(const Grid& coarse);
    static void erode(Grid& grid, int steps);
    static void fillLakes(Grid& grid);

    Grid mGrid;
};

} // namespace Tavik::Support
