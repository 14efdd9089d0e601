#pragma once

#include <tavik/Export.h>
#include <tavik/math/Matrix4.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/FontType.h>
#include <tavik/opengl/TextQuads.h>

#include <string>

namespace Tavik::OpenGL {

/// Text of any size, with outlines, from the distance field of a font: the face is rasterised once, at 50 pixels, and
/// drawn sharp from 8 to 200 pixels and more.
///
///     TextureFontSdf font;
///     font.load("DejaVuSans.ttf", 18); // reads the file, makes the atlas; once a process for each name
///     font.setColor({0.1f, 0.1f, 0.2f, 1.0f});
///     font.setOutlineColor({1.0f, 1.0f, 1.0f, 1.0f});
///     font.setOutlineWidth(0.2f);
///     Matrix4<float> m;                // from the label's anchor to the space of the matrix stack
///     m.translate(x, y, 0.0f);
///     font.addText("NORKU", m, TextureFontSdf::MiddleCenter); // for each label, when labels change
///     font.render();                                          // each frame, all labels in one go
///
/// A short-lived text needs no batch: renderFont(x, y, "124.850", TextureFontSdf::BottomLeft).
///
/// Text is bytes of Latin-1; control characters, tabs and line ends too, are drawn as spaces, and codes 127 to 159 as
/// whatever the font has there. The y axis points up. One unit before the matrices is one pixel of the size that was
/// asked for, which is FreeType's em: capitals are about 0.73 of it high.
///
/// Strokes narrower than a pixel, as text below 12 pixels has them, are drawn paler and stay whole wherever they fall.
///
/// Outlines are measured in the units of the distance field: a width of w reaches w × 16 × size / 50 pixels out. Widths
/// up to 0.43 - 3.2 / size (0.23 at 16 pixels, 0.37 at 50) fade out evenly; wider ones end a little hard, and above
/// 0.43 the field ends. Text of an opaque colour is drawn twice, all outlines below all letters, so that no letter
/// loses ink to its neighbour's outline; text of a translucent colour is drawn letter after letter.
///
/// Before a font is loaded, and after loading one has failed, text is dropped and nothing is drawn. Drawing leaves
/// blending on (source alpha over what is there), primitive restart off, and no program and no vertex array bound; the
/// bound textures stay. OpenGL errors are printed. The object owns its vertices: destroy it while its context is
/// current, or when there is none. Atlases live until the process ends. After a move the source may only be assigned to
/// or destroyed. Rendering thread only.
class TAVIK_API TextureFontSdf
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
    TextureFontSdf() = default;
    virtual ~TextureFontSdf();

    /// @{
    /// Takes over font and text.
    TextureFontSdf(TextureFontSdf&&) noexcept = default;
    TextureFontSdf& operator=(TextureFontSdf&&) noexcept = default;
    /// @}

    /// Initialises FreeType for the process and prints "INIT Freetype done", or "init freetype failed !"; done by
    /// loading.
    /// @return whether FreeType is there
    bool init();

    /// Loads a font file under its name; see loadData(). A name that is loaded already is not read again.
    /// @param fileName  path of the file
    /// @param size  pixels, as for setSize()
    /// @return false when there is no such font; the object is then without one
    bool load(const char* fileName, int size);

    /// Loads a font from memory, which may go afterwards. Needs a context. What was added is dropped when the font
    /// changes.
    ///
    /// A name that is loaded already is used again, whatever the data. A name that could not be loaded may be loaded
    /// again; objects that failed with it before then have that font too.
    /// @param name  under which it is kept; letter case counts
    /// @param data,dataSize  contents of a file that FreeType reads (TrueType, OpenType, Type 1, ...), bytes
    /// @param size  pixels, as for setSize()
    /// @return false when there is no atlas; why has been printed
    bool loadData(const char* name, const char* data, int dataSize, int size);

    /// Size of the text that is added from now on, pixels; 0 draws nothing.
    void setSize(int size);

    /// Makes the atlas of a face, a distance field of 8 pixels to each side of the edges of glyphs 50 pixels high, and
    /// fills everything of font. Removes the text of this object. Used by loading.
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

    /// Red, green, blue and alpha of the outlines, black by default.
    void setOutlineColor(Math::Vector4<float> color) { mOutlineColor = color; }

    /// Sets how far outlines reach out.
    /// @param width  0 for none, up to 0.43: see above
    void setOutlineWidth(float width) { mOutlineWidth = width; }

    /// OpenGL's name of the atlas, 0 without a font.
    unsigned int texture() const;

    /// Turns a picture into a distance field by another measure, which needs no coverage: ring by ring, √2 pixels for
    /// each of the squares around a pixel, up to 14 of them, that must be searched for a pixel of the other state.
    /// Pixels are inside where they are not 0; the one deepest inside becomes 255, the farthest outside 0. Close to
    /// x or y 0 rings are cut off, and distances less.
    ///
    /// Prints "Font SDF minDist %f maxDist %f\n" with the range of the distances, negative inside.
    /// @param image  width × height bytes, in place; null or empty does nothing
    /// @param width,height  pixels
    void calcSdf(unsigned char* image, unsigned int width, unsigned int height);

    /// The distance of calcSdf() for one pixel, in pixels, negative inside.
    /// @param image,width,height  the picture, as for calcSdf()
    /// @param x,y  the pixel
    /// @param radius  rings to search
    /// @param distance  √2 × radius, with its sign, where no pixel is of the other state; 0 outside the picture
    /// @return whether there is a pixel of the other state
    bool getNearest(const unsigned char* image, unsigned int width, unsigned int height, unsigned int x, unsigned int y,
                    unsigned int radius, float& distance);

private:
    void add(TextQuads& quads, const std::string& text, const Math::Matrix4<float>& transform, Alignment alignment);
    void draw(TextQuads& quads, Math::Vector3<float> offset, const char* where);

    TextQuads mQuads;
    TextQuads mImmediateQuads;
    int mSpread = 14;
    int mFontId = -1;
    float mScale = 1.0f;
    Math::Vector4<float> mColor = {1.0f, 1.0f, 1.0f, 1.0f};
    Math::Vector4<float> mOutlineColor = {0.0f, 0.0f, 0.0f, 1.0f};
    float mOutlineWidth = 0.0f;
};

} // namespace Tavik::OpenGL
