#pragma once

#include <tavik/math/Vector4.h>

namespace Tavik::OpenGL {

/// How a line drawable draws; set through the drawable's own setters.
struct LineStyle
{
    Math::Vector4<float> color = {1.0f, 1.0f, 1.0f, 1.0f};
    float width = 1.0f; ///< pixels
    int stipple = 0;    ///< one bit for each pixel of length, lowest first; 0 draws solid
    bool antiAlias = true;
};

} // namespace Tavik::OpenGL
