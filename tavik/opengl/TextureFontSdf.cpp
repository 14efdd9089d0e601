#include <tavik/opengl/TextureFontSdf.h>

#include <tavik/opengl/AtlasField.h>
#include <tavik/opengl/CoverageTexture.h>
#include <tavik/opengl/FontFile.h>
#include <tavik/opengl/FontRegistry.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/GlyphAtlas.h>
#include <tavik/opengl/RingDistance.h>
#include <tavik/opengl/StandardPrograms.h>
#include <tavik/opengl/TextDrawing.h>

#include <vector>

namespace Tavik::OpenGL {

namespace {

constexpr int NoFont = -1;

constexpr int Spread = 14; // pixels of the atlas

// One size serves all: much smaller, and thin strokes melt; much larger, and the atlas outgrows small graphics cards.
constexpr int AtlasPixelSize = 50;

constexpr float FieldRadius = 8.0f; // pixels of the atlas

// From here on the program draws an outline.
constexpr float NarrowestOutline = 0.001f;

FontRegistry& registry()
{
    static FontRegistry fonts;
    return fonts;
}

} // namespace

TextureFontSdf::~TextureFontSdf() = default;

bool TextureFontSdf::init()
{
    return initFreeType();
}

bool TextureFontSdf::load(const char* fileName, int size)
{
    std::vector<char> contents;
    const bool isKnown = fileName != nullptr && registry().isLoaded(fileName);
    if (!isKnown && !readFontFile(fileName, contents)) {
        mFontId = NoFont;
        clearVertex();
        return false;
    }
    return loadData(fileName, contents.data(), static_cast<int>(contents.size()), size);
}

bool TextureFontSdf::loadData(const char* name, const char* data, int dataSize, int size)
{
    mSpread = Spread;
    const int id = registry().idOf(name == nullptr ? "" : name);
    FontType& font = *registry().find(id);
    if (id != mFontId) {
        clearVertex();
    }
    if (font.texture == 0) {
        createGlyphTexture(data, dataSize, font);
    }
    mFontId = id;
    setSize(size);
    return font.texture != 0;
}

void TextureFontSdf::setSize(int size)
{
    mScale = static_cast<float>(size) / static_cast<float>(AtlasPixelSize);
}

unsigned int TextureFontSdf::createGlyphTexture(const char* data, int dataSize, FontType& font)
{
    // Half the border is the glyph's own, also towards the next row.
    const GlyphAtlasSettings settings = {AtlasPixelSize, AtlasPixelSize, mSpread, mSpread / 2};
    const GlyphAtlas atlas = makeGlyphAtlas(data, dataSize, settings, font);
    if (atlas.pixels == nullptr) {
        return 0;
    }
    unsigned char* pixels = atlas.pixels.get();
    buildAtlasField(pixels, atlas.width, atlas.height, FieldRadius);
    clear();
    font.texture = createAlphaTexture(pixels, atlas.width, atlas.height);
    return font.texture;
}

unsigned int TextureFontSdf::createAlphaTexture(const unsigned char* pixels, int width, int height)
{
    return createCoverageTexture(pixels, width, height);
}

int TextureFontSdf::nextPower2(int value)
{
    return atlasSideFor(value);
}

double TextureFontSdf::calcTextWidth(const std::string& text) const
{
    const FontType* font = registry().find(mFontId);
    return font == nullptr || font->texture == 0 ? 0.0 : static_cast<double>(mScale * font->width(text));
}

void TextureFontSdf::addText(const std::string& text, Math::Matrix4<float> transform, Alignment alignment)
{
    add(mQuads, text, transform, alignment);
}

void TextureFontSdf::setData()
{
    mQuads.upload();
}

void TextureFontSdf::render()
{
    draw(mQuads, {0.0f, 0.0f, 0.0f}, "void Tavik::OpenGL::TextureFontSdf::render()");
}

void TextureFontSdf::renderFont(double x, double y, const std::string& text, Alignment alignment)
{
    mImmediateQuads.clearVertex();
    add(mImmediateQuads, text, {}, alignment);
    draw(mImmediateQuads, {static_cast<float>(x), static_cast<float>(y), 0.0f},
         "void Tavik::OpenGL::TextureFontSdf::renderFont(double, double, const std::string &, Alignment)");
}

void TextureFontSdf::renderFont(const std::string& text, Alignment alignment)
{
    renderFont(0.0, 0.0, text, alignment);
}

void TextureFontSdf::clearVertex()
{
    mQuads.clearVertex();
}

void TextureFontSdf::clear()
{
    mQuads.clear();
    mImmediateQuads.clear();
}

unsigned int TextureFontSdf::texture() const
{
    const FontType* font = registry().find(mFontId);
    return font == nullptr ? 0 : font->texture;
}

void TextureFontSdf::calcSdf(unsigned char* image, unsigned int width, unsigned int height)
{
    buildRingDistanceField(image, width, height, static_cast<unsigned int>(mSpread));
}

bool TextureFontSdf::getNearest(const unsigned char* image, unsigned int width, unsigned int height, unsigned int x,
                                unsigned int y, unsigned int radius, float& distance)
{
    return nearestByRings(image, width, height, x, y, radius, distance);
}

void TextureFontSdf::add(TextQuads& quads, const std::string& text, const Math::Matrix4<float>& transform,
                         Alignment alignment)
{
    const FontType* font = registry().find(mFontId);
    if (font != nullptr && font->texture != 0) {
        quads.add(*font, text, {transform, mScale, alignment, false});
    }
}

void TextureFontSdf::draw(TextQuads& quads, Math::Vector3<float> offset, const char* where)
{
    GlHandler::clearError();
    if (quads.isEmpty() || texture() == 0 || !GlHandler::instance().isLoaded()) {
        return;
    }
    if (quads.isDirty()) {
        quads.upload();
    }
    GlHandler::checkError("TextureFontSdf", where); // setting uniforms would drop the errors of the upload
    const TextDrawing drawing(TextureFontSdfProgram, texture(), offset);
    GlHandler& gl = GlHandler::instance();
    gl.setFloatVar("outlineColor", mOutlineColor.x, mOutlineColor.y, mOutlineColor.z, mOutlineColor.w);
    gl.setFloatVar("outlineWidth", mOutlineWidth);
    if (mOutlineWidth > NarrowestOutline && mColor.w >= 1.0f) {
        TextDrawing::draw(quads, mOutlineColor);
        GlHandler::checkError("TextureFontSdf", where);
        gl.setFloatVar("outlineWidth", 0.0f);
    }
    TextDrawing::draw(quads, mColor);
    GlHandler::checkError("TextureFontSdf", where);
}

} // namespace Tavik::OpenGL
