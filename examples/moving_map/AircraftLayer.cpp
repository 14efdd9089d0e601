#include <moving_map/AircraftLayer.h>

#include <moving_map/Pen.h>
#include <moving_map/Symbols.h>

#include <algorithm>

namespace MovingMap {

namespace {

using Pixel = MapView::Pixel;

constexpr float SymbolSize = 19.0f;
constexpr float LongTick = 14.0f;
constexpr float ShortTick = 7.0f;
constexpr float MinuteTick = 6.0f;
constexpr int ProjectedMinutes = 5;
constexpr double SecondsPerMinute = 60.0;

constexpr std::uint16_t Dashes = 0xFFFF; // 16 pixels drawn, 16 left out

} // namespace

void AircraftLayer::render(const Scene& scene)
{
    const Pixel place = scene.view.toPixel(scene.aircraft.position);
    renderRings(scene, place);
    renderProjectedTrack(scene, place);
    renderSymbol(scene, place);
}

void AircraftLayer::renderRings(const Scene& scene, Pixel place)
{
    const auto radius = static_cast<float>(scene.rangeMetres / scene.view.metresPerPixel());
    mOuterRing.clearVertex();
    mOuterRing.addLineLoop(Symbols::circle(place, radius));
    mInnerRing.clearVertex();
    mInnerRing.addLineLoop(Symbols::circle(place, 0.5f * radius));
    mTicks.clearVertex();
    for (int bearing = 0; bearing < 360; bearing += 10) {
        const Pixel outwards = scene.view.direction(bearing);
        mTicks.addVertex(place + outwards * radius);
        mTicks.addVertex(place + outwards * (radius - (bearing % 30 == 0 ? LongTick : ShortTick)));
    }
    // North, and the track: what a compass rose is read by.
    mPointers.clearVertex();
    const Pixel north = scene.view.direction(0.0);
    mPointers.addLineLoop(Symbols::pointer(place + north * (radius + 14.0f), north, 13.0f));
    const Pixel track = scene.view.direction(scene.aircraft.trackDegrees);
    mPointers.addLineLoop(Symbols::pointer(place + track * (radius - LongTick), track, 9.0f));

    applyPen(mOuterRing, {Palette::Casing, 6.0f});
    mOuterRing.render(1.0);
    applyPen(mOuterRing, {Palette::Rings, 2.0f});
    mOuterRing.render(1.0);
    applyPen(mInnerRing, {Palette::Rings, 1.8f, Dashes});
    mInnerRing.render(1.0);
    applyPen(mTicks, {Palette::Rings, 2.0f});
    mTicks.render();
    applyPen(mPointers, {Palette::Rings, 2.2f});
    mPointers.render(1.0);
}

void AircraftLayer::renderProjectedTrack(const Scene& scene, Pixel place)
{
    const Pixel ahead = scene.view.direction(scene.aircraft.trackDegrees);
    const Pixel aside(ahead.y, -ahead.x);
    const auto minute = static_cast<float>(scene.speedMetresPerSecond * SecondsPerMinute / scene.view.metresPerPixel());
    mTrack.clearVertex();
    mTrack.addLineStrip(std::vector<Pixel>{place + ahead * SymbolSize,
                                           place + ahead * std::max(minute * ProjectedMinutes, SymbolSize)});
    mMinutes.clearVertex();
    for (int i = 1; i <= ProjectedMinutes; ++i) {
        const Pixel mark = place + ahead * (minute * static_cast<float>(i));
        if (minute * static_cast<float>(i) > SymbolSize) {
            mMinutes.addVertex(mark + aside * MinuteTick);
            mMinutes.addVertex(mark - aside * MinuteTick);
        }
    }
    applyPen(mTrack, {Palette::ProjectedTrack, 2.6f, Dashes});
    mTrack.render(-1);
    applyPen(mMinutes, {Palette::ProjectedTrack, 2.6f});
    mMinutes.render();
}

void AircraftLayer::renderSymbol(const Scene& scene, Pixel place)
{
    mSymbol.clearVertex();
    mSymbol.addLineLoop(Symbols::aircraft(place, scene.view.direction(scene.aircraft.trackDegrees), SymbolSize));
    applyPen(mSymbol, {Palette::Casing, 7.0f});
    mSymbol.render(1.0);
    applyPen(mSymbol, {Palette::Aircraft, 2.8f});
    mSymbol.render(1.0);
}

} // namespace MovingMap
