#include <moving_map/RouteLayer.h>

#include <moving_map/Pen.h>
#include <moving_map/Symbols.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace MovingMap {

namespace {

constexpr float LegWidth = 3.8f;
constexpr float CasingWidth = 8.0f;
constexpr float WaypointRadius = 11.0f;
constexpr float FlyOverRadius = 13.0f;
constexpr float StationRadius = 8.0f;

using Strip = std::vector<MapView::Pixel>;

/// The points of one leg, beginning where the leg before it ends.
Strip legStrip(const Scene& scene, std::size_t leg)
{
    Strip strip;
    const std::vector<PathPoint>& points = scene.path.points();
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (points[i].leg == leg) {
            if (strip.empty() && i > 0) {
                strip.push_back(scene.view.toPixel(points[i - 1].position));
            }
            strip.push_back(scene.view.toPixel(points[i].position));
        }
    }
    return strip;
}

/// A dark band under the line keeps it apart from the contours; both are drawn from the same vertices.
void renderCased(Tavik::OpenGL::LineStrips& lines, Color color)
{
    applyPen(lines, {Palette::Casing, CasingWidth});
    lines.render(-1);
    applyPen(lines, {color, LegWidth});
    lines.render(-1);
}

void renderCased(Tavik::OpenGL::LineLoops& loops, Color color)
{
    applyPen(loops, {Palette::Casing, 6.0f});
    loops.render(1.0);
    applyPen(loops, {color, 2.4f});
    loops.render(1.0);
}

} // namespace

void RouteLayer::render(const Scene& scene)
{
    renderLegs(scene);
    renderSymbols(scene);
}

void RouteLayer::renderLegs(const Scene& scene)
{
    for (auto* lines : {&mFlown, &mAhead, &mActive}) {
        lines->clearVertex();
    }
    const std::size_t active = scene.aircraft.leg;
    for (std::size_t leg = 0; leg < scene.route.legs.size(); ++leg) {
        (leg == active ? mActive : leg < active ? mFlown : mAhead).addLineStrip(legStrip(scene, leg));
    }
    renderCased(mFlown, Palette::FlownLeg);
    renderCased(mAhead, Palette::OtherLeg);
    renderCased(mActive, Palette::ActiveLeg);
}

void RouteLayer::renderSymbols(const Scene& scene)
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
