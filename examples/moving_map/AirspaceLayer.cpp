#include <moving_map/AirspaceLayer.h>

#include <moving_map/AirspaceStyle.h>
#include <tavik/opengl/MatrixStack.h>

#include <cstddef>
#include <vector>

namespace MovingMap {

using Vertex = Tavik::Math::Vector2<float>;

AirspaceLayer::AirspaceLayer(const Route& route) : mReference(route.start)
{
    const LocalPlane plane(mReference);
    std::vector<Vertex> outline;
    for (const Airspace& airspace : route.airspaces) {
        outline.clear();
        for (const Position& position : airspace.outline) {
            const LocalPlane::Point point = plane.toPoint(position);
            outline.emplace_back(static_cast<float>(point.x), static_cast<float>(point.y));
        }
        mEdges[static_cast<std::size_t>(airspace.airspaceClass)].addLineLoop(outline);
    }
}

void AirspaceLayer::render(const Scene& scene)
{
    Tavik::OpenGL::MatrixPush();
    Tavik::OpenGL::MatrixSet(scene.view.planeMatrix(mReference));
    for (std::size_t i = 0; i < mEdges.size(); ++i) {
        applyPen(mEdges[i], airspaceStyle(static_cast<AirspaceClass>(i)).edge);
        mEdges[i].render(scene.view.metresPerPixel());
    }
    Tavik::OpenGL::MatrixPop();
}

} // namespace MovingMap
