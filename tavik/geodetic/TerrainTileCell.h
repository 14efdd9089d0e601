#pragma once

#include <cstdint>

namespace Tavik::Geodetic {

/// Finds the grid cell of a coordinate along one axis. Internal.
/// @param value,origin,spacing  degrees
/// @param count                 cells that count, at most 2^31 - 1
/// @param index                 receives the cell; the first one for less than one spacing before the origin
/// @param fraction              receives the position in the cell, in (-1, 1)
/// @return false outside, for a spacing of 0 and for NaN, with index and fraction left alone
inline bool findCell(double value, double origin, double spacing, std::uint32_t count, std::uint32_t& index,
                     double& fraction)
{
    const double steps = (value - origin) / spacing;
    if (!(steps > -1.0 && steps < count)) {
        return false;
    }
    const auto whole = static_cast<std::int32_t>(steps);
    index = static_cast<std::uint32_t>(whole);
    fraction = steps - whole;
    return true;
}

/// Height between the four samples at the corners of a cell, the first index counting north. Internal.
/// @param ti,tj  position in the cell, from the corner of h00
inline double bilinearHeight(int h00, int h10, int h01, int h11, double ti, double tj)
{
    const double a = h00 + tj * (h01 - h00);
    const double b = h10 + tj * (h11 - h10);
    return a + ti * (b - a);
}

} // namespace Tavik::Geodetic
