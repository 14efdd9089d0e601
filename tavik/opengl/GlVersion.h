#pragma once

#include <string>

namespace Tavik::OpenGL {

/// Reads the version off the start of a version text and prints both.
/// @param text  such as "4.1 Metal - 83.1"; a missing part counts as 0
/// @return major × 100 + minor
int parseGlVersion(const std::string& text);

} // namespace Tavik::OpenGL
