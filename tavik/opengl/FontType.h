#pragma once

#include <tavik/math/Vector2.h>

#include <array>
#include <string>

namespace Tavik::OpenGL {

/// A glyph in the atlas of a texture font. Lengths are pixels of the atlas, y up; texture coordinates are 0 to 1, and
/// t grows upwards in the glyph.
struct GlyphRecord
{
    /// @{
    /// The glyph's slot with the whole border around it, as slots are laid out for grey bitmaps. Slots in neighbouring
    /// rows share their borders; what is drawn is texture below.
    float u0 = 0.0f;
    float t0 = 0.0f;
    float u1 = 0.0f;
    float t1 = 0.0f;
    /// @}

    float top = 0.0f;      ///< of the bitmap, above the baseline
    float advance = 0.0f;  ///< to the next glyph's pen
    float bearingX = 0.0f; ///< from the pen to the left edge of the bitmap
    float bearingY = 0.0f; ///< from the baseline up to the top of the bitmap
    float width = 0.0f;    ///< of the bitmap
    float rows = 0.0f;     ///< of the bitmap

    /// What is drawn, measured from the pen on the baseline: lower left, lower right, upper right, upper left; all
    /// zero for a glyph without ink.
    std::array<Math::Vector2<float>, 4> corners;

    /// Texture coordinates of the lower left and the upper right corner: the bitmap and the part of its border that
    /// no other glyph reaches.
    std::array<Math::Vector2<float>, 2> texture;

    /// Whether anything is drawn.
    bool hasInk() const { return corners[0].x < corners[2].x; }
};

/// A face with its atlas, shared by all objects that loaded it.
struct FontType
{
    /// @{
    /// The range of the fonts: the printable part of Latin-1, with a gap that fonts fill as they like (127 to 159).
    static constexpr unsigned int FirstCode = 32;
    static constexpr unsigned int GlyphCount = 224;
    /// @}

    unsigned int texture = 0;                   ///< OpenGL's name of the atlas, 0 for none
    std::array<GlyphRecord, GlyphCount> glyphs; ///< by character code - FirstCode
    double lineHeight = 0.0;                    ///< recommended distance of baselines, pixels of the atlas
    int pixelSize = 0;                          ///< size of the font in the atlas

    /// The glyph that a byte of text draws; control characters are drawn as spaces.
    const GlyphRecord& glyph(char byte) const
    {
        const unsigned int code = static_cast<unsigned char>(byte);
        return glyphs[code < FirstCode ? 0 : code - FirstCode];
    }

    /// Sum of the advances of a text's glyphs, pixels of the atlas.
    float width(const std::string& text) const
    {
        float sum = 0.0f;
        for (const char byte : text) {
            sum += glyph(byte).advance;
        }
        return sum;
    }
};

} // namespace Tavik::OpenGL
