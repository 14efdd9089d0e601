#pragma once

#include <tavik/math/Vector4.h>

namespace Tavik::Support {

/// A rectangle of the window, in pixels from the window's lower left corner.
struct Area
{
    int x = 0;
    int y = 0;
    int width = 1;
    int height = 1;

    /// Draws here from now on: sets OpenGL's view port and the library's, and a matrix that takes pixels of the area,
    /// (0, 0) in its lower left corner.
    void activate() const;

    /// Fills the area with one colour.
    void fill(Math::Vector4<float> color) const;
};

} // namespace Tavik::Support
