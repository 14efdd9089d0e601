#pragma once

#include <tavik/Export.h>

#include <cstdint>
#include <string>

namespace Tavik::Image {

/// Reads PNG files (ISO/IEC 15948) into 8-bit RGBA, with libpng.
///
///     PngReader::ImageRGBA image;
///     if (PngReader::readFileRGBA("symbol.png", image)) {
///         texture.load(image.data, image.width, image.height, GL_RGBA);
///         std::free(image.data);
///     }
///
/// Safe from any thread.
class TAVIK_API PngReader
{
public:
    /// A decoded picture.
    struct ImageRGBA
    {
        std::uint32_t width = 0;       ///< pixels
        std::uint32_t height = 0;      ///< pixels
        unsigned char* data = nullptr; ///< width × height × 4 bytes, top row first; to be released with std::free
    };

    /// Decodes a file.
    ///
    /// Colour (with or without alpha) and palettes are read, of any depth and interlaced or not. Samples of 16 bits
    /// are rounded to 8. Only a picture with an alpha channel has transparency: palettes and pictures with one
    /// transparent colour come out opaque, alpha 255. Gamma and colour profiles are not applied.
    ///
    /// What fails is printed to standard output, except that the file cannot be opened:
    ///
    /// - no PNG, or shorter than its signature: "[read_png_file] File \<path> is not recognized as a PNG file"
    /// - libpng cannot be started: "[read_png_file] png_create_read_struct failed" or
    ///   "[read_png_file] png_create_info_struct failed"
    /// - damage before the pixels, more than 2²⁸ pixels or a million to a side: "[read_png_file] Error during init_io"
    /// - damaged or missing pixels, a file cut before its end, no memory:
    ///   "[read_png_file] Error during read_image \<path>"
    /// - a grey picture: "wrong file format 0", with alpha "wrong file format 4"
    ///
    /// @param path   the file
    /// @param image  receives the picture; left alone on failure
    /// @return whether the picture was decoded
    static bool readFileRGBA(const std::string& path, ImageRGBA& image);

    /// Decodes nothing: prints "read PNG Data <address of image>" and leaves the image alone.
    /// @return true
    static bool readDataRGBA(const unsigned char* data, ImageRGBA& image);
};

} // namespace Tavik::Image
