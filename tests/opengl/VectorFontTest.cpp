#include "LineTest.h"

#include <tavik/opengl/VectorFont.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

using namespace Tavik::OpenGL;
using Tavik::Math::Matrix4;
using Tavik::Math::Vector3;

namespace {

constexpr double Nominal = 15.97f; // size at which a font unit is one unit of the matrix stack
constexpr std::uint32_t End = VectorFont::StripSeparator;
const double Nan = std::numeric_limits<double>::quiet_NaN();
const double Infinity = std::numeric_limits<double>::infinity();

CHARSET_STRUCT charset(std::uint32_t count, const std::vector<CHARDEF_STRUCT>& records)
{
    return {1, count, {}, 10.0f, records.data()};
}

// Glyphs of one stroke each.
std::vector<CHARDEF_STRUCT> lines(int count)
{
    std::vector<CHARDEF_STRUCT> records;
    for (int i = 0; i < count; ++i) {
        records.push_back({0.0f, 0.0f, 1});
        records.push_back({static_cast<float>(i), 5.0f, 3});
    }
    return records;
}

std::vector<Vector3<float>> verticesOf(const VectorFont& font)
{
    return {font.vertices(), font.vertices() + font.vertexCount()};
}

std::vector<std::uint32_t> indicesOf(const VectorFont& font)
{
    return {font.indices(), font.indices() + font.indexCount()};
}

class VectorFontTest : public LineTest
{
protected:
    void SetUp() override
    {
        LineTest::SetUp();
        glLineWidth(1.5f);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    }

    void TearDown() override
    {
        glLineWidth(1.0f);
        glDisable(GL_BLEND);
        LineTest::TearDown();
    }

    static Matrix4<float> at(float x, float y)
    {
        Matrix4<float> place;
        place.translate(x, y, 0.0f);
        return place;
    }

    static Picture batchPicture(VectorFont& font)
    {
        return picture([&font] { font.render(); });
    }

    static Picture immediatePicture(VectorFont& font, double x, double y, const std::string& text, double size,
                                    VectorFont::Alignment alignment)
    {
        Picture result = picture([&] { font.renderFont(x, y, text, size, alignment); });
        EXPECT_TRUE(glIsEnabled(GL_LINE_SMOOTH)) << "is the caller's to end";
        glDisable(GL_LINE_SMOOTH);
        return result;
    }

    // Middle of what is lit, pixels from the lower left corner of the window.
    static std::pair<double, double> middle(const Picture& drawn)
    {
        int left = Size, right = -1, bottom = Size, top = -1;
        for (int y = 0; y < Size; ++y) {
            for (int x = 0; x < Size; ++x) {
                if (isLit(drawn, x, y)) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                    bottom = std::min(bottom, y);
                    top = std::max(top, y);
                }
            }
        }
        return {0.5 * (left + right + 1), 0.5 * (bottom + top + 1)};
    }
};

TEST_F(VectorFontTest, LaysOutStrokes)
{
    VectorFont font;
    EXPECT_NEAR(font.calcTextWidth("A\xff", 2.0 * Nominal), 4.0 * 13.12016, 1e-5);
    font.addText("A", Matrix4<float>(), 2.0 * Nominal, VectorFont::BottomLeft);
    const std::vector<Vector3<float>> a = {{0.0f, 0.0f, 0.0f},     {0.0f, 22.82f, 0.0f},   {4.46f, 27.38f, 0.0f},
                                           {13.38f, 27.38f, 0.0f}, {17.84f, 22.82f, 0.0f}, {17.84f, 0.0f, 0.0f},
                                           {0.0f, 13.70f, 0.0f},   {17.84f, 13.70f, 0.0f}};
    EXPECT_EQ(verticesOf(font), a);
    EXPECT_THAT(indicesOf(font), testing::ElementsAre(0, 1, 2, 3, 4, 5, End, 6, 7, End));

    struct Case
    {
        const char* name;
        std::string text;
        VectorFont::Alignment alignment;
        std::vector<Vector3<float>> corners; // of the dashes, in font units
    };
    const float gap = 13.12016f;
    const Case cases[] = {
        {"nothing", "", VectorFont::TopRight, {}},
        {"two",
         "--",
         VectorFont::TopRight,
         {{1.12f - 2 * gap, -9.12f, 0},
          {7.8f - 2 * gap, -9.12f, 0},
          {1.12f - gap, -9.12f, 0},
          {7.8f - gap, -9.12f, 0}}},
        {"high byte",
         "-\xff-",
         VectorFont::BottomLeft,
         {{1.12f, 6.85f, 0}, {7.8f, 6.85f, 0}, {1.12f + gap, 6.85f, 0}, {7.8f + gap, 6.85f, 0}}},
        {"high byte counts in the width",
         "-\x80",
         VectorFont::BottomRight,
         {{1.12f - 2 * gap, 6.85f, 0}, {7.8f - 2 * gap, 6.85f, 0}}},
        {"no alignment", "-", VectorFont::Alignment(-1), {{1.12f, 6.85f, 0}, {7.8f, 6.85f, 0}}},
    };
    const Vector3<float>* memory = font.vertices();
    for (const Case& c : cases) {
        font.clearVertex();
        font.addText(c.text, at(100.0f, 50.0f), 2.0 * Nominal, c.alignment);
        ASSERT_EQ(font.vertexCount(), c.corners.size()) << c.name;
        EXPECT_EQ(font.vertices(), memory) << "memory is kept";
        EXPECT_EQ(font.indexCount(), c.corners.size() / 2 * 3) << c.name;
        for (std::size_t i = 0; i < c.corners.size(); ++i) {
            EXPECT_NEAR(font.vertices()[i].x, 100.0f + 2.0f * c.corners[i].x, 1e-4f) << c.name << i;
            EXPECT_NEAR(font.vertices()[i].y, 50.0f + 2.0f * c.corners[i].y, 1e-4f) << c.name << i;
        }
    }
}

