#pragma once

#include <png.h>

#include <cstdio>

// The calls of libpng that may fail. libpng leaves them with longjmp, which passes no destructors: so these functions,
// and all that they call, hold plain data only.

namespace Tavik::Image {

/// libpng's objects for one file; released by its owner with releasePngDecoder().
struct PngDecoder
{
    std::FILE* file;
    png_structp png;
    png_infop info;
    png_uint_32 width;
    png_uint_32 height;
    int colorType;         // PNG_COLOR_TYPE_…, after palettes have become colours
    int passCount;         // more than one when interlaced
    unsigned char* pixels; // RGBA, allocated with malloc
};

/// What libpng's calls until the pixels came to.
enum class PngSetUp
{
    Done,
    NoReadStructure,
    NoInfoStructure,
    Failed
};

/// Reads everything before the pixels, and has libpng make 8-bit RGBA of them where it can.
/// @param decoder  with the file open behind its signature of 8 bytes, and null otherwise
PngSetUp setUpPngDecoder(PngDecoder& decoder);

/// Reads all pixels of a picture in colour, and the rest of the file.
/// @return whether there was memory, every pixel was read and nothing is missing behind them
bool readPngPixels(PngDecoder& decoder);

/// Releases everything but the file; null is allowed anywhere.
void releasePngDecoder(PngDecoder& decoder);

} // namespace Tavik::Image
