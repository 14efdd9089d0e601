#pragma once

#include <moving_map/Layers.h>
#include <moving_map/MapView.h>
#include <moving_map/Palette.h>
#include <moving_map/Route.h>
#include <moving_map/RoutePath.h>

#include <cstddef>

namespace MovingMap {

/// What the layers of the map show in one frame.
struct Scene
{
    const Route& route;
    const RoutePath& path;
    const MapView& view;
    RoutePath::State aircraft;
    double distanceMetres = 0.0; ///< flown
    double altitudeMetres = 0.0; ///< planned, or told by a feed; NaN where neither is
    double speedMetresPerSecond = 0.0;
    double rangeMetres = 0.0; ///< of the outer ring
    std::size_t nextFix = 0;  ///< index into the path's fixes
    Layers layers = {};       ///< that are shown
    MapColors colors = {};
    bool isAircraftLost = false; ///< it was there when its feed told something last
};

} // namespace MovingMap
