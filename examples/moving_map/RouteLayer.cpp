#include <moving_map/RouteLayer.h>

#include <moving_map/Pen.h>

#include <vector>

namespace MovingMap {

namespace {

constexpr float LegWidth = 3.8f;
constexpr float CasingWidth = 8.0f;

// Points of one line that lie closer than this add nothing, and drawn wide they would leave spikes.
constexpr float SmallestStepPixels = 0.5f;

const std::vector<MapView::Pixel> EndOfStrip;

/// A dark band under the line keeps it apart from the terrain; both are drawn from the same vertices.
void renderCased(Tavik::OpenGL::LineStrips& lines, Color color)
{
    applyPen(lines, {Palette::Casing, CasingWidth});
    lines.render(-1);
    applyPen(lines, {color, LegWidth});
    lines.render(-1);
}

} // namespace

void RouteLayer::render(const Scene& scene)
{
    if (mView != scene.view || mLeg != scene.aircraft.leg) {
        build(scene);
        mView = scene.view;
        mLeg = scene.aircraft.leg;
    }
    renderCased(mFlown, scene.colors.flownLeg);
    renderCased(mAhead, scene.colors.otherLeg);
    renderCased(mActive, scene.colors.activeLeg);
}

/// What has been flown, the active leg and what lies ahead are each one strip for as long as it can be seen.
void RouteLayer::build(const Scene& scene)
{
    for (auto* lines : {&mFlown, &mAhead, &mActive}) {
        lines->clearVertex();
    }
    const GeoBounds visible = scene.view.bounds(CasingWidth);
    const std::vector<PathPoint>& points = scene.path.points();
    const std::size_t active = scene.aircraft.leg;
    Tavik::OpenGL::LineStrips* open = nullptr; // the strip that the last point belongs to
    MapView::Pixel last;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const PathPoint& point = points[i];
        auto* lines = point.leg == active ? &mActive : point.leg < active ? &mFlown : &mAhead;
        const bool shows = visible.mayTouch(points[i - 1].position, point.position);
        if (open != nullptr && (open != lines || !shows)) {
            open->addLineStrip(EndOfStrip);
            open = nullptr;
        }
        if (!shows) {
            continue;
        }
        if (open == nullptr) {
            open = lines;
            last = scene.view.toPixel(points[i - 1].position);
            open->addVertex(last);
        }
        const MapView::Pixel pixel = scene.view.toPixel(point.position);
        const bool endsLeg = i + 1 == points.size() || points[i + 1].leg != point.leg;
        if (endsLeg || (pixel - last).length() >= SmallestStepPixels) {
            open->addVertex(pixel);
            last = pixel;
        }
    }
}

} // namespace MovingMap
