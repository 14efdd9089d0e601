#pragma once

#include <moving_map/Scene.h>
#include <tavik/opengl/LineLoops.h>

#include <array>

namespace MovingMap {

/// The airspaces on the map: their edges, in a colour for each class.
///
/// The geometry is made once, in metres of one local plane; in each frame only its matrix changes.
class AirspaceLayer
{
public:
    explicit AirspaceLayer(const Route& route);

    void render(const Scene& scene);

private:
    Position mReference;                                             // of the plane
    std::array<Tavik::OpenGL::LineLoops, AirspaceClassCount> mEdges; // by class
};

} // namespace MovingMap
