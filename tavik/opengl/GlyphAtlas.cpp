#include <tavik/opengl/GlyphAtlas.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <new>

namespace Tavik::OpenGL {

namespace {

constexpr int AtlasWidth = 1024;
constexpr int MaximumAtlasHeight = 4096;

// Metrics of damaged fonts may be anything; beyond this all are alike, and sums of them stay small.
constexpr FT_Pos MaximumMetric = 8192;

// The same hinting for all fonts, in both passes, so that metrics agree with bitmaps.
constexpr FT_Int32 LoadFlags = FT_LOAD_FORCE_AUTOHINT;

// FreeType counts in 64ths of a pixel.
constexpr float PixelsPerUnit = 1.0f / 64.0f;

FT_Library freeType = nullptr; // for the life of the process
bool isFreeTypeReady = false;

struct FaceDeleter
{
    void operator()(FT_Face face) const { FT_Done_Face(face); }
};
using Face = std::unique_ptr<FT_FaceRec_, FaceDeleter>;

struct Slot
{
    int x = 0;
    int row = 0;
    bool fits = false; // a row of the atlas, and its height
};

struct Layout
{
    std::array<Slot, FontType::GlyphCount> slots;
    int tallest = 0;
    int rowBreaks = 0;
    int endX = 0;

    int wantedHeight(int spread) const
    {
        return rowBreaks > 0 ? (tallest + spread) * (rowBreaks + 1) + spread : 2 * spread + tallest;
    }
};

int wholePixels(FT_Pos metric)
{
    return static_cast<int>(std::clamp<FT_Pos>(metric / 64, 0, MaximumMetric));
}

FT_ULong codeOf(std::size_t index)
{
    return static_cast<FT_ULong>(FontType::FirstCode + index);
}

Face openFace(const char* data, int dataSize)
{
    FT_Face face = nullptr;
    const FT_Error error =
        FT_New_Memory_Face(freeType, reinterpret_cast<const FT_Byte*>(data), std::max(dataSize, 0), 0, &face);
    if (error != 0) {
        std::printf("FT_New_Memory_Face failed %d ! \n", error);
        return nullptr;
    }
    return Face(face);
}

bool setSize(FT_Face face, int pixelSize)
{
    if (FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(pixelSize)) != 0) {
        std::printf("FT_Set_Pixel_Sizes failed !");
        return false;
    }
    return true;
}

Layout layOutGlyphs(FT_Face face, int spread)
{
    Layout layout;
    int x = spread;
    for (std::size_t i = 0; i < layout.slots.size(); ++i) {
        Slot& slot = layout.slots[i];
        slot = {x, layout.rowBreaks, false};
        if (FT_Load_Glyph(face, FT_Get_Char_Index(face, codeOf(i)), LoadFlags) != 0) {
            std::printf("FT_Load_Glyph failed!");
            continue;
        }
        const int width = wholePixels(face->glyph->metrics.width);
        const int height = wholePixels(face->glyph->metrics.height);
        if (width + 3 * spread >= AtlasWidth || height + 2 * spread > MaximumAtlasHeight) {
            continue;
        }
        if (x + width + 2 * spread >= AtlasWidth) {
            ++layout.rowBreaks;
            x = spread;
        }
        slot = {x, layout.rowBreaks, true};
        x += width + 2 * spread;
        layout.tallest = std::max(layout.tallest, height);
    }
    layout.endX = x;
    return layout;
}

// The layout of the largest size whose atlas is not too high.
bool layOutLargest(FT_Face face, const GlyphAtlasSettings& settings, FontType& font, Layout& layout)
{
    for (int size = settings.pixelSize;; size = std::max(size * 7 / 8, settings.smallestSize)) {
        if (!setSize(face, size)) {
            return false;
        }
        font.pixelSize = size;
        layout = layOutGlyphs(face, settings.spread);
        if (size <= settings.smallestSize || layout.wantedHeight(settings.spread) <= MaximumAtlasHeight) {
            return true;
        }
    }
}

GlyphAtlas allocateAtlas(const Layout& layout, int spread)
{
    GlyphAtlas atlas;
    atlas.width = layout.rowBreaks > 0 ? AtlasWidth : atlasSideFor(layout.endX);
    atlas.height = atlasSideFor(layout.wantedHeight(spread));
    atlas.pixels.reset(new (std::nothrow) unsigned char[atlas.pixelCount()]());
    if (atlas.pixels == nullptr) {
        std::printf("pixelData: out of memory");
    }
    return atlas;
}

struct AtlasPosition
{
    int x;
    int y;
};

// Where the lower left pixel of a glyph's bitmap lies; grey and one-bit bitmaps keep different places in their slots.
AtlasPosition bitmapPosition(const Slot& slot, bool isGrey, int tallest, int spread)
{
    return isGrey ? AtlasPosition{slot.x, spread + slot.row * (tallest + spread)}
                  : AtlasPosition{slot.x + spread, slot.row * (tallest + 2 * spread)};
}

unsigned char coverage(const FT_Bitmap& bitmap, unsigned int x, unsigned int row)
{
    const unsigned char* pixels = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
    if (bitmap.pixel_mode == FT_PIXEL_MODE_GRAY) {
        return pixels[x];
    }
    return (pixels[x / 8] >> (7 - x % 8) & 1) != 0 ? 255 : 0;
}

void copyBitmap(const FT_Bitmap& bitmap, AtlasPosition position, GlyphAtlas& atlas)
{
    const std::size_t last = atlas.pixelCount() - 1;
    const auto width = static_cast<std::size_t>(atlas.width);
    const std::size_t start = static_cast<std::size_t>(position.x) + width * static_cast<std::size_t>(position.y);
    for (unsigned int row = 0; row < bitmap.rows; ++row) {
        const std::size_t rowStart = start + width * (bitmap.rows - 1 - row);
        for (unsigned int x = 0; x < bitmap.width; ++x) {
            atlas.pixels[std::min(rowStart + x, last)] = coverage(bitmap, x, row);
        }
    }
}

GlyphRecord recordOf(FT_GlyphSlot glyph, const Slot& slot, int tallest, int spread, const GlyphAtlas& atlas)
{
    const auto width = static_cast<float>(atlas.width);
    const auto height = static_cast<float>(atlas.height);
    GlyphRecord record;
    record.top = static_cast<float>(glyph->bitmap_top);
    record.advance = static_cast<float>(glyph->advance.x) * PixelsPerUnit;
    record.bearingX = static_cast<float>(glyph->metrics.horiBearingX) * PixelsPerUnit;
    record.bearingY = static_cast<float>(glyph->metrics.horiBearingY) * PixelsPerUnit;
    record.width = static_cast<float>(glyph->bitmap.width);
    record.rows = static_cast<float>(glyph->bitmap.rows);
    record.u0 = static_cast<float>(slot.x - spread) / width;
    record.t0 = static_cast<float>(slot.row * (tallest + spread)) / height;
    record.u1 = record.u0 + (record.width + static_cast<float>(2 * spread)) / width;
    record.t1 = record.t0 + (record.rows + static_cast<float>(2 * spread)) / height;
    return record;
}

// What is drawn of a glyph: the bitmap where it really lies and a margin of its border, as far as the atlas reaches.
void setDrawnPart(GlyphRecord& record, FT_GlyphSlot glyph, AtlasPosition position, int margin, const GlyphAtlas& atlas)
{
    const int left = std::max(position.x - margin, 0);
    const int bottom = std::max(position.y - margin, 0);
    const int right = std::min(position.x + static_cast<int>(glyph->bitmap.width) + margin, atlas.width);
    const int top = std::min(position.y + static_cast<int>(glyph->bitmap.rows) + margin, atlas.height);
    if (left >= right || bottom >= top) {
        return;
    }
    const auto point = [](int x, int y) { return Math::Vector2<float>(static_cast<float>(x), static_cast<float>(y)); };
    const int penX = position.x - glyph->bitmap_left;
    const int penY = position.y + static_cast<int>(glyph->bitmap.rows) - glyph->bitmap_top;
    record.corners = {point(left - penX, bottom - penY), point(right - penX, bottom - penY),
                      point(right - penX, top - penY), point(left - penX, top - penY)};
    const auto width = static_cast<float>(atlas.width);
    const auto height = static_cast<float>(atlas.height);
    record.texture = {Math::Vector2<float>(static_cast<float>(left) / width, static_cast<float>(bottom) / height),
                      Math::Vector2<float>(static_cast<float>(right) / width, static_cast<float>(top) / height)};
}

// Whether a bitmap is of a kind and size that the layout reckoned with.
bool isDrawable(const FT_Bitmap& bitmap, AtlasPosition position, const GlyphAtlas& atlas)
{
    const bool isKnown = bitmap.pixel_mode == FT_PIXEL_MODE_GRAY || bitmap.pixel_mode == FT_PIXEL_MODE_MONO;
    return isKnown && bitmap.buffer != nullptr && bitmap.width > 0 && bitmap.rows > 0 &&
           position.x + static_cast<std::int64_t>(bitmap.width) <= atlas.width && position.y < atlas.height &&
           bitmap.rows <= MaximumAtlasHeight;
}

void rasterGlyphs(FT_Face face, const Layout& layout, const GlyphAtlasSettings& settings, FontType& font,
                  GlyphAtlas& atlas)
{
    for (std::size_t i = 0; i < layout.slots.size(); ++i) {
        const Slot& slot = layout.slots[i];
        // Whole rows of huge glyphs may lie above the atlas: FreeType tells their sizes without drawing them.
        const bool isInAtlas = slot.row * (layout.tallest + settings.spread) < atlas.height;
        const FT_Int32 flags = slot.fits && isInAtlas ? LoadFlags | FT_LOAD_RENDER : LoadFlags;
        if (FT_Load_Char(face, codeOf(i), flags) != 0) {
            continue; // the first pass has said so
        }
        const FT_GlyphSlot glyph = face->glyph;
        if (!slot.fits) {
            glyph->bitmap = {};
        }
        font.glyphs[i] = recordOf(glyph, slot, layout.tallest, settings.spread, atlas);
        const bool isGrey = glyph->bitmap.pixel_mode == FT_PIXEL_MODE_GRAY;
        const AtlasPosition position = bitmapPosition(slot, isGrey, layout.tallest, settings.spread);
        if (isDrawable(glyph->bitmap, position, atlas)) {
            copyBitmap(glyph->bitmap, position, atlas);
            setDrawnPart(font.glyphs[i], glyph, position, settings.margin, atlas);
        }
    }
}

} // namespace

GlyphAtlas makeGlyphAtlas(const char* data, int dataSize, const GlyphAtlasSettings& settings, FontType& font)
{
    font = FontType();
    if (!initFreeType()) {
        return {};
    }
    const Face face = openFace(data, dataSize);
    Layout layout;
    if (face == nullptr || !layOutLargest(face.get(), settings, font, layout)) {
        return {};
    }
    GlyphAtlas atlas = allocateAtlas(layout, settings.spread);
    if (atlas.pixels != nullptr) {
        font.lineHeight = static_cast<double>(face->size->metrics.height) / 64.0;
        rasterGlyphs(face.get(), layout, settings, font, atlas);
    }
    return atlas;
}

bool initFreeType()
{
    if (!isFreeTypeReady) {
        isFreeTypeReady = FT_Init_FreeType(&freeType) == 0;
        std::printf(isFreeTypeReady ? "INIT Freetype done" : "init freetype failed !");
    }
    return isFreeTypeReady;
}

int atlasSideFor(int value)
{
    int side = 1;
    while (side < value && side < MaximumAtlasHeight) {
        side *= 2;
    }
    return side;
}

} // namespace Tavik::OpenGL
