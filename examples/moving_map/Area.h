#pragma once

#include <moving_map/Palette.h>

namespace MovingMap {

/// A rectangle of the window, in pixels from its lower left corner.
struct Area
{
    int x = 0;
    int y = 0;
    int width = 1;
    int height = 1;

    /// Draws here from now on: sets OpenGL's view port and the library's, and a matrix that takes pixels of the area.
    void activate() const;

    /// Fills the area with one colour.
    void fill(Color color) const;
};

} // namespace MovingMap
