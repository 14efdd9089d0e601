#include <moving_map/AircraftLayer.h>

#include <moving_map/Pen.h>
#include <moving_map/Symbols.h>
#include <tavik/opengl/MatrixStack.h>

#include <vector>

namespace MovingMap {

namespace {

using Pixel = MapView::Pixel;

constexpr float MinuteTick = 6.0f;
constexpr int ProjectedMinutes = 5;
constexpr double SecondsPerMinute = 60.0;

constexpr std::uint16_t Dashes = 0xFFFF; // 16 pixels drawn, 16 left out

} // namespace

AircraftLayer::AircraftLayer()
{
    const Symbols::Outline outline = Symbols::aircraft({}, {0.0f, 1.0f}, SymbolSize);
    mOutline.addLineLoop(outline);
    mSymbol.addTessPolygon(Symbols::fill(outline));
}

void AircraftLayer::render(const Scene& scene)
{
    const auto minute = static_cast<float>(scene.speedMetresPerSecond * SecondsPerMinute / scene.view.metresPerPixel());
    if (minute != mMinute) {
        buildTrack(minute);
        mMinute = minute;
    }
    const Pixel place = scene.view.toPixel(scene.aircraft.position);
    Tavik::OpenGL::MatrixPush();
    Tavik::OpenGL::MatrixTranslate(place.x, place.y, 0.0);
    Tavik::OpenGL::MatrixRotate(scene.view.up() - scene.aircraft.trackDegrees, 0.0, 0.0, 1.0);
    if (!scene.isAircraftLost) {
        applyPen(mTrack, {scene.colors.projectedTrack, 2.6f, Dashes});
        mTrack.render(-1);
        applyPen(mMinutes, {scene.colors.projectedTrack, 2.6f});
        mMinutes.render();
    }
    applyPen(mOutline, {Palette::Casing, 5.0f});
    mOutline.render(1.0);
    if (scene.isAircraftLost) {
        applyPen(mOutline, {Palette::Attention, 2.0f});
        mOutline.render(1.0);
    } else {
        mSymbol.setColor(scene.colors.aircraft);
        mSymbol.render();
    }
    Tavik::OpenGL::MatrixPop();
}

void AircraftLayer::buildTrack(float minute)
{
    mTrack.clearVertex();
    if (minute * ProjectedMinutes > SymbolSize) {
        mTrack.addLineStrip(std::vector<Pixel>{{0.0f, SymbolSize}, {0.0f, minute * ProjectedMinutes}});
    }
    mMinutes.clearVertex();
    for (int i = 1; i <= ProjectedMinutes; ++i) {
        const float mark = minute * static_cast<float>(i);
        if (mark > SymbolSize) {
            mMinutes.addVertex(Pixel(-MinuteTick, mark));
            mMinutes.addVertex(Pixel(MinuteTick, mark));
        }
    }
}

} // namespace MovingMap
