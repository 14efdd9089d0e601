#pragma once

#include <vector>

namespace Tavik::OpenGL {

/// Reads a font file as a whole.
/// @param fileName  null counts as a file that is not there
/// @return false when the file cannot be read or is larger than fonts are (1 GiB)
bool readFontFile(const char* fileName, std::vector<char>& contents);

} // namespace Tavik::OpenGL
