#pragma once

#include <tavik/math/Vector3.h>

#include <array>

namespace Tavik::OpenGL {

/// (0, 0), (0, height), (width, 0), (width, height): the order in which they make a strip of two triangles.
inline std::array<Math::Vector3<float>, 4> rectangleCorners(unsigned int width, unsigned int height)
{
    const auto right = static_cast<float>(width);
    const auto top = static_cast<float>(height);
    return {{{0.0f, 0.0f, 0.0f}, {0.0f, top, 0.0f}, {right, 0.0f, 0.0f}, {right, top, 0.0f}}};
}

} // namespace Tavik::OpenGL
