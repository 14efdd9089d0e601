#include <moving_map/AirspaceLayer.h>

#include <moving_map/AirspaceStyle.h>
#include <moving_map/Symbols.h>
#include <tavik/opengl/MatrixStack.h>

#include <cstddef>
#include <vector>

namespace MovingMap {

namespace {

using Vertex = Tavik::Math::Vector2<float>;

std::vector<Vertex> toPlane(const LocalPlane& plane, const std::vector<Position>& outline)
{
    std::vector<Vertex> vertices;
    for (const Position& position : outline) {
        const LocalPlane::Point point = plane.toPoint(position);
        vertices.emplace_back(static_cast<float>(point.x), static_cast<float>(point.y));
    }
    return vertices;
}

} // namespace

AirspaceLayer::AirspaceLayer(const Route& route) : mReference(route.start)
{
    for (std::size_t i = 0; i < mClasses.size(); ++i) {
        mClasses[i].hatching = hatchingBits(airspaceStyle(static_cast<AirspaceClass>(i)));
    }
    const LocalPlane plane(mReference);
    for (const Airspace& airspace : route.airspaces) {
        const std::vector<Vertex> outline = toPlane(plane, airspace.outline);
        Class& drawn = mClasses[static_cast<std::size_t>(airspace.airspaceClass)];
        drawn.areas.addTessPolygon(Symbols::fill(outline));
        drawn.edges.addLineLoop(outline);
        drawn.isEmpty = false;
    }
}

void AirspaceLayer::render(const Scene& scene)
{
    Tavik::OpenGL::MatrixPush();
    Tavik::OpenGL::MatrixSet(scene.view.planeMatrix(mReference));
    for (std::size_t i = 0; i < mClasses.size(); ++i) {
        Class& drawn = mClasses[i];
        if (drawn.isEmpty) {
            continue;
        }
        const AirspaceStyle& style = airspaceStyle(static_cast<AirspaceClass>(i));
        drawn.areas.setPattern(nullptr);
        drawn.areas.setColor(translucent(style.edge.color, style.fill));
        drawn.areas.render();
        drawn.areas.setPattern(drawn.hatching.data());
        drawn.areas.setColor(translucent(style.edge.color, style.hatching));
        drawn.areas.render();
        applyPen(drawn.edges, style.edge);
        drawn.edges.render(scene.view.metresPerPixel());
    }
    Tavik::OpenGL::MatrixPop();
}

} // namespace MovingMap
