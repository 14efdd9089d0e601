#include "TextureFontTest.h"

#include <tavik/opengl/TextureFont.h>
#include <tavik/opengl/TextureFontSdf.h>

#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

using namespace Tavik::OpenGL;
using Tavik::Math::Matrix4;
using Tavik::Support::Picture;
using Tavik::Support::sansFontPath;

namespace {

std::vector<char> fontData()
{
    std::ifstream file(sansFontPath(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Atlas
{
    explicit Atlas(unsigned int texture)
    {
        glBindTexture(GL_TEXTURE_2D, texture);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
        texels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RED, GL_UNSIGNED_BYTE, texels.data());
        glBindTexture(GL_TEXTURE_2D, 0);
    }

    int at(int x, int y) const
    {
        return texels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }

    int width = 0;
    int height = 0;
    std::vector<unsigned char> texels;
};

// What a bitmap font of 50 pixels needs: 'A' is a block of 20 x 30, 'B' one of 12 x 40 that hangs 8 below the baseline.
std::string bitmapFont()
{
    const auto glyph = [](const std::string& code, const std::string& box, int rows, const std::string& row) {
        std::string text =
            "STARTCHAR c" + code + "\nENCODING " + code + "\nSWIDTH 500 0\nDWIDTH 25 0\nBBX " + box + "\nBITMAP\n";
        for (int i = 0; i < rows; ++i) {
            text += row + "\n";
        }
        return text + "ENDCHAR\n";
    };
    return "STARTFONT 2.1\nFONT -t-t-medium-r-normal--50-500-72-72-c-250-iso10646-1\nSIZE 50 72 72\n"
           "FONTBOUNDINGBOX 20 40 0 -8\nSTARTPROPERTIES 5\nPIXEL_SIZE 50\nFONT_ASCENT 40\nFONT_DESCENT 10\n"
           "CHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nENDPROPERTIES\nCHARS 2\n" +
           glyph("65", "20 30 2 0", 30, "FFFFF0") + glyph("66", "12 40 3 -8", 40, "FFF0") + "ENDFONT\n";
}

} // namespace

struct FontNames
{
    template <typename Font>
    static std::string GetName(int)
    {
        return std::is_same_v<Font, TextureFont> ? "Coverage" : "Sdf";
    }
};

using FontTypes = ::testing::Types<TextureFont, TextureFontSdf>;
TYPED_TEST_SUITE(TextureFontTest, FontTypes, FontNames);

TYPED_TEST(TextureFontTest, AlignmentsHoldToHalfAPixel)
{
    // H fills its bitmap from the baseline up, so that edges are where the metrics say.
    for (const int size : {12, 24, 40}) {
        TypeParam font = this->loaded(size);
        FontType metrics;
        const std::vector<char> data = fontData();
        font.createGlyphTexture(data.data(), static_cast<int>(data.size()), metrics);
        const GlyphRecord& h = metrics.glyph('H');
        const double scale = double(size) / metrics.pixelSize;
        const double width = 2 * double(h.advance) * scale;
        const double height = double(h.rows) * scale;
        EXPECT_NEAR(font.calcTextWidth("HH"), width, 1e-5);
        EXPECT_EQ(font.calcTextWidth("\n\tH"), font.calcTextWidth("  H"));
        for (int alignment = -1; alignment <= 9; ++alignment) {
            SCOPED_TRACE(testing::Message() << "size " << size << ", alignment " << alignment);
            const int code = alignment < 0 || alignment > 8 ? 2 : alignment;
            const int column = code / 3;
            const double left = 64 - width * column / 2 + double(h.bearingX) * scale;
            const double right = 64 - width * column / 2 + double(h.advance + h.bearingX + h.width) * scale;
            const double bottom = 64 - height * (2 - code % 3) / 2 * (code % 3 == 2 ? 0 : 1);
            font.clearVertex();
            font.addText("HH", moved(64, 64), static_cast<typename TypeParam::Alignment>(alignment));
            const Box box = this->ink(this->drawn([&] { font.render(); }));
            // Edges are found to the pixel whose centre is inside: half a pixel more.
            EXPECT_NEAR(box.left, left, 1.01);
            EXPECT_NEAR(box.right, right, 1.01);
            EXPECT_NEAR(box.bottom, bottom, 1.01);
            EXPECT_NEAR(box.top, bottom + height, 1.01);
            EXPECT_NEAR((box.left + box.right) / 2.0, (left + right) / 2.0, 0.51);
            EXPECT_NEAR((box.bottom + box.top) / 2.0, bottom + height / 2.0, 0.51);
        }
    }
}

TYPED_TEST(TextureFontTest, EdgesAreCrispAtAllSizes)
{
    for (const int size : {8, 12, 16, 24, 50, 100, 160, 200}) {
        TypeParam font = this->loaded(size);
        const Picture text = this->drawn([&] { font.renderFont(2, 64 - size * 0.2, "H", TypeParam::BottomLeft); });
        const int y = 64; // below the bar, through the stems
        int soft = 0;
        int full = 0;
        for (int x = 0; x < this->Size; ++x) {
            const int red = this->at(text, x, y)[0];
            soft += red > 82 && red < 224 ? 1 : 0; // from 15 to 85 per cent
            full += red >= 224 ? 1 : 0;
        }
        EXPECT_LE(soft, 4 * 2 + (size > 150 ? 2 : 0)) << size;
        EXPECT_GE(full + soft, size / 8) << size;
        EXPECT_GT(this->ink(text, 100).right, 0) << size;
    }
}

TYPED_TEST(TextureFontTest, NeighboursInTheAtlasNeverShow)
{
    // The outline, and a pixel of softness each way.
    constexpr double Reach = std::is_same_v<TypeParam, TextureFontSdf> ? 0.2 * 16 + 2.0 : 2.0;
    for (const int size : {50, 75}) {
        TypeParam font = this->loaded(50);
        font.setSize(size);
        for (int code = 33; code < 256; ++code) {
            const std::string text(1, static_cast<char>(code));
            const auto draw = [&] { font.renderFont(20, 40, text, TypeParam::BottomLeft); };
            const Box core = this->ink(this->drawn(draw));
            if constexpr (std::is_same_v<TypeParam, TextureFontSdf>) {
                font.setOutlineWidth(0.2f);
                font.setOutlineColor({1.0f, 1.0f, 1.0f, 1.0f});
            }
            const Box all = this->ink(this->drawn(draw), 10);
            if constexpr (std::is_same_v<TypeParam, TextureFontSdf>) {
                font.setOutlineWidth(0.0f);
            }
            if (core.right < 0) {
                continue; // no-break space, or only faint
            }
            const double reach = Reach * size / 50;
            EXPECT_GE(all.left, core.left - reach) << code << " at " << size;
            EXPECT_GE(all.bottom, core.bottom - reach) << code << " at " << size;
            EXPECT_LE(all.right, core.right + reach) << code << " at " << size;
            EXPECT_LE(all.top, core.top + reach) << code << " at " << size;
        }
    }
}

TYPED_TEST(TextureFontTest, GreyAndOneBitGlyphsAreDrawnWhereTheyStand)
{
    constexpr int Spread = std::is_same_v<TypeParam, TextureFontSdf> ? 14 : 4;
    const std::vector<char> scalable = fontData();
    const std::string data = bitmapFont();
    TypeParam font = this->loaded(50);
    FontType grey;
    FontType oneBit;
    ASSERT_NE(font.createGlyphTexture(scalable.data(), static_cast<int>(scalable.size()), grey), 0u);
    ASSERT_NE(font.createGlyphTexture(data.data(), static_cast<int>(data.size()), oneBit), 0u);

    // The lower left corners of a glyph, one that is full there, by its record.
    for (const auto& [type, byte, height] :
         {std::tuple{&grey, 'H', 0}, {&grey, 'k', 0}, {&grey, '\xDE', 0}, {&oneBit, 'B', 40}, {&oneBit, 'A', 40}}) {
        const Atlas atlas(type->texture);
        const GlyphRecord& glyph = type->glyph(byte);
        const int slotX = static_cast<int>(std::lround(glyph.u0 * float(atlas.width))) + Spread;
        const int slotY = static_cast<int>(std::lround(glyph.t0 * float(atlas.height)));
        const int x = slotX + (height == 0 ? 0 : Spread);
        const int y = height == 0 ? slotY + Spread : slotY / (height + Spread) * (height + 2 * Spread);
        EXPECT_GE(atlas.at(x + 1, y + 1), 128) << byte;
        EXPECT_GE(atlas.at(x + 1, y + int(glyph.rows) - 2), 128) << byte;
        EXPECT_LT(atlas.at(x - 1, y), 128) << byte;
        EXPECT_LT(y == 0 ? 0 : atlas.at(x, y - 1), 128) << byte;
        EXPECT_NEAR(glyph.u1 - glyph.u0, (glyph.width + float(2 * Spread)) / float(atlas.width), 1e-6f) << byte;
        EXPECT_NEAR(glyph.t1 - glyph.t0, (glyph.rows + float(2 * Spread)) / float(atlas.height), 1e-6f) << byte;
    }
    EXPECT_EQ(oneBit.glyph('A').advance, 25.0f);
    EXPECT_EQ(oneBit.glyph('B').top, 32.0f);

    ASSERT_TRUE(font.loadData("blocks", data.data(), static_cast<int>(data.size()), 50));
    for (const auto& [text, expected] : {std::pair{"A", Box{12, 20, 32, 50}}, {"B", Box{13, 12, 25, 52}}}) {
        const Box box = this->ink(this->drawn([&, t = text] { font.renderFont(10, 20, t, TypeParam::BottomLeft); }));
        EXPECT_EQ(box.left, expected.left) << text;
        EXPECT_EQ(box.bottom, expected.bottom) << text;
        EXPECT_EQ(box.right, expected.right) << text;
        EXPECT_EQ(box.top, expected.top) << text;
    }
    // Upright: an L has its foot below.
    TypeParam letters = this->loaded(50);
    const Picture foot = this->drawn([&] { letters.renderFont(10, 20, "L", TypeParam::BottomLeft); });
    EXPECT_GT(this->at(foot, 32, 22)[0], 200);
    EXPECT_LT(this->at(foot, 32, 50)[0], 60);
    if constexpr (std::is_same_v<TypeParam, TextureFont>) { // which rasterises at the size of the text
        testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        EXPECT_FALSE(font.loadData("blocks", data.data(), static_cast<int>(data.size()), 17));
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "FT_Set_Pixel_Sizes failed !");
        testing::internal::CaptureStdout();
    }
}

TYPED_TEST(TextureFontTest, BatchesImmediateTextAndControlCharactersAgree)
{
    TypeParam font = this->loaded(20);
    const Picture expected = this->drawn([&] { font.renderFont(10, 30, "A B", TypeParam::BottomLeft); });
    EXPECT_FALSE(this->isEmpty(expected));
    font.addText("A\tB", moved(10, 30), TypeParam::BottomLeft);
    EXPECT_TRUE(this->samePicture(this->drawn([&] { font.render(); }), expected));
    this->drawn([&] { font.renderFont("other", TypeParam::TopLeft); });
    EXPECT_TRUE(this->samePicture(this->drawn([&] { font.render(); }), expected)) << "the batch is left alone";
    for (int i = 0; i < 32; ++i) {
        MatrixPush();
    }
    const Matrix4<float> before = MatrixGet();
    EXPECT_TRUE(
        this->samePicture(this->drawn([&] { font.renderFont(10, 30, "A B", TypeParam::BottomLeft); }), expected));
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(MatrixGet()[i], before[i]);
    }
    for (int i = 0; i < 32; ++i) {
        MatrixPop();
    }

