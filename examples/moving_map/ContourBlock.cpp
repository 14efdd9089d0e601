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

// Strength against the background. The lines are opaque: where their segments overlap, translucent ones would show
// dots.
constexpr float ThinStrength = 0.50f;
constexpr float IndexStrength = 0.92f;

// Slopes that face the light in the north-west are brighter than the ones that turn away: the lines give relief.
constexpr Point TowardsLight(-0.707f, 0.707f);
constexpr float MeanBrightness = 0.86f;
constexpr float Relief = 0.42f;

/// Brightness of a piece of line; the slope falls to its right.
float brightness(Point from, Point to)
{
    const Point along = to - from;
    const float length = along.length();
    if (!(length > 0.0f)) {
        return MeanBrightness;
    }
    return MeanBrightness + Relief * Point(along.y, -along.x).dot(TowardsLight) / length;
}

/// Adds one strip with a colour of its own at every vertex.
void addStrip(LineStrips& strips, const std::vector<Point>& points, Color color, bool relief)
{
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Point before = points[i == 0 ? 0 : i - 1];
        const Point behind = points[std::min(i + 1, points.size() - 1)];
        strips.addVertex(points[i], relief ? shaded(color, brightness(before, behind)) : color);
    }
    strips.addLineStrip(std::vector<Point>()); // no points: only ends the strip
}

} // namespace

ContourBlock::ContourBlock(const BlockKey& key, const HeightSource& source) : mKey(key)
{
    const double interval = contourInterval(key.level);
    const HeightGrid grid(key, source);
    for (const ContourLine& line : traceContours(grid, contourHeights(grid, interval))) {
        if (line.heightMetres == CoastMetres) {
            addStrip(mCoast, line.points, Palette::SeaLevel, false);
        } else if (std::lround(line.heightMetres / interval) % LinesPerIndexLine == 0) {
            addStrip(mIndex, line.points, onBackground(heightColor(line.heightMetres), IndexStrength), true);
        } else {
            addStrip(mThin, line.points, onBackground(heightColor(line.heightMetres), ThinStrength), true);
        }
    }
    mThin.setLineWidth(2.0f);
    mIndex.setLineWidth(2.6f);
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
