#include <moving_map/Relief.h>

#include <moving_map/Contours.h>
#include <moving_map/Palette.h>
#include <moving_map/Units.h>
#include <tavik/math/Vector3.h>
#include <tavik/opengl/TerrainTexels.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace MovingMap {

namespace {

constexpr int MostTexelsPerCell = 2;
constexpr int NormalReach = 2; // samples: takes the steps of whole metres out of the slopes

constexpr std::array<double, BlockKey::HighestLevel + 1> Exaggerations = {1.6, 1.9, 2.3, 2.8, 3.5, 4.5, 6.0};

/// Difference from one place to the next, from those that are known of three.
float difference(float before, float here, float behind)
{
    if (std::isnan(before)) {
        return std::isnan(behind) ? 0.0f : behind - here;
    }
    return std::isnan(behind) ? here - before : 0.5f * (behind - before);
}

/// Height of the grid at a texel: straight between the nodes around it.
float heightAt(const HeightGrid& grid, std::size_t column, std::size_t row, std::size_t texelsPerCell)
{
    const std::size_t west = column / texelsPerCell;
    const std::size_t south = row / texelsPerCell;
    const std::size_t east = west + column % texelsPerCell; // with two texels in a cell the other one is half-way
    const std::size_t north = south + row % texelsPerCell;
    return 0.25f * (grid.at(west, south) + grid.at(east, south) + grid.at(west, north) + grid.at(east, north));
}

} // namespace

Relief::Relief(const HeightRaster& raster, const HeightGrid& grid)
    : texelsPerCell(static_cast<std::size_t>(std::min(raster.samplesPerCell(), MostTexelsPerCell))),
      size(BlockKey::Cells * texelsPerCell + 1)
{
    const int step = raster.samplesPerCell() / static_cast<int>(texelsPerCell);
    const std::size_t bordered = size + 2; // one more on each side, for the differences
    const std::vector<float> heights = raster.smoothed(-step, step, static_cast<int>(bordered), NormalReach);
    const double spacing = step * raster.spacingDegrees() * MetresPerDegree;
    const double exaggeration = verticalExaggeration(raster.block().level);

    texels.reserve(size * size * std::tuple_size_v<Tavik::OpenGL::TerrainTexel>);
    for (std::size_t row = 0; row < size; ++row) {
        const double lat = raster.latDegrees(static_cast<int>(row) * step);
        const auto perNorth = static_cast<float>(exaggeration / spacing);
        const auto perEast = static_cast<float>(exaggeration / (spacing * std::cos(lat * RadiansPerDegree)));
        for (std::size_t column = 0; column < size; ++column) {
            const float* here = &heights[(row + 1) * bordered + column + 1];
            Tavik::Math::Vector3<float> normal(0.0f, 0.0f, 1.0f);
            if (!std::isnan(*here) && !isSea(*here)) {
                const float east = -perEast * difference(here[-1], *here, here[1]);
                const float north = -perNorth * difference(*(here - bordered), *here, here[bordered]);
                const float length = std::sqrt(east * east + north * north + 1.0f);
                normal = {east / length, north / length, 1.0f / length};
            }
            const auto texel = Tavik::OpenGL::terrainTexel(normal, heightAt(grid, column, row, texelsPerCell));
            texels.insert(texels.end(), texel.begin(), texel.end());
        }
    }
}

double verticalExaggeration(int level)
{
    return Exaggerations[static_cast<std::size_t>(std::clamp(level, 0, BlockKey::HighestLevel))];
}

} // namespace MovingMap