    // Bindings stay.
    unsigned int texture = 0;
    glGenTextures(1, &texture);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture);
    glActiveTexture(GL_TEXTURE3);
    EXPECT_TRUE(this->samePicture(this->drawn([&] { font.render(); }), expected));
    int unit = 0;
    int bound = 0;
    glGetIntegerv(GL_ACTIVE_TEXTURE, &unit);
    EXPECT_EQ(unit, GL_TEXTURE3);
    glActiveTexture(GL_TEXTURE0);
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(bound, static_cast<int>(texture));
    glDeleteTextures(1, &texture);

    const float bad[] = {std::nanf(""), std::numeric_limits<float>::infinity(), 3e38f};
    for (const float value : bad) {
        Matrix4<float> m;
        m[0] = m[12] = value;
        font.addText("AB", m, TypeParam::BottomRight);
        EXPECT_TRUE(this->samePicture(this->drawn([&] { font.render(); }), expected)) << value;
        this->drawn([&] { font.renderFont(double(value), 0.0, "AB", TypeParam::TopRight); });
    }
}

TYPED_TEST(TextureFontTest, ClearMakesItAsNew)
{
    const auto objectCount = [] {
        int count = 0;
        for (unsigned int name = 1; name < 1000; ++name) {
            count += (glIsBuffer(name) == GL_TRUE ? 1 : 0) + (glIsVertexArray(name) == GL_TRUE ? 1 : 0);
        }
        return count;
    };
    TypeParam font = this->loaded(20);
    const int before = objectCount();
    font.setData();
    this->drawn([&] { font.render(); });
    EXPECT_EQ(objectCount(), before) << "nothing to draw";
    Picture pictures[2];
    for (Picture& picture : pictures) {
        font.addText("Q", moved(20, 20), TypeParam::BottomLeft);
        picture = this->drawn([&] {
            font.render();
            font.renderFont(50, 50, "R", TypeParam::BottomLeft);
        });
        EXPECT_EQ(objectCount(), before + 2 * 4);
        font.clear();
        EXPECT_EQ(objectCount(), before);
        EXPECT_TRUE(this->isEmpty(this->drawn([&] { font.render(); })));
    }
    EXPECT_TRUE(this->samePicture(pictures[0], pictures[1]));

    // Memory is kept when text goes, and serves for as much text again.
    const std::string text = "one hundred and twenty";
    font.addText(text, {}, TypeParam::BottomLeft);
    font.clearVertex();
    const std::size_t allocated = mallinfo2().uordblks; // always 0 with sanitizers
    font.addText(text, {}, TypeParam::MiddleCenter);
    EXPECT_EQ(mallinfo2().uordblks, allocated);
}

