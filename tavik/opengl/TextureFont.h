#pragma once

#include <tavik/Export.h>
#include <tavik/math/Matrix4.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/FontType.h>
#include <tavik/opengl/TextQuads.h>

#include <string>

namespace Tavik::OpenGL {

/// Text from the glyphs of a font as FreeType draws them: at the size it was loaded for, and drawn without turning or
/// scaling, it is as crisp as text can be, which tells at 8 to 16 pixels. For other sizes, turned text and outlines
/// there is TextureFontSdf.
///
///     TextureFont font;
///     font.load("DejaVuSans.ttf", 12); // reads the file, makes the atlas; once a process for each name and size
///     font.setColor({0.1f, 0.1f, 0.2f, 1.0f});
///     Matrix4<float> m;                // from the label's anchor to the space of the matrix stack
///     m.translate(std::round(x), std::round(y), 0.0f);
///     font.addText("NORKU", m, TextureFont::MiddleCenter); // for each label, when labels change
///     font.render();                                       // each frame, all labels in one go
///
/// A short-lived text needs no batch: renderFont(x, y, "124.850", TextureFont::BottomLeft). Where one unit is one pixel
/// of the window, anchors on whole pixels keep the glyphs sharp; alignment moves a text by whole pixels of the atlas.
///
/// Text is bytes of Latin-1; control characters, tabs and line ends too, are drawn as spaces, and codes 127 to 159 as
/// whatever the font has there. The y axis points up. One unit before the matrices is one pixel of the size that was
/// asked for, which is FreeType's em: capitals are about 0.73 of it high. Sizes above about 150 pixels outgrow the
/// atlas (1024 × 4096): they are rasterised as large as fits and magnified.
///
/// Before a font is loaded, and after loading one has failed, text is dropped and nothing is drawn. Drawing leaves
/// blending on (source alpha over what is there), primitive restart off, and no program and no vertex array bound; the
/// bound textures stay. OpenGL errors are printed. The object owns its vertices: destroy it while its context is
/// current, or when there is none. Atlases live until the process ends. After a move the source may only be assigned to
/// or destroyed. Rendering thread only.
class TAVIK_API TextureFont
{
public:
    /// Which point of a text lies at its anchor. Heights are those of the text's own highest bitmap: its top is drawn
    /// at or below the anchor, by as much as letters hang below the baseline.
    enum Alignment : int
    {
        TopLeft = 0,
        MiddleLeft = 1,
        BottomLeft = 2, ///< the left end of the baseline; other values are taken as this one
        TopCenter = 3,
        MiddleCenter = 4,
        BottomCenter = 5,
        TopRight = 6,
        MiddleRight = 7,
        BottomRight = 8
    };

    /// Without a font.
    TextureFont() = default;
    virtual ~TextureFont();

    /// @{
    /// Takes over font and text.
    TextureFont(TextureFont&&) noexcept = default;
    TextureFont& operator=(TextureFont&&) noexcept = default;
    /// @}

    /// Initialises FreeType for the process and prints "INIT Freetype done", or "init freetype failed !"; done by
    /// loading.
    /// @return whether FreeType is there
    bool init();

    /// Loads a font file under its name; see loadData(). A name that is loaded already at this size is not
    /// read again.
    /// @param fileName  path of the file
    /// @param size  of the text, pixels; the glyphs are rasterised at it, within 1 to 200
    /// @return false when there is no such font; the object is then without one
    bool load(const char* fileName, int size);

    /// Loads a font from memory, which may go afterwards. Needs a context. What was added is dropped when the font
    /// changes.
    ///
    /// A name that is loaded already at this size is used again, whatever the data. A name that could not be loaded may
    /// be loaded again; objects that failed with it before then have that font too.
    /// @param name  under which it is kept; letter case counts
    /// @param data,dataSize  contents of a file that FreeType reads (TrueType, OpenType, Type 1, ...), bytes
    /// @param size  of the text, pixels; the glyphs are rasterised at it, within 1 to 200
    /// @return false when there is no atlas; why has been printed
    bool loadData(const char* name, const char* data, int dataSize, int size);

    /// Size of the text that is added from now on, pixels; 0 draws nothing. The atlas stays as it is and is scaled: to
    /// have another size crisp, load the font for it.
    void setSize(int size);

    /// Makes the atlas of a face at the current size (50 pixels before loading) and fills everything of font. Removes
    /// the text of this object. Used by loading.
    ///
    /// Prints "FT_New_Memory_Face failed %d ! \n" with FreeType's code where the data is no font, "FT_Set_Pixel_Sizes
    /// failed !" for a bitmap font without that size, "FT_Load_Glyph failed!" for each glyph that is damaged, and
    /// "pixelData: out of memory".
    /// @return OpenGL's name of the texture, 0 on failure; the caller owns it
    unsigned int createGlyphTexture(const char* data, int dataSize, FontType& font);

    /// Makes a texture whose alpha is given, linearly filtered and clamped to its edge.
    /// @param width,height  pixels
    /// @param pixels  width × height bytes, bottom row first
    /// @return OpenGL's name, which the caller owns; 0 on failure
    unsigned int createAlphaTexture(const unsigned char* pixels, int width, int height);

    /// Smallest power of two that is not below the value; 1 for values below 2, 4096 for all above 2048.
    int nextPower2(int value);

    /// Width of a text at the current size, in units before the matrices: the sum of its glyphs' advances, which is
    /// what alignment goes by. Ink may reach a little beyond at either end.
    /// @param text  bytes of Latin-1
    /// @return 0 without a font
    double calcTextWidth(const std::string& text) const;

    /// Adds a text to those that render() draws.
    /// @param text       bytes of Latin-1
    /// @param transform  from the text's anchor to the space of the matrix stack; its last row is ignored. A text is
    ///                   dropped where it is NaN, infinite or too large for single precision.
    /// @param alignment  which point of the text comes to the anchor
    void addText(const std::string& text, Math::Matrix4<float> transform, Alignment alignment);

    /// Uploads the added text; done by render() after changes.
    void setData();

    /// Draws all added text with the current matrix.
    void render();

    /// @{
    /// Draws one text at once, with its anchor at (x, y) or (0, 0) of the current matrix; added text is not touched.
    void renderFont(double x, double y, const std::string& text, Alignment alignment);
    void renderFont(const std::string& text, Alignment alignment);
    /// @}

    /// Removes the added text.
    void clearVertex();

    /// Removes the added text and deletes the OpenGL objects of this object; the font stays. The next render() after
    /// more text creates them again.
    void clear();

    /// Red, green, blue and alpha, each in [0, 1]; white by default.
    void setColor(Math::Vector4<float> color) { mColor = color; }

    /// OpenGL's name of the atlas, 0 without a font.
    unsigned int texture() const;

private:
    float scaleOf(const FontType& font) const;
    void add(TextQuads& quads, const std::string& text, const Math::Matrix4<float>& transform, Alignment alignment);
    void draw(TextQuads& quads, Math::Vector3<float> offset, const char* where);

    TextQuads mQuads;
    TextQuads mImmediateQuads;
    int mFontId = -1;
    int mSize = 50;
    Math::Vector4<float> mColor = {1.0f, 1.0f, 1.0f, 1.0f};
};

} // namespace Tavik::OpenGL
