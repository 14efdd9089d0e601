#include <moving_map/SymbolLayer.h>

#include <moving_map/Pen.h>
#include <moving_map/Symbols.h>

#include <string>

namespace MovingMap {

namespace {

constexpr float WaypointRadius = 11.0f;
constexpr float FlyOverRadius = 13.0f;
constexpr float StationRadius = 8.0f;

void renderCased(Tavik::OpenGL::LineLoops& loops, Color color)
{
    applyPen(loops, {Palette::Casing, 6.0f});
    loops.render(1.0);
    applyPen(loops, {color, 2.4f});
    loops.render(1.0);
}

} // namespace

void SymbolLayer::render(const Scene& scene)
{
    for (auto* loops : {&mFixes, &mActiveFix, &mStations}) {
        loops->clearVertex();
    }
    for (const Station& station : scene.route.stations) {
        const MapView::Pixel place = scene.view.toPixel(station.position);
        mStations.addLineLoop(Symbols::station(place, StationRadius));
        mStations.addLineLoop(Symbols::stationFrame(place, StationRadius));
    }
    const std::string& activeName = scene.route.legs[scene.aircraft.leg].name;
    for (const PathFix& fix : scene.path.fixes()) {
        const MapView::Pixel place = scene.view.toPixel(fix.position);
        auto& loops = fix.name == activeName ? mActiveFix : mFixes;
        loops.addLineLoop(Symbols::waypoint(place, WaypointRadius));
        if (fix.flyOver) {
            loops.addLineLoop(Symbols::circle(place, FlyOverRadius));
        }
    }
    renderCased(mStations, Palette::Station);
    renderCased(mFixes, Palette::OtherLeg);
    renderCased(mActiveFix, Palette::ActiveLeg);
}

} // namespace MovingMap
