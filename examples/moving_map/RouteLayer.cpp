#include <moving_map/RouteLayer.h>

#include <moving_map/Pen.h>

#include <cstddef>
#include <vector>

namespace MovingMap {

namespace {

constexpr float LegWidth = 3.8f;
constexpr float CasingWidth = 8.0f;

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

} // namespace

void RouteLayer::render(const Scene& scene)
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

} // namespace MovingMap
