#pragma once

namespace Tavik::OpenGL {

/// Makes a texture whose alpha is the given coverage and whose colour is white, filtered linearly, clamped to its edge.
/// @param pixels  width × height bytes, the row at t = 0 first
/// @return OpenGL's name, which the caller owns; 0 without pixels, for sizes that OpenGL does not take, and where
///         OpenGL could not be loaded
/// Bindings and pixel store are left as they were. Rendering thread only.
unsigned int createCoverageTexture(const unsigned char* pixels, int width, int height);

} // namespace Tavik::OpenGL