TEST_F(VectorFontTest, NoTwoGlyphsAreEqual)
{
    std::vector<std::vector<Vector3<float>>> glyphs;
    for (int code = 0; code < 128; ++code) {
        VectorFont font;
        font.addText(std::string(1, static_cast<char>(code)), Matrix4<float>(), Nominal, VectorFont::BottomLeft);
        EXPECT_THAT(glyphs, testing::Not(testing::Contains(verticesOf(font)))) << code;
        EXPECT_TRUE(code == ' ' || font.vertexCount() > 1) << code << " draws nothing";
        glyphs.push_back(verticesOf(font));
    }
}

TEST_F(VectorFontTest, ReadsForeignSetsSafely)
{
    const auto endless = std::vector<CHARDEF_STRUCT>(VectorFont::MaximumRecordsPerGlyph, {1.0f, 1.0f, 1});
    std::vector<CHARDEF_STRUCT> secondEndless = lines(1);
    secondEndless.insert(secondEndless.end(), endless.begin(), endless.end());
    const std::vector<CHARDEF_STRUCT> skipped = {{9.0f, 9.0f, 0}, {1.0f, 2.0f, 1}, {9.0f, 9.0f, -7},
                                                 {9.0f, 9.0f, 4}, {3.0f, 4.0f, 2}, {5.0f, 6.0f, 3}};
    const std::vector<CHARDEF_STRUCT> many = lines(200);
    struct Case
    {
        const char* name;
        CHARSET_STRUCT set;
        std::vector<std::size_t> pointsOfFirst; // characters 0, 1, 127
    };
    const Case cases[] = {
        {"no glyphs", {1, 128, {}, 10.0f, nullptr}, {0, 0, 0}},
        {"count 0", charset(0, many), {0, 0, 0}},
        {"count 1", charset(1, many), {2, 0, 0}},
        {"count beyond 128", charset(0xFFFFFFFF, many), {2, 2, 2}},
        {"endless", charset(128, endless), {0, 0, 0}},
        {"second endless", charset(128, secondEndless), {2, 0, 0}},
        {"other codes", charset(1, skipped), {3, 0, 0}},
    };
    for (const Case& c : cases) {
        VectorFont font;
        font.vectorFontInit(nullptr);
        font.vectorFontInit(&c.set);
        font.vectorFontInit(&builtinCharset()); // too late
        for (std::size_t i = 0; i < 3; ++i) {
            font.clearVertex();
            font.addText(std::string(1, "\0\1\177"[i]), Matrix4<float>(), Nominal, VectorFont::BottomLeft);
            EXPECT_EQ(font.vertexCount(), c.pointsOfFirst[i]) << c.name << i;
        }
        font.renderFont(std::string("\0\1\177", 3), 20.0, VectorFont::TopLeft);
        EXPECT_NEAR(font.calcTextWidth("ab", Nominal), 20.0, 1e-9);
        glDisable(GL_LINE_SMOOTH);
    }

    VectorFont font;
    EXPECT_EQ(font.drawChar(-1, many.data()), many.data() + 2);
    EXPECT_EQ(font.drawChar(128, many.data()), many.data() + 2);
    EXPECT_EQ(font.drawChar(5, nullptr), nullptr);
}

TEST_F(VectorFontTest, StandsOnItsAnchor)
{
    // A box of 0 to 8.92 by 0 to 13.69, and a square about the middle of its cell.
    const struct
    {
        std::string text;
        double x, y;
    } glyphs[] = {{"\177", 4.46, 6.845}, {{VectorSymbol::Dme}, 6.56, 7.985}};
    const double advance = 13.12016;
    for (const auto& glyph : glyphs) {
        for (int code = 0; code < 9; ++code) {
            const auto alignment = static_cast<VectorFont::Alignment>(code);
            const int column = code / 3;
            const int row = code % 3;
            const double x = 64.0 + 2.0 * (glyph.x - 0.5 * advance * column);
            const double y = 64.0 + 2.0 * (glyph.y - 15.97 * (1.0 - 0.5 * row));
            VectorFont batch;
            batch.addText(glyph.text, at(64.0f, 64.0f), 2.0 * Nominal, alignment);
            VectorFont immediate;
            for (const Picture& drawn :
                 {batchPicture(batch), immediatePicture(immediate, 64.0, 64.0, glyph.text, 2.0 * Nominal, alignment)}) {
                EXPECT_NEAR(middle(drawn).first, x, 0.5) << code;
                EXPECT_NEAR(middle(drawn).second, y, 0.5) << code;
            }
        }
    }
}

