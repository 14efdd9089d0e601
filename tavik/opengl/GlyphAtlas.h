#pragma once

#include <tavik/opengl/FontType.h>

#include <cstddef>
#include <memory>

namespace Tavik::OpenGL {

/// How an atlas is to be made.
struct GlyphAtlasSettings
{
    int pixelSize;    ///< of the font; FreeType's em in pixels
    int smallestSize; ///< where the atlas would be too high, smaller sizes are tried down to this one
    int spread;       ///< empty border around every glyph, pixels
    int margin;       ///< how much of the border is drawn with the glyph, at most half of it
};

/// Coverage of all glyphs of a face, 0 to 255 for each pixel, the bottom row of the texture first.
struct GlyphAtlas
{
    std::unique_ptr<unsigned char[]> pixels; ///< null where the face could not be read, which has been printed
    int width = 0;                           ///< at most 1024
    int height = 0;                          ///< at most 4096

    std::size_t pixelCount() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
};

/// Rasterises the glyphs of a face and fills everything of font but its texture.
///
/// Slots run in rows from the lower left. What does not fit an atlas of 4096 rows, and glyphs that do not fit a row,
/// are not drawn; they keep their metrics. Failures are printed. Nothing refers to the data afterwards.
/// @param data  contents of a font file; dataSize below 1 is as good as none
GlyphAtlas makeGlyphAtlas(const char* data, int dataSize, const GlyphAtlasSettings& settings, FontType& font);

/// Initialises FreeType for the process and prints how that went; nothing when it has been done.
/// @return whether FreeType is there
bool initFreeType();

/// Smallest power of two that is not below the value; 1 for values below 2, 4096 for all above 2048.
int atlasSideFor(int value);

} // namespace Tavik::OpenGL
