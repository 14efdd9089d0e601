#pragma once

#include <tavik/math/Matrix4.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>

#include <vector>

namespace Tavik::OpenGL {

/// Length along the vertices, each joined to the one before it, as it appears on the screen; stipples count by it.
///
/// A step from or to a vertex that is NaN or infinite, or a step too long for single precision, counts as zero, so that
/// it does not spoil the vertices after it. The sum is kept in single precision: behind a vertex far outside the screen
/// it counts in coarser steps than pixels.
///
/// @param transform  to clip space; not divided by w
/// @param viewPort  size of the drawing area, pixels
/// @param lengths  replaced by one value for each vertex, pixels, the first 0; its memory is used again
void calcRunningLength(const std::vector<Math::Vector3<float>>& vertices, const Math::Matrix4<float>& transform,
                       Math::Vector2<float> viewPort, std::vector<float>& lengths);

} // namespace Tavik::OpenGL
