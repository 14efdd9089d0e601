#pragma once

#include <moving_map/Airspace.h>
#include <moving_map/Pen.h>

#include <array>

namespace MovingMap {

/// How airspaces of a class look, after the habits of charts: blue where controllers separate, red where nobody may
/// fly, orange where it is dangerous.
struct AirspaceStyle
{
    Pen edge;                                          ///< drawn along the boundary; its colour is that of everything
    float fill;                                        ///< opacity of the area, in [0, 1]
    float hatching;                                    ///< opacity of the pattern on top of it
    bool (*isHatched)(unsigned int x, unsigned int y); ///< the pattern, by pixel in [0, 32)
};

const AirspaceStyle& airspaceStyle(AirspaceClass airspaceClass);

/// A pattern of 32 rows of 4 bytes, as Tavik's filled drawables take it.
std::array<unsigned char, 128> hatchingBits(const AirspaceStyle& style);

} // namespace MovingMap
