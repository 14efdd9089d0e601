#include <tavik/opengl/TextureFont.h>

#include <tavik/opengl/CoverageTexture.h>
#include <tavik/opengl/FontFile.h>
#include <tavik/opengl/FontRegistry.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/GlyphAtlas.h>
#include <tavik/opengl/StandardPrograms.h>
#include <tavik/opengl/TextDrawing.h>

#include <algorithm>
#include <vector>

namespace Tavik::OpenGL {

namespace {

constexpr int NoFont = -1;

// Within these the glyphs are rasterised at the size of the text; larger ones would not fit an atlas anyway.
constexpr int SmallestAtlasSize = 1;
constexpr int LargestAtlasSize = 200;

// Where an atlas would be too high, it is made for a smaller text; below this it would not help.
constexpr int SmallestFittedSize = 32;

// Linear filters read one pixel beyond a bitmap; as much again keeps glyphs apart.
constexpr int Spread = 4;
constexpr int Margin = 1;

int atlasPixelSize(int size)
{
    return std::clamp(size, SmallestAtlasSize, LargestAtlasSize);
}

// A face is rasterised once for each size.
std::string registeredName(const char* name, int size)
{
    return std::string(name == nullptr ? "" : name) + '\n' + std::to_string(atlasPixelSize(size));
}

FontRegistry& registry()
{
    static FontRegistry fonts;
    return fonts;
}

} // namespace

TextureFont::~TextureFont() = default;

bool TextureFont::init()
{
    return initFreeType();
}

bool TextureFont::load(const char* fileName, int size)
{
    std::vector<char> contents;
    if (!registry().isLoaded(registeredName(fileName, size)) && !readFontFile(fileName, contents)) {
        mFontId = NoFont;
        clearVertex();
        return false;
    }
    return loadData(fileName, contents.data(), static_cast<int>(contents.size()), size);
}

bool TextureFont::loadData(const char* name, const char* data, int dataSize, int size)
{
    setSize(size);
    const int id = registry().idOf(registeredName(name, size));
    FontType& font = *registry().find(id);
    if (id != mFontId) {
        clearVertex();
    }
    if (font.texture == 0) {
        createGlyphTexture(data, dataSize, font);
    }
    mFontId = id;
    return font.texture != 0;
}

void TextureFont::setSize(int size)
{
    mSize = size;
}

unsigned int TextureFont::createGlyphTexture(const char* data, int dataSize, FontType& font)
{
    const int size = atlasPixelSize(mSize);
    const GlyphAtlasSettings settings = {size, std::min(size, SmallestFittedSize), Spread, Margin};
    const GlyphAtlas atlas = makeGlyphAtlas(data, dataSize, settings, font);
    if (atlas.pixels == nullptr) {
        return 0;
    }
    clear();
    font.texture = createAlphaTexture(atlas.pixels.get(), atlas.width, atlas.height);
    return font.texture;
}

unsigned int TextureFont::createAlphaTexture(const unsigned char* pixels, int width, int height)
{
    return createCoverageTexture(pixels, width, height);
}

int TextureFont::nextPower2(int value)
{
    return atlasSideFor(value);
}

double TextureFont::calcTextWidth(const std::string& text) const
{
    const FontType* font = registry().find(mFontId);
    return font == nullptr || font->texture == 0 ? 0.0 : static_cast<double>(scaleOf(*font) * font->width(text));
}

void TextureFont::addText(const std::string& text, Math::Matrix4<float> transform, Alignment alignment)
{
    add(mQuads, text, transform, alignment);
}

void TextureFont::setData()
{
    mQuads.upload();
}

void TextureFont::render()
{
    draw(mQuads, {0.0f, 0.0f, 0.0f}, "void Tavik::OpenGL::TextureFont::render()");
}

void TextureFont::renderFont(double x, double y, const std::string& text, Alignment alignment)
{
    mImmediateQuads.clearVertex();
    add(mImmediateQuads, text, {}, alignment);
    draw(mImmediateQuads, {static_cast<float>(x), static_cast<float>(y), 0.0f},
         "void Tavik::OpenGL::TextureFont::renderFont(double, double, const std::string &, Alignment)");
}

void TextureFont::renderFont(const std::string& text, Alignment alignment)
{
    renderFont(0.0, 0.0, text, alignment);
}

void TextureFont::clearVertex()
{
    mQuads.clearVertex();
}

void TextureFont::clear()
{
    mQuads.clear();
    mImmediateQuads.clear();
}

unsigned int TextureFont::texture() const
{
    const FontType* font = registry().find(mFontId);
    return font == nullptr ? 0 : font->texture;
}

float TextureFont::scaleOf(const FontType& font) const
{
    return static_cast<float>(mSize) / static_cast<float>(font.pixelSize);
}

void TextureFont::add(TextQuads& quads, const std::string& text, const Math::Matrix4<float>& transform,
                      Alignment alignment)
{
    const FontType* font = registry().find(mFontId);
    if (font != nullptr && font->texture != 0) {
        quads.add(*font, text, {transform, scaleOf(*font), alignment, true});
    }
}

void TextureFont::draw(TextQuads& quads, Math::Vector3<float> offset, const char* where)
{
    GlHandler::clearError();
    if (quads.isEmpty() || texture() == 0 || !GlHandler::instance().isLoaded()) {
        return;
    }
    if (quads.isDirty()) {
        quads.upload();
    }
    GlHandler::checkError("TextureFont", where); // setting uniforms would drop the errors of the upload
    const TextDrawing drawing(TextureFontProgram, texture(), offset);
    TextDrawing::draw(quads, mColor);
    GlHandler::checkError("TextureFont", where);
}

} // namespace Tavik::OpenGL