TEST_F(VectorFontTest, BothWaysDrawTheSameAtAnyMatrixDepth)
{
    int pushes = 0;
    for (; pushes < 31; ++pushes) {
        MatrixPush();
    }
    MatrixRotate(20.0, 0.0, 0.0, 1.0);
    const Matrix4<float> before = MatrixGet();
    VectorFont batch;
    batch.setColor({1.0f, 0.5f, 0.0f, 0.5f});
    batch.addText("KJFK", at(20.0f, 30.0f), 20.0, VectorFont::BottomLeft);
    batch.addText("118.7", at(60.0f, 10.0f), 20.0, VectorFont::MiddleCenter);
    VectorFont immediate;
    immediate.setColor({1.0f, 0.5f, 0.0f, 0.5f});
    const Picture drawn = picture([&immediate] {
        immediate.renderFont(20.0, 30.0, "KJFK", 20.0, VectorFont::BottomLeft);
        MatrixTranslate(60.0, 10.0, 0.0);
        immediate.renderFont("118.7", 20.0, VectorFont::MiddleCenter);
        MatrixTranslate(-60.0, -10.0, 0.0);
        glDisable(GL_LINE_SMOOTH);
    });
    EXPECT_TRUE(samePicture(batchPicture(batch), drawn, 4)); // rounded at different places
    EXPECT_GT(litPixels(drawn), 300);
    for (std::size_t i = 0; i < Matrix4<float>::ElementCount; ++i) {
        EXPECT_NEAR(MatrixGet()[i], before[i], 1e-6f) << i;
    }
    for (; pushes > 0; --pushes) {
        MatrixPop();
    }
}

TEST_F(VectorFontTest, StartsAfreshAfterClear)
{
    const auto livingObjects = [] {
        int count = 0;
        for (unsigned int name = 1; name < 10000; ++name) {
            count += glIsBuffer(name) + glIsVertexArray(name);
        }
        return count;
    };
    const int before = livingObjects();
    VectorFont font;
    font.addText("VOR", at(20.0f, 30.0f), 30.0, VectorFont::BottomLeft);
    const Picture drawn = batchPicture(font);
    EXPECT_EQ(livingObjects(), before + 3);
    font.clear();
    EXPECT_EQ(livingObjects(), before);
    EXPECT_TRUE(samePicture(batchPicture(font), drawn));

    const std::vector<CHARDEF_STRUCT> records = lines(128);
    const CHARSET_STRUCT foreign = charset(128, records);
    font.clear();
    font.vectorFontInit(&foreign);
    EXPECT_TRUE(samePicture(batchPicture(font), drawn)) << "the batch stays";
    font.clear();
    EXPECT_GT(litPixels(immediatePicture(font, 30.0, 30.0, "z", 60.0, VectorFont::BottomLeft)), 10);
    EXPECT_TRUE(samePicture(batchPicture(font), drawn)) << "after the glyphs were uploaded anew";
}

TEST_F(VectorFontTest, DrawsWhatIsThere)
{
    VectorFont empty;
    glBlendFunc(GL_ONE, GL_ONE);
    glDisable(GL_BLEND);
    EXPECT_EQ(litPixels(batchPicture(empty)), 0);
    int source = 0;
    glGetIntegerv(GL_BLEND_SRC_ALPHA, &source);
    EXPECT_EQ(source, GL_ONE) << "an empty batch changes nothing";
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    empty.addText("", Matrix4<float>(), 20.0, VectorFont::TopLeft);
    empty.setData();
    EXPECT_EQ(litPixels(immediatePicture(empty, 9.0, 9.0, "empty buffers", 20.0, VectorFont::TopLeft)), 0);

    VectorFont shorter; // the glyphs of "~" lie beyond this batch
    shorter.addText("-", at(9.0f, 9.0f), 20.0, VectorFont::BottomLeft);
    shorter.setData();
    EXPECT_EQ(litPixels(immediatePicture(shorter, 9.0, 9.0, "~~~", 20.0, VectorFont::BottomLeft)), 0);

    VectorFont odd;
    for (const double value : {Nan, Infinity, -Infinity, 0.0, -20.0, 1e300, 1e-300}) {
        odd.addText("odd", Matrix4<float>(), value, VectorFont::MiddleCenter);
        odd.addText("odd", at(static_cast<float>(std::fmod(value, 1e30)), 1.0f), 20.0, VectorFont::MiddleCenter);
        VectorFont now;
        immediatePicture(now, value, 1.0, "odd", 20.0, VectorFont::MiddleCenter);
        immediatePicture(now, 1.0, 1.0, "odd", value, VectorFont::MiddleCenter);
    }
    odd.clearVertex();
    odd.addText("I", at(64.0f, 64.0f), 40.0, VectorFont::MiddleCenter);
    EXPECT_GT(litPixels(batchPicture(odd)), 40) << "nothing of them stays behind";
}

} // namespace
