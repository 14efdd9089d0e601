#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Tavik::Support {

/// A picture of 8-bit red, green, blue and alpha, rows from top to bottom.
///
///     Picture picture = window.readPicture();
///     picture.writePng("map.png");
class Picture
{
public:
    using Pixel = std::array<std::uint8_t, 4>;

    Picture() = default;

    /// A picture of one colour.
    /// @param widthPixels,heightPixels  negative sizes count as zero
    Picture(int widthPixels, int heightPixels, Pixel color = {0, 0, 0, 255});

    int width() const { return mWidth; }
    int height() const { return mHeight; }

    /// @param x,y  column from the left and row from the top, both inside the picture
    Pixel pixel(int x, int y) const;
    void setPixel(int x, int y, Pixel color);

    /// width × height × 4 bytes.
    std::uint8_t* data() { return mBytes.data(); }
    const std::uint8_t* data() const { return mBytes.data(); }

    /// Swaps top and bottom; OpenGL reads pixels bottom row first.
    void flipRows();

    /// Writes a PNG file of 8-bit RGBA.
    /// @return false when the picture is empty or the file cannot be written
    bool writePng(const std::string& path) const;

private:
    std::size_t offset(int x, int y) const;

    int mWidth = 0;
    int mHeight = 0;
    std::vector<std::uint8_t> mBytes;
};

/// What sets two pictures apart.
struct PictureDifference
{
    std::size_t pixelsOver = 0; ///< pixels with at least one channel over the tolerance
    int largest = 0;            ///< the greatest difference of any channel, 0 to 255
    Picture picture;            ///< differing pixels white on black; empty when the sizes differ
};

/// Compares two pictures pixel by pixel.
/// @param tolerance  difference of a channel that still counts as equal, 0 to 255
/// @return for pictures of different size, every pixel of the larger one counts as over the tolerance
PictureDifference comparePictures(const Picture& a, const Picture& b, int tolerance);

} // namespace Tavik::Support
