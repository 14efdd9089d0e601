#pragma once

#include <tavik/math/Vector2.h>
#include <tavik/opengl/Tesselator.h>

#include <vector>

namespace MovingMap {

/// Outlines of chart symbols, in pixels about a place on the screen.
namespace Symbols {

using Pixel = Tavik::Math::Vector2<float>;
using Outline = std::vector<Pixel>;

Outline circle(Pixel centre, float radius);

/// Aircraft seen from above.
/// @param ahead  direction of flight, length 1
Outline aircraft(Pixel centre, Pixel ahead, float size);

/// Triangle that points to a place.
/// @param towards  direction in which it points, length 1
Outline pointer(Pixel tip, Pixel towards, float size);

/// The area within an outline.
Tavik::OpenGL::Tesselator::TessPolygon fill(const Outline& outline);

} // namespace Symbols

} // namespace MovingMap
