#pragma once

#include <moving_map/Scene.h>
#include <tavik/opengl/LineStrips.h>

#include <cstddef>
#include <optional>

namespace MovingMap {

/// The route on the map: the legs as they will be flown, the active one in another colour.
///
/// Lines are built again when the view or the active leg has changed, from what is in view: a frame costs a comparison
/// for each point of the route, and more only for what can be seen.
///
/// Drawing thread only, like every layer.
class RouteLayer
{
public:
    void render(const Scene& scene);

private:
    void build(const Scene& scene);

    std::optional<MapView> mView; // for which the lines were built
    std::size_t mLeg = 0;         // that was active then

    Tavik::OpenGL::LineStrips mFlown;
    Tavik::OpenGL::LineStrips mAhead;
    Tavik::OpenGL::LineStrips mActive;
};

} // namespace MovingMap
