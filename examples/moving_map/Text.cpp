#include <moving_map/Text.h>

#include <moving_map/Latin1.h>
#include <support/Fonts.h>

namespace MovingMap {

namespace {

using Tavik::OpenGL::TextureFontSdf;

constexpr float CapitalHeight = 0.73f; // of the em, as sans-serif fonts have it

// Even at 13 pixels, and wide enough to stand against any terrain.
constexpr float OutlineWidth = 0.22f;

constexpr int AnySize = 13; // pixels; set for each text

// Bold strokes stay legible at the sizes of a map.
void load(TextureFontSdf& font)
{
    font.load(Tavik::Support::sansBoldFontPath(), AnySize);
}

TextureFontSdf makeRuler()
{
    TextureFontSdf font;
    load(font);
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
        load(mFont);
    }
    Tavik::Math::Matrix4<float> place;
    place.translate(anchor.x, anchor.y - 0.5f * height(size), 0.0f);
    mFont.setSize(size);
    mFont.addText(toLatin1(text), place,
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
    static TextureFontSdf ruler = makeRuler();
    ruler.setSize(size);
    return static_cast<float>(ruler.calcTextWidth(toLatin1(text)));
}

float TextBatch::height(int size)
{
    return CapitalHeight * static_cast<float>(size);
}

} // namespace MovingMap
