#pragma once

#include <moving_map/Scene.h>
#include <tavik/opengl/LineStrips.h>

namespace MovingMap {

/// The route on the map: the legs as they will be flown, the active one in another colour.
///
/// Drawing thread only, like every layer.
class RouteLayer
{
public:
    void render(const Scene& scene);

private:
    Tavik::OpenGL::LineStrips mFlown;
    Tavik::OpenGL::LineStrips mAhead;
    Tavik::OpenGL::LineStrips mActive;
};

} // namespace MovingMap
