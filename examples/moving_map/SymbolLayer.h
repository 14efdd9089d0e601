#pragma once

#include <moving_map/Scene.h>
#include <tavik/opengl/LineLoops.h>

namespace MovingMap {

/// Symbols of the fixes and stations on the map.
class SymbolLayer
{
public:
    void render(const Scene& scene);

private:
    Tavik::OpenGL::LineLoops mFixes;
    Tavik::OpenGL::LineLoops mActiveFix;
    Tavik::OpenGL::LineLoops mStations;
};

} // namespace MovingMap
