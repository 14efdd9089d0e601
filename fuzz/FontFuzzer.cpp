// Font files: rasterises the atlas of a font and lays out a text with it, all that fonts do before they draw.
//
// The last byte of the input chooses between the atlas of TextureFont and that of TextureFontSdf.

#include <fuzz/Require.h>
#include <tavik/opengl/DistanceField.h>
#include <tavik/opengl/GlyphAtlas.h>
#include <tavik/opengl/TextQuads.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

using namespace Tavik::OpenGL;
using Tavik::Fuzz::require;

namespace {

constexpr GlyphAtlasSettings Coverage = {12, 12, 4, 1};
constexpr GlyphAtlasSettings Distances = {50, 50, 14, 7};

// A distance field of the largest atlas takes most of a second under the sanitizers.
constexpr std::size_t LargestField = std::size_t{128} * 1024;

bool isInside(Tavik::Math::Vector2<float> texture)
{
    return texture.x >= 0.0f && texture.x <= 1.0f && texture.y >= 0.0f && texture.y <= 1.0f;
}

void checkGlyph(const GlyphRecord& glyph)
{
    require(std::isfinite(glyph.advance) && std::isfinite(glyph.bearingX) && std::isfinite(glyph.bearingY));
    if (glyph.hasInk()) {

        require(isInside(glyph.texture[0]) && isInside(glyph.texture[1]));
        require(glyph.texture[0].x < glyph.texture[1].x && glyph.texture[0].y < glyph.texture[1].y);
    }
}

void layOut(const FontType& font)
{
    std::string text;
    for (int code = 0; code < 256; ++code) {
        text += static_cast<char>(code);
    }
    TextQuads quads;
    for (int alignment = 0; alignment < 9; ++alignment) {
        quads.add(font, text, {{}, 1.5f, alignment, alignment % 2 == 0});
    }
    require(quads.isEmpty() == (quads.indexCount() == 0));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const bool wantsDistances = size > 0 && data[size - 1] % 4 == 3;
    const GlyphAtlasSettings& settings = wantsDistances ? Distances : Coverage;
    FontType font;
    GlyphAtlas atlas = makeGlyphAtlas(reinterpret_cast<const char*>(data), static_cast<int>(size), settings, font);
    if (atlas.pixels == nullptr) {
        return 0;
    }
    require(atlas.width > 0 && atlas.width <= 1024 && atlas.height > 0 && atlas.height <= 4096);
    require(std::isfinite(font.lineHeight) && font.pixelSize > 0);
    std::for_each(font.glyphs.begin(), font.glyphs.end(), checkGlyph);
    layOut(font);
    if (wantsDistances && atlas.pixelCount() <= LargestField) {
        unsigned char* pixels = atlas.pixels.get();
        sdfBuildDistanceField(pixels, atlas.width, 8.0f, pixels, atlas.width, atlas.height, atlas.width);
    }
    return 0;
}
