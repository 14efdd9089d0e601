#include <moving_map/DataBlock.h>

#include <moving_map/Latin1.h>
#include <moving_map/Palette.h>
#include <moving_map/Units.h>
#include <tavik/opengl/MatrixStack.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace MovingMap {

namespace {

using Pixel = MapView::Pixel;

constexpr int Width = 262;
constexpr int Height = 100;
constexpr float Margin = 10.0f; // to the edges of the map
constexpr int SmallestMapWidth = 420;
constexpr int SmallestMapHeight = 240;

constexpr int CaptionSize = 12;
constexpr int ValueSize = 16;
constexpr float RowStep = 23.0f;
constexpr float FirstRow = 16.0f; // from the top to its middle
constexpr float CaptionX = 10.0f;
constexpr float ValueX = 44.0f;
constexpr float ColumnStep = 124.0f;

constexpr std::size_t LongestName = 40; // far more characters than fit

constexpr int HighestSeconds = 99 * 3600;
constexpr double SlowestMetresPerSecond = 1.0; // with a time to the next fix

int wholeDegrees(double degrees)
{
    return (static_cast<int>(std::lround(degrees)) + 359) % 360 + 1; // north is 360
}

template <typename... Values>
std::string formatted(const char* format, Values... values)
{
    char text[32];
    std::snprintf(text, sizeof(text), format, values...);
    return text;
}

std::string timeText(int seconds)
{
    return seconds < 3600 ? formatted("%d:%02d", seconds / 60, seconds % 60)
                          : formatted("%d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

} // namespace

bool DataBlock::Figures::operator==(const Figures& b) const
{
    return speedKnots == b.speedKnots && trackDegrees == b.trackDegrees && altitudeFeet == b.altitudeFeet &&
           fix == b.fix && bearingDegrees == b.bearingDegrees && tenthMiles == b.tenthMiles && seconds == b.seconds &&
           top == b.top;
}

DataBlock::DataBlock(const MapColors& colors)
    : mCaptions(Palette::Caption), mValues(Palette::Text), mFixName(colors.activeLeg)
{
    mPanel.setRect(Width, Height);
    mPanel.setColor(Palette::Panel);
}

void DataBlock::update(const Scene& scene, bool isWanted)
{
    mBox.reset();
    if (!isWanted || scene.view.width() < SmallestMapWidth || scene.view.height() < SmallestMapHeight) {
        return;
    }
    const Figures figures = DataBlock::figures(scene);
    mBox = Box{{Margin, figures.top - Height}, {Margin + Width, figures.top}};
    if (!mFigures || !(*mFigures == figures)) {
        mFigures = figures;
        write(figures, scene.path.fixes()[figures.fix].name);
    }
}

DataBlock::Figures DataBlock::figures(const Scene& scene)
{
    const PathFix& ahead = scene.path.fixes()[scene.nextFix];
    const double metres = std::max(ahead.distanceMetres - scene.distanceMetres, 0.0);
    Figures figures;
    figures.speedKnots =
        static_cast<int>(std::lround(scene.speedMetresPerSecond * SecondsPerHour / MetresPerNauticalMile));
    figures.trackDegrees = wholeDegrees(scene.aircraft.trackDegrees);
    if (!std::isnan(scene.altitudeMetres)) {
        figures.altitudeFeet = static_cast<int>(std::lround(scene.altitudeMetres / MetresPerFoot / 10.0)) * 10;
    }
    figures.fix = scene.nextFix;
    figures.bearingDegrees = wholeDegrees(planeCourse(scene.aircraft.position, ahead.position));
    figures.tenthMiles = static_cast<int>(std::lround(10.0 * metres / MetresPerNauticalMile));
    if (scene.speedMetresPerSecond >= SlowestMetresPerSecond) {
        figures.seconds = static_cast<int>(std::min(metres / scene.speedMetresPerSecond, HighestSeconds * 1.0));
    }
    figures.top = static_cast<float>(scene.view.height()) - Margin;
    return figures;
}

void DataBlock::write(const Figures& figures, const std::string& fixName)
{
    for (TextBatch* batch : {&mCaptions, &mValues, &mFixName}) {
        batch->clear();
    }
    writeFigure(0, 0, "GS", formatted("%d kt", figures.speedKnots));
    writeFigure(1, 0, "TRK", formatted("%03d\xB0", figures.trackDegrees));
    writeFigure(0, 1, "ALT", figures.altitudeFeet ? formatted("%d ft", *figures.altitudeFeet) : "---");
    writeFigure(1, 1, "ETE", figures.seconds ? timeText(*figures.seconds) : "---");
    writeFigure(0, 3, "BRG", formatted("%03d\xB0", figures.bearingDegrees));
    writeFigure(1, 3, "DIS", formatted("%d.%d NM", figures.tenthMiles / 10, figures.tenthMiles % 10));

    writeFigure(0, 2, "TO", {});
    std::string name = toLatin1(fixName).substr(0, LongestName);
    while (!name.empty() && TextBatch::width(name, ValueSize) > Width - ValueX - CaptionX) {
        name.pop_back();
    }
    mFixName.add(name, {ValueX, Height - FirstRow - 2.0f * RowStep}, ValueSize, TextAlign::Left);
}

/// Into the block's own pixels.
void DataBlock::writeFigure(int column, int row, const char* caption, const std::string& value)
{
    const float y = Height - FirstRow - RowStep * static_cast<float>(row);
    const float x = ColumnStep * static_cast<float>(column);
    mCaptions.add(caption, {x + CaptionX, y}, CaptionSize, TextAlign::Left);
    mValues.add(value, {x + ValueX, y}, ValueSize, TextAlign::Left);
}

void DataBlock::render()
{
    if (!mBox) {
        return;
    }
    Tavik::OpenGL::MatrixPush();
    Tavik::OpenGL::MatrixTranslate(mBox->low.x, mBox->low.y, 0.0);
    mPanel.render();
    mCaptions.render();
    mValues.render();
    mFixName.render();
    Tavik::OpenGL::MatrixPop();
}

} // namespace MovingMap
