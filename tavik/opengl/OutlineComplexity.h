#pragma once

#include <tavik/math/Vector3.h>

#include <cstddef>
#include <vector>

namespace Tavik::OpenGL {

/// Whether cutting an outline into triangles would take more than some ten seconds or some hundred megabytes: edges
/// that cross, touch or lie on each other take time by the square and more of their number. Outlines of up to 500
/// corners never do; larger ones do with about 250 000 crossings, or far fewer among tens of thousands of edges side by
/// side or in one contour.
///
/// Takes about a tenth of the time of the cutting.
/// @param corners  finite ones
/// @param contourStarts  indices in ascending order at which contours begin beside the first
bool isTooComplex(const std::vector<Math::Vector3<float>>& corners, const std::vector<std::size_t>& contourStarts);

} // namespace Tavik::OpenGL
