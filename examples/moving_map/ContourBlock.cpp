#include <moving_map/ContourBlock.h>

#include <moving_map/Contours.h>
#include <moving_map/Palette.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace MovingMap {

namespace {

using Point = Tavik::Math::Vector2<float>;
using Tavik::OpenGL::LineStrips;

// Lines about as dense on the screen at every level.
constexpr std::array<double, BlockKey::HighestLevel + 1> Intervals = {50.0, 100.0, 200.0, 200.0, 500.0, 500.0, 1000.0};
constexpr int LinesPerIndexLine = 5;

// Darker than the relief on slopes in the light, which lines across them must not outshine.
constexpr float ThinBrightness = 0.38f;
constexpr float IndexBrightness = 0.16f;

/// Adds one strip with a colour of its own at every vertex.
void addStrip(LineStrips& strips, const std::vector<Point>& points, Color color)
{
    for (const Point& point : points) {
        strips.addVertex(point, color);
    }
    strips.addLineStrip(std::vector<Point>()); // no points: only ends the strip
}

} // namespace

ContourBlock::ContourBlock(int level, const HeightGrid& grid)
{
    const double interval = contourInterval(level);
    for (const ContourLine& line : traceContours(grid, contourHeights(grid, interval))) {
        if (line.heightMetres == CoastMetres) {
            addStrip(mCoast, line.points, Palette::SeaLevel);
        } else if (std::lround(line.heightMetres / interval) % LinesPerIndexLine == 0) {
            addStrip(mIndex, line.points, shaded(heightColor(line.heightMetres), IndexBrightness));
        } else {
            addStrip(mThin, line.points, shaded(heightColor(line.heightMetres), ThinBrightness));
        }
    }
    mThin.setLineWidth(1.4f);
    mIndex.setLineWidth(2.0f);
    mCoast.setLineWidth(3.0f);
    for (LineStrips* strips : {&mThin, &mIndex, &mCoast}) {
        strips->setUseMultiColor(true);
    }
}

void ContourBlock::render()
{
    for (LineStrips* strips : {&mThin, &mIndex, &mCoast}) {
        strips->render(-1);
    }
}

double contourInterval(int level)
{
    return Intervals[static_cast<std::size_t>(std::clamp(level, 0, BlockKey::HighestLevel))];
}

} // namespace MovingMap
