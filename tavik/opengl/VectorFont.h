#pragma once

#include <tavik/Export.h>
#include <tavik/math/Matrix4.h>
#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/BufferObject.h>
#include <tavik/opengl/VectorCharset.h>
#include <tavik/opengl/VectorSymbol.h>
#include <tavik/opengl/VertexArray.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Tavik::OpenGL {

/// Text in strokes: each glyph is a few polylines, so that text is sharp at any size and turn and needs no texture.
///
/// Many labels go into a batch, which is drawn in one call:
///
///     VectorFont labels;
///     Matrix4<float> place;                    // in the space of the matrix stack
///     place.translate(120.0f, 80.0f, 0.0f);
///     labels.addText("KJFK 118.7", place, 14.0, VectorFont::BottomLeft);
///     ...
///     glLineWidth(1.5f);
///     labels.render();                         // each frame
///
/// or, with an object of its own, a text is drawn at once where the matrix stack and a point put it:
///
///     glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
///     readout.renderFont(20.0, 20.0, "FL350", 16.0, VectorFont::BottomLeft);
///
/// One object serves one of the two: a batch takes the place of the glyphs on the GPU, and renderFont() then draws from
/// the batch what it takes for glyphs, as far as there is any.
///
/// Texts are bytes, each the code of a character (see VectorSymbol for those below the space). Every code below 128
/// advances by the same width; a byte above draws nothing and does not advance, but counts when the text is aligned.
/// There are no lines: a line feed is the symbol of its code.
///
/// The lines are as wide as OpenGL's line width says (glLineWidth, in pixels), which is the caller's to set, 1.5 reads
/// well: setLineWidth() only keeps its value. Colours blend with source alpha over what is there. After both ways of
/// drawing GL_BLEND is on, and no program and no vertex array is bound; render() turns GL_LINE_SMOOTH and primitive
/// restart off, while renderFont() leaves GL_LINE_SMOOTH on and takes the blend function as it finds it.
///
/// A font may be filled before there is a context. The object owns its OpenGL objects: destroy it while its context is
/// current, or when there is none. After a move the source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API VectorFont
{
public:
    /// What of the text stands on its anchor; any other value counts as BottomLeft. Top is the nominal height (15.97
    /// font units) above the baseline, middle is half of it, bottom the baseline itself. A text is as wide as the
    /// advance of all its bytes.
    enum Alignment : int
    {
        TopLeft = 0,
        MiddleLeft = 1,
        BottomLeft = 2,
        TopCenter = 3,
        MiddleCenter = 4,
        BottomCenter = 5,
        TopRight = 6,
        MiddleRight = 7,
        BottomRight = 8
    };

    /// @{
    /// Characters that a font has, and records that a glyph of a foreign set may have.
    static constexpr std::size_t CharacterCount = 128;
    static constexpr std::size_t MaximumRecordsPerGlyph = 4096;
    /// @}

    /// Reads a character set and creates the OpenGL objects; done with the built-in set by the first addText() or
    /// renderFont(), so that it is for other sets only. A font that has a set keeps it until clear(): later calls do
    /// nothing.
    /// @param charset  kept by address and read again after a clear(), so that it has to live as long as the font; null
    ///                 does nothing. Glyphs beyond 128 are not read. The stream has no length: a glyph that does not
    ///                 end within MaximumRecordsPerGlyph ends the set, it and those behind it are empty, and that many
    ///                 records must be readable.
    void vectorFontInit(const CHARSET_STRUCT* charset);

    /// Reads the glyph of one character, in place of what it had; done by vectorFontInit() for all of them.
    /// @param code  in [0, 127]; the glyph of any other code is read and dropped
    /// @param data  its first record; null for an empty glyph
    /// @return the record behind its last one; null if data is null or the glyph does not end within
    ///         MaximumRecordsPerGlyph, in which case it is empty
    const CHARDEF_STRUCT* drawChar(int code, const CHARDEF_STRUCT* data);

    /// Width of a text, which is what alignment goes by: the advance of all its bytes. Ink ends about a quarter of a
    /// character before it. Needs no context.
    /// @param text  bytes, see above
    /// @param size  nominal character height, in the units of the result
    double calcTextWidth(const std::string& text, double size) const;

    /// Appends a text to the batch.
    /// @param text  bytes, see above
    /// @param m  places the text, whose anchor is its origin, in the space of the matrix stack; affine, the fourth row
    ///           is not read
    /// @param size  nominal character height in units of m's source; capitals are 0.857 of it
    /// @param a  which point of the text comes to the anchor
    void addText(const std::string& text, Math::Matrix4<float> m, double size, Alignment a);

    /// Draws the batch in one call, after uploading it if it has changed. An empty batch changes no OpenGL state.
    /// OpenGL errors are printed.
    void render();

    /// Uploads the batch without drawing; done by render() after changes.
    void setData();

    /// Empties the batch; its memory is kept for the next one.
    void clearVertex();

    /// Draws a text now, through the matrix stack, which is left as it was.
    /// @param x,y  the anchor, in the space of the matrix stack
    /// @param text  bytes, see above
    /// @param size  nominal character height in the same units
    /// @param a  which point of the text comes to the anchor
    void renderFont(double x, double y, const std::string& text, double size, Alignment a);

    /// The same with the anchor at the origin; OpenGL errors are printed.
    void renderFont(const std::string& text, double size, Alignment a);

    /// Components in [0, 1].
    void setColor(Math::Vector4<float> color) { mColor = color; }

    /// Kept, but without effect: see above.
    void setLineWidth(double width) { mLineWidth = width; }

    /// Deletes the OpenGL objects and lets vectorFontInit() bring another set; the batch stays, and the next drawing
    /// creates everything again.
    void clear();

    /// @{
    /// The batch: points in the space of the matrix stack, and the indices that string them to line strips, each ended
    /// by StripSeparator. The arrays are good until the next call that changes the batch.
    const Math::Vector3<float>* vertices() const { return mTextVertices.data(); }
    std::size_t vertexCount() const { return mTextVertexCount; }
    const std::uint32_t* indices() const { return mTextIndices.data(); }
    std::size_t indexCount() const { return mTextIndexCount; }
    /// @}

    /// Ends a strip in the indices, and the restart index when drawing.
    static constexpr std::uint32_t StripSeparator = 0xFFFFFFFF;

private:
    struct Glyph
    {
        std::uint32_t firstVertex; // in the glyph vertices
        std::uint32_t vertexCount;
        std::uint32_t firstBlock; // in the glyph blocks
        std::uint32_t indexCount;
    };

    // What the batch takes of a glyph in one step: two points, and the next four indices, which are at least those of
    // the two. The last block is filled up.
    struct Block
    {
        float points[4];          // x and y in turn
        std::uint32_t indices[4]; // counted from the glyph's first vertex
    };

    // Where the batch goes on.
    struct BatchEnd
    {
        Math::Vector3<float>* vertex;
        std::uint32_t* index;
        std::size_t vertexCount; // before it
        std::size_t room;        // points that a glyph may have there
    };

    class Placing;

    const CHARSET_STRUCT& charset() const;
    void initOnce();
    const CHARDEF_STRUCT* readGlyph(const CHARDEF_STRUCT* data, Glyph& glyph);
    std::uint32_t& indexAt(const Glyph& glyph, std::size_t number);
    BatchEnd batchEnd();
    void setBatchEnd(const BatchEnd& end);
    BatchEnd growBatch(const BatchEnd& end, std::size_t vertexCount);
    void upload(const Math::Vector3<float>* vertices, std::size_t count);
    void uploadGlyphs();
    void drawText(double x, double y, const std::string& text, double size, Alignment a);
    void drawGlyphs(const std::string& text, Alignment a);
    void drawGlyph(const Glyph& glyph);

    std::vector<Math::Vector3<float>> mGlyphVertices;
    VertexArray mVertexArray;
    BufferObject mVertexBuffer;
    BufferObject mIndexBuffer;
    // Of as many points as there ever were; those from the counts on have no meaning.
    std::vector<Math::Vector3<float>> mTextVertices;
    std::vector<std::uint32_t> mTextIndices;
    std::size_t mTextVertexCount = 0;
    std::size_t mTextIndexCount = 0;
    bool mIsDirty = false;
    std::array<Glyph, CharacterCount> mGlyphs = {};
    std::vector<Block> mGlyphBlocks;
    const CHARSET_STRUCT* mCharset = nullptr;
    bool mIsInitialised = false;
    Math::Vector4<float> mColor = {1.0f, 1.0f, 1.0f, 1.0f};
    double mLineWidth = 1.5;
    bool mHoldsBatch = false;             // the vertex buffer: of the batch instead of the glyphs
    std::size_t mUploadedVertexCount = 0; // in the vertex buffer
};

} // namespace Tavik::OpenGL
