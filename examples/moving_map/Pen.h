#pragma once

#include <moving_map/Palette.h>

#include <cstdint>

namespace MovingMap {

/// How lines look.
struct Pen
{
    Color color;
    float widthPixels = 1.5f;
    std::uint16_t stipple = 0; ///< pattern of 32 pixels, of which the last 16 are always off; 0 for a solid line
};

/// Draws a Tavik line drawable with a pen.
template <typename Lines>
void applyPen(Lines& lines, const Pen& pen)
{
    lines.setColor(pen.color);
    lines.setLineWidth(pen.widthPixels);
    lines.setStipple(pen.stipple);
}

} // namespace MovingMap
