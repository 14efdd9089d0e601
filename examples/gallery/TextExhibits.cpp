#include <gallery/Colors.h>
#include <gallery/Exhibits.h>

#include <support/Fonts.h>
#include <tavik/math/Matrix4.h>
#include <tavik/opengl/Lines.h>
#include <tavik/opengl/TextureFont.h>
#include <tavik/opengl/TextureFontSdf.h>
#include <tavik/opengl/VectorFont.h>

#include <GL/gl.h>

#include <string>

namespace Gallery {

namespace {

namespace GL = Tavik::OpenGL;

constexpr const char* Sample = "KINN 118.7 FL085";

Tavik::Math::Matrix4<float> moved(float x, float y)
{
    Tavik::Math::Matrix4<float> matrix;
    matrix[12] = x;
    matrix[13] = y;
    return matrix;
}

/// Lines through an anchor, to see alignments by.
void drawCross(Point anchor)
{
    GL::Lines cross;
    cross.setLineWidth(1.5f);
    cross.setColor(Amber);
    cross.addVertex(Point(anchor.x - 100.0f, anchor.y + 0.5f));
    cross.addVertex(Point(anchor.x + 100.0f, anchor.y + 0.5f));
    cross.addVertex(Point(anchor.x + 0.5f, anchor.y - 14.0f));
    cross.addVertex(Point(anchor.x + 0.5f, anchor.y + 14.0f));
    cross.render();
}

} // namespace

/// The printable characters, and one line at several sizes.
void drawVectorFont()
{
    GL::VectorFont font;
    font.setColor(White);
    for (int row = 0; row < 6; ++row) {
        std::string text;
        for (int code = 32 + 16 * row; code < 48 + 16 * row && code < 127; ++code) {
            text += static_cast<char>(code);
            text += ' ';
        }
        font.addText(text, moved(24.0f, 262.0f - 26.0f * static_cast<float>(row)), 13.5, GL::VectorFont::BottomLeft);
    }
    float y = 100.0f;
    for (const double size : {10.0, 14.0, 20.0, 28.0}) {
        y -= static_cast<float>(size) * 1.15f;
        font.addText(Sample, moved(24.0f, y), size, GL::VectorFont::BottomLeft);
    }
    glLineWidth(1.5f);
    font.render();
    glLineWidth(1.0f);
}

/// The aviation symbols below the printable characters.
void drawVectorFontSymbols()
{
    GL::VectorFont symbols;
    symbols.setColor(Cyan);
    for (int code = 0; code < 32; ++code) {
        const int line = code / 8;
        const auto column = static_cast<float>(code % 8);
        const auto row = static_cast<float>(line);
        symbols.addText(std::string(1, static_cast<char>(code)), moved(40.0f + 46.0f * column, 252.0f - 68.0f * row),
                        40.0, GL::VectorFont::MiddleCenter);
    }
    glLineWidth(2.0f);
    symbols.render();
    glLineWidth(1.0f);
}

/// Sizes of one face, and three alignments about the crosses.
void drawTextureFont()
{
    float y = 282.0f;
    for (const int size : {12, 16, 24, 36}) {
        y -= 1.25f * static_cast<float>(size);
        GL::TextureFont font;
        font.load(Tavik::Support::sansFontPath(), size);
        font.setColor(White);
        font.addText(Sample, moved(20.0f, y), GL::TextureFont::BottomLeft);
        font.render();
    }
    GL::TextureFont labels;
    labels.load(Tavik::Support::sansBoldFontPath(), 20);
    labels.setColor(Cyan);
    drawCross({120.0f, 115.0f});
    labels.addText("top left", moved(120.0f, 115.0f), GL::TextureFont::TopLeft);
    drawCross({200.0f, 72.0f});
    labels.addText("middle centre", moved(200.0f, 72.0f), GL::TextureFont::MiddleCenter);
    drawCross({280.0f, 28.0f});
    labels.addText("bottom right", moved(280.0f, 28.0f), GL::TextureFont::BottomRight);
    labels.render();
}

/// Every size from one atlas, with outlines that keep text legible over anything.
void drawTextureFontSdf()
{
    float y = 290.0f;
    for (const int size : {10, 16, 26, 40}) {
        y -= 1.2f * static_cast<float>(size);
        GL::TextureFontSdf font;
        font.load(Tavik::Support::sansFontPath(), size);
        font.setColor(White);
        font.addText(Sample, moved(16.0f, y), GL::TextureFontSdf::BottomLeft);
        font.render();
    }
    float x = 16.0f;
    for (const float outline : {0.0f, 0.15f, 0.3f, 0.4f}) {
        GL::TextureFontSdf font;
        font.load(Tavik::Support::sansBoldFontPath(), 88);
        font.setColor(Amber);
        font.setOutlineColor(Magenta);
        font.setOutlineWidth(outline);
        font.addText("R", moved(x, 40.0f), GL::TextureFontSdf::BottomLeft);
        font.render();
        x += 98.0f;
    }
}

} // namespace Gallery
