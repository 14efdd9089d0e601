#include <gallery/Patterns.h>

namespace Gallery {

namespace {

/// @param isSet  whether the pixel at (column, row) shows
template <typename Rule>
Pattern patternOf(Rule isSet)
{
    Pattern pattern{};
    for (unsigned int row = 0; row < 32; ++row) {
        for (unsigned int column = 0; column < 32; ++column) {
            if (isSet(column, row)) {
                pattern[row * 4 + column / 8] |= static_cast<unsigned char>(1u << column % 8);
            }
        }
    }
    return pattern;
}

} // namespace

Pattern diagonalLines()
{
    return patternOf([](unsigned int column, unsigned int row) { return (column + row) % 8 < 3; });
}

Pattern dots()
{
    return patternOf([](unsigned int column, unsigned int row) {
        const unsigned int x = (column + (row / 8 % 2) * 4) % 8;
        return x < 3 && row % 8 < 3;
    });
}

Pattern crosshatch()
{
    return patternOf(
        [](unsigned int column, unsigned int row) { return (column + row) % 16 < 2 || (column + 32 - row) % 16 < 2; });
}

} // namespace Gallery
