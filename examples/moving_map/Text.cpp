#include <moving_map/Text.h>

#include <support/Fonts.h>
#include <tavik/opengl/TextureFont.h>

#include <GL/gl.h>

#include <fstream>
#include <iterator>

namespace MovingMap {

namespace {

using Tavik::OpenGL::FontType;
using Tavik::OpenGL::TextureFontSdf;

constexpr float CapitalHeight = 0.73f; // of the em, as sans-serif fonts have it

// Even at 13 pixels, and wide enough to stand against any terrain.
constexpr float OutlineWidth = 0.22f;

// Bold strokes stay legible at the sizes of a map.

/// Advances of the font's glyphs.
FontType measureFont()
{
    FontType font;
    std::ifstream file(Tavik::Support::sansBoldFontPath(), std::ios::binary);
    const std::string data{std::istreambuf_iterator<char>(file), {}};
    if (!data.empty()) {
        // The plain font measures glyphs the same and computes no distance field.
        const unsigned int atlas =
            Tavik::OpenGL::TextureFont().createGlyphTexture(data.data(), static_cast<int>(data.size()), font);
        glDeleteTextures(1, &atlas);
    }
    return font;
}

} // namespace

TextBatch::TextBatch(Color color)
{
    mFont.setColor(color);
    mFont.setOutlineColor(Palette::Halo);
    mFont.setOutlineWidth(OutlineWidth);
}

void TextBatch::clear()
{
    if (!mIsEmpty) {
        mFont.clearVertex();
        mIsEmpty = true;
    }
}

void TextBatch::add(const std::string& text, Pixel anchor, int size, TextAlign align)
{
    if (!mIsLoaded) {
        mIsLoaded = true;
        mFont.load(Tavik::Support::sansBoldFontPath(), size);
    }
    Tavik::Math::Matrix4<float> place;
    place.translate(anchor.x, anchor.y - 0.5f * height(size), 0.0f);
    mFont.setSize(size);
    mFont.addText(text, place,
                  align == TextAlign::Left     ? TextureFontSdf::BottomLeft
                  : align == TextAlign::Centre ? TextureFontSdf::BottomCenter
                                               : TextureFontSdf::BottomRight);
    mIsEmpty = false;
}

void TextBatch::render()
{
    if (!mIsEmpty) {
        mFont.render();
    }
}

float TextBatch::width(const std::string& text, int size)
{
    static const FontType font = measureFont();
    float advance = 0.0f;
    for (const char byte : text) {
        advance += font.glyph(byte).advance;
    }
    return font.pixelSize == 0 ? 0.0f : advance * static_cast<float>(size) / static_cast<float>(font.pixelSize);
}

float TextBatch::height(int size)
{
    return CapitalHeight * static_cast<float>(size);
}

} // namespace MovingMap
