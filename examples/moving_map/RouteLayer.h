#pragma once

#include <moving_map/Scene.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/LineStrips.h>

namespace MovingMap {

/// The route on the map: the legs as they will be flown, the active one in another colour, fixes and stations.
///
/// Drawing thread only, like every layer.
class RouteLayer
{
public:
    void render(const Scene& scene);

private:
    void renderLegs(const Scene& scene);
    void renderSymbols(const Scene& scene);

    Tavik::OpenGL::LineStrips mFlown;
    Tavik::OpenGL::LineStrips mAhead;
    Tavik::OpenGL::LineStrips mActive;
    Tavik::OpenGL::LineLoops mFixes;
    Tavik::OpenGL::LineLoops mActiveFix;
    Tavik::OpenGL::LineLoops mStations;
};

} // namespace MovingMap
