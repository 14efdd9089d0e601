#include <moving_map/ReliefBlock.h>

#include <GL/gl.h>

#include <vector>

namespace MovingMap {

namespace {

// Part of a cell by which pieces reach over their edges: where two meet, rounding must not leave a pixel between them.
// Beyond a block's edge its texels go on.
constexpr float Overlap = 0.02f;

// Slopes in full shadow keep this much of their colour, and the whole stays dark enough for what is drawn on it.
constexpr double ShadingFactor = 0.85;
constexpr double Brightness = 0.66;

/// Whole columns of cells in one row, or in several with the same ones.
struct Run
{
    std::size_t west;
    std::size_t east;
    std::size_t south;
    std::size_t north;
};

/// The covered cells, in as few rectangles as rows and columns make without much thought.
std::vector<Run> coveredRuns(const HeightGrid& grid)
{
    constexpr std::size_t Cells = BlockKey::Cells;
    std::vector<Run> runs;
    for (std::size_t row = 0; row < Cells; ++row) {
        for (std::size_t column = 0; column < Cells; ++column) {
            if (!grid.isCovered(column, row)) {
                continue;
            }
            const std::size_t west = column;
            while (column < Cells && grid.isCovered(column, row)) {
                ++column;
            }
            bool grown = false;
            for (Run& run : runs) {
                if (run.north == row && run.west == west && run.east == column) {
                    run.north = row + 1;
                    grown = true;
                }
            }
            if (!grown) {
                runs.push_back({west, column, row, row + 1});
            }
        }
    }
    return runs;
}

} // namespace

ReliefBlock::ReliefBlock(const HeightRaster& raster, const HeightGrid& grid)
{
    const std::vector<Run> runs = coveredRuns(grid);
    if (runs.empty()) {
        return;
    }
    mRelief.emplace(raster, grid);
    using Vertex = Tavik::Math::Vector3<float>;
    using Coordinate = Tavik::Math::Vector2<float>;
    const auto perCell = static_cast<float>(mRelief->texelsPerCell);
    const auto size = static_cast<float>(mRelief->size);
    const auto add = [&](float column, float row) { // in cells; the nodes lie in the middle of their texels
        mTexture.addVertex(Vertex(column, row, 0.0f),
                           Coordinate((column * perCell + 0.5f) / size, (row * perCell + 0.5f) / size));
    };
    bool joins = false;
    for (const Run& run : runs) {
        const float west = static_cast<float>(run.west) - Overlap;
        const float east = static_cast<float>(run.east) + Overlap;
        const float south = static_cast<float>(run.south) - Overlap;
        const float north = static_cast<float>(run.north) + Overlap;
        if (joins) { // triangles without area lead from the end of the last run, which stands twice, to this one
            add(west, south);
        }
        add(west, south);
        add(west, north);
        add(east, south);
        add(east, north);
        if (&run != &runs.back()) {
            add(east, north);
        }
        joins = true;
    }
    mTexture.setShadingFactor(ShadingFactor);
    mTexture.setShadingBrightness(Brightness);
}

void ReliefBlock::upload()
{
    if (mRelief) {
        const auto size = static_cast<unsigned int>(mRelief->size);
        mTexture.loadNormals(mRelief->texels.data(), size, size, GL_RGBA);
        mRelief.reset();
    }
}

void ReliefBlock::render(Tavik::Math::Vector3<float> light, unsigned int ramp)
{
    mTexture.setLightDirection(light);
    mTexture.setColorMap(ramp);
    mTexture.render();
}

Tavik::Math::Vector3<float> lightOnMap(double upDegrees)
{
    const LocalPlane::Point away = directionOf(upDegrees + 135.0);
    return {static_cast<float>(away.x), static_cast<float>(away.y), -1.0f};
}

} // namespace MovingMap
