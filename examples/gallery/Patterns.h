#pragma once

#include <array>

namespace Gallery {

/// 32 rows of 32 pixels, a bit each, as the filled drawables take them.
using Pattern = std::array<unsigned char, 128>;

Pattern diagonalLines();
Pattern dots();
Pattern crosshatch();

} // namespace Gallery