TYPED_TEST(TextureFontTest, DamagedFontsDrawNothing)
{
    TypeParam font;
    const auto drawsNothing = [&] {
        font.addText("ABC", moved(20, 20), TypeParam::BottomLeft);
        return this->isEmpty(this->drawn([&] {
            font.render();
            font.renderFont(20, 20, "ABC", TypeParam::BottomLeft);
        }));
    };
    EXPECT_TRUE(drawsNothing()) << "before a font";
    EXPECT_EQ(font.texture(), 0u);
    EXPECT_EQ(font.calcTextWidth("ABC"), 0.0);
    EXPECT_FALSE(font.load("no such file", 20));
    EXPECT_FALSE(font.load(nullptr, 20));
    EXPECT_FALSE(font.load(".", 20));
    EXPECT_TRUE(drawsNothing());

    std::vector<char> data = fontData();
    const auto size = static_cast<int>(data.size());
    struct Case
    {
        const char* name;
        const char* data;
        int size;
    };
    for (const Case& c : {Case{"null", nullptr, size},
                          {"empty", data.data(), 0},
                          {"negative", data.data(), -5},
                          {"short", data.data(), 100},
                          {nullptr, data.data(), 3}}) {
        testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        EXPECT_FALSE(font.loadData(c.name, c.data, c.size, 20));
        EXPECT_EQ(testing::internal::GetCapturedStdout().rfind("FT_New_Memory_Face failed ", 0), 0u) << c.size;
        testing::internal::CaptureStdout();
        EXPECT_TRUE(drawsNothing());
    }

    // The same name with good data, which may go afterwards: other objects that failed with it have the font too.
    TypeParam other;
    ASSERT_TRUE(other.loadData("null", data.data(), size, 20));
    std::fill(data.begin(), data.end(), '\0');
    EXPECT_TRUE(font.loadData("null", data.data(), size, 20)) << "one atlas for one name";
    EXPECT_EQ(font.texture(), other.texture());
    EXPECT_NE(font.texture(), this->loaded(20).texture());
    EXPECT_FALSE(drawsNothing());
    EXPECT_FALSE(font.load("no such file", 20));
    EXPECT_TRUE(drawsNothing()) << "after a font";

    // Cut off anywhere: whatever is left of it.
    data = fontData();
    for (const double share : {0.001, 0.02, 0.3, 0.5, 0.9, 0.999}) {
        FontType metrics;
        font.createGlyphTexture(data.data(), static_cast<int>(share * size), metrics);
    }
    // Glyphs of hundreds to ten thousands of pixels: the em is much smaller than the letters.
    const auto head = std::search(data.begin(), data.end(), std::begin("head"), std::end("head") - 1);
    ASSERT_NE(head, data.end());
    const auto byteAt = [&](std::ptrdiff_t i) { return static_cast<unsigned char>(head[i]); };
    const std::ptrdiff_t table = byteAt(8) << 24 | byteAt(9) << 16 | byteAt(10) << 8 | byteAt(11);
    for (const int em : {16, 64, 200, 400}) {
        data[static_cast<std::size_t>(table + 18)] = static_cast<char>(em >> 8);
        data[static_cast<std::size_t>(table + 19)] = static_cast<char>(em & 255);
        FontType metrics;
        font.createGlyphTexture(data.data(), size, metrics);
        font.loadData(std::to_string(em).c_str(), data.data(), size, 50);
        drawsNothing(); // or something: it is alive
    }
}
