#pragma once

#include <moving_map/Scene.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/Polygon.h>

#include <array>

namespace MovingMap {

/// The airspaces on the map: a translucent area under a pattern, both as their class is drawn, and an edge.
///
/// The geometry is made once, in metres of one local plane; in each frame only its matrix changes. The patterns are
/// fixed to the window, so that they do not swim when the map moves.
class AirspaceLayer
{
public:
    explicit AirspaceLayer(const Route& route);

    void render(const Scene& scene);

private:
    /// All airspaces of one class.
    struct Class
    {
        Tavik::OpenGL::Polygon areas;
        Tavik::OpenGL::LineLoops edges;
        std::array<unsigned char, 128> hatching;
        bool isEmpty = true;
    };

    Position mReference; // of the plane
    std::array<Class, AirspaceClassCount> mClasses;
};

} // namespace MovingMap
