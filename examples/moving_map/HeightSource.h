#pragma once

#include <functional>

namespace MovingMap {

/// Height in metres at a latitude and longitude in degrees; NaN where there is no terrain data.
using HeightSource = std::function<double(double, double)>;

} // namespace MovingMap
