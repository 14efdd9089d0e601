#include <tavik/opengl/VectorFont.h>

#include <tavik/opengl/AttributeLocations.h>
#include <tavik/opengl/AttributeUpload.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineDrawing.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/StandardPrograms.h>
#include <tavik/opengl/TextAlignment.h>

#include <GL/glew.h>

#include <algorithm>

namespace Tavik::OpenGL {

namespace {

using Math::Matrix4;
using Math::Vector3;

// Font units that the size of a text stands for.
constexpr double NominalHeight = 15.97f;

constexpr std::int32_t StrokePoint = 1;
constexpr std::int32_t GlyphEnd = 3;

bool isDrawn(char character)
{
    return static_cast<unsigned char>(character) < VectorFont::CharacterCount;
}

// Of the left end of the baseline from the anchor, in font units.
TextOffset offsetOf(const std::string& text, double advance, VectorFont::Alignment alignment)
{
    return textOffset(alignment, advance * static_cast<double>(text.size()), NominalHeight, 0.5 * NominalHeight);
}

// What addText() does to each point of a glyph, in single precision.
struct Placing
{
    Matrix4<float> m;
    float scale;
    float x; // of the glyph's origin, in units of m's source
    float y;
    float z;

    Vector3<float> operator()(Vector3<float> point) const
    {
        return m * Vector3<float>(point.x * scale + x, point.y * scale + y, z);
    }
};

// Appends so many values, in memory that doubles: resize() alone may grow by what is asked for, text after text.
// @return the first of them
template <typename Value>
Value* grow(std::vector<Value>& values, std::size_t count)
{
    const std::size_t before = values.size();
    if (before + count > values.capacity()) {
        values.reserve(std::max(before + count, 2 * before));
    }
    values.resize(before + count);
    return values.data() + before;
}

} // namespace

void VectorFont::vectorFontInit(const CHARSET_STRUCT* charset)
{
    if (mIsInitialised || charset == nullptr) {
        return;
    }
    mIsInitialised = true;
    mCharset = charset;
    mGlyphVertices.clear();
    mStrokeEnds.clear();
    mGlyphs = {};
    const CHARDEF_STRUCT* data = charset->data;
    const auto count = static_cast<int>(std::min<std::size_t>(charset->characterCount, CharacterCount));
    for (int code = 0; code < count && data != nullptr; ++code) {
        data = drawChar(code, data);
    }
    uploadGlyphs();
}

const CHARDEF_STRUCT* VectorFont::drawChar(int code, const CHARDEF_STRUCT* data)
{
    const auto firstVertex = static_cast<std::uint32_t>(mGlyphVertices.size());
    Glyph glyph = {firstVertex, 0, 0};
    const CHARDEF_STRUCT* behind = readGlyph(data, glyph);
    const bool isKept = code >= 0 && code < static_cast<int>(CharacterCount);
    if (behind == nullptr || !isKept) {
        mGlyphVertices.resize(firstVertex);
        mStrokeEnds.resize(firstVertex);
        glyph = {};
    }
    if (isKept) {
        mGlyphs[static_cast<std::size_t>(code)] = glyph;
    }
    return behind;
}

void VectorFont::addText(const std::string& text, Matrix4<float> m, double size, Alignment a)
{
    initOnce();
    const double advance = static_cast<double>(mCharset->advance);
    TextOffset pen = offsetOf(text, advance, a);
    const auto scale = static_cast<float>(size / NominalHeight);
    // Glyphs are flat: z is 0, or no number where the scale is none.
    Placing place = {m, scale, 0.0f, scale * static_cast<float>(pen.vertical), scale * 0.0f};

    std::size_t vertexCount = 0;
    std::size_t strokeCount = 0;
    for (const char character : text) {
        if (isDrawn(character)) {
            const Glyph& glyph = mGlyphs[static_cast<unsigned char>(character)];
            vertexCount += glyph.vertexCount;
            strokeCount += glyph.strokeCount;
        }
    }
    auto next = static_cast<std::uint32_t>(mTextVertices.size());
    Vector3<float>* vertex = grow(mTextVertices, vertexCount);
    std::uint32_t* index = grow(mTextIndices, vertexCount + strokeCount);
    for (const char character : text) {
        if (!isDrawn(character)) {
            continue;
        }
        const Glyph glyph = mGlyphs[static_cast<unsigned char>(character)];
        const Vector3<float>* point = mGlyphVertices.data() + glyph.firstVertex;
        const std::uint32_t* isEnd = mStrokeEnds.data() + glyph.firstVertex;
        place.x = scale * static_cast<float>(pen.horizontal);
        for (std::uint32_t i = 0; i < glyph.vertexCount; ++i) {
            *vertex++ = place(point[i]);
            // The separator is written in any case and kept behind the last point only: a branch here would be
            // mispredicted for every other stroke. A glyph ends with one, so that it never falls behind the indices.
            index[0] = next++;
            index[1] = StripSeparator;
            index += 1 + isEnd[i];
        }
        pen.horizontal += advance;
    }
    mIsDirty = true;
}

void VectorFont::render()
{
    if (mTextIndices.empty() || !GlHandler::instance().isLoaded()) {
        return;
    }
    if (mIsDirty) {
        setData();
    }
    GlHandler& gl = GlHandler::instance();
    glEnable(GL_BLEND);
    glEnable(GL_LINE_SMOOTH);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    gl.activateShader(VectorFontProgram);
    gl.setFloatVar("color", mColor.x, mColor.y, mColor.z, mColor.w);
    gl.setFloatVar("offset", 0.0f, 0.0f, 0.0f);
    mVertexArray.bind();
    drawStrips(GL_LINE_STRIP, StripSeparator, -1, mTextIndices.size());
    VertexArray::unbind();
    glDisable(GL_LINE_SMOOTH);
    GlHandler::checkError("VectorFont", "void Tavik::OpenGL::VectorFont::render()"); // before they are dropped below
    gl.deactivateShader();
}

void VectorFont::setData()
{
    upload(mTextVertices);
    mHoldsBatch = true;
    mIsDirty = mVertexArray.name() == 0;
}

void VectorFont::clearVertex()
{
    mTextVertices.clear();
    mTextIndices.clear();
    mIsDirty = true;
}

void VectorFont::renderFont(double x, double y, const std::string& text, double size, Alignment a)
{
    drawText(x, y, text, size, a);
    GlHandler::instance().deactivateShader();
}

void VectorFont::renderFont(const std::string& text, double size, Alignment a)
{
    drawText(0.0, 0.0, text, size, a);
    GlHandler::checkError("VectorFont",
                          "void Tavik::OpenGL::VectorFont::renderFont(const std::string &, double, Alignment)");
    GlHandler::instance().deactivateShader();
}

void VectorFont::clear()
{
    mVertexArray.clear();
    mVertexBuffer.clear();
    mIndexBuffer.clear();
    mIsInitialised = false;
    mHoldsBatch = false;
    mUploadedVertexCount = 0;
    mIsDirty = true;
}

void VectorFont::initOnce()
{
    vectorFontInit(mCharset != nullptr ? mCharset : &builtinCharset());
}

const CHARDEF_STRUCT* VectorFont::readGlyph(const CHARDEF_STRUCT* data, Glyph& glyph)
{
    for (std::size_t i = 0; i < MaximumRecordsPerGlyph && data != nullptr; ++i) {
        const CHARDEF_STRUCT& record = data[i];
        if (record.operation < StrokePoint || record.operation > GlyphEnd) {
            continue;
        }
        const bool isEnd = record.operation != StrokePoint;
        mGlyphVertices.emplace_back(record.x, record.y, 0.0f);
        mStrokeEnds.push_back(isEnd ? 1 : 0);
        ++glyph.vertexCount;
        glyph.strokeCount += isEnd ? 1 : 0;
        if (record.operation == GlyphEnd) {
            return data + i + 1;
        }
    }
    return nullptr;
}

void VectorFont::upload(const std::vector<Vector3<float>>& vertices)
{
    mVertexArray.bind();
    if (uploadAttribute(mVertexBuffer, vertices, vertices.size(), VertexLocation, 3)) {
        VertexArray::setIntegerAttribute(NormalsLocation); // the program does not read it
    } else {
        VertexArray::disableAttribute(NormalsLocation);
    }
    mIndexBuffer.uploadIndices(mTextIndices.data(), mTextIndices.size() * sizeof(mTextIndices[0]));
    VertexArray::unbind();
    mUploadedVertexCount = mVertexArray.name() == 0 ? 0 : vertices.size();
}

void VectorFont::uploadGlyphs()
{
    upload(mGlyphVertices);
    mHoldsBatch = false;
    mIsDirty = true;
}

void VectorFont::drawText(double x, double y, const std::string& text, double size, Alignment a)
{
    GlHandler& gl = GlHandler::instance(); // before the set: it loads OpenGL
    initOnce();
    if (!gl.isLoaded()) {
        return;
    }
    if (!mHoldsBatch && mUploadedVertexCount != mGlyphVertices.size()) {
        uploadGlyphs();
    }
    gl.activateShader(VectorFontProgram);
    gl.setFloatVar("color", mColor.x, mColor.y, mColor.z, mColor.w);

    // Not pushed and popped: a full stack takes no push, and the pop would then take the caller's matrix.
    const Matrix4<float> callers = MatrixGet();
    MatrixTranslate(x, y, 0.0);
    MatrixScale(size / NominalHeight, size / NominalHeight, 1.0);
    MatrixActivate();
    MatrixSet(callers);

    glEnable(GL_BLEND);
    glEnable(GL_LINE_SMOOTH);
    mVertexArray.bind();
    drawGlyphs(text, a);
    VertexArray::unbind();
}

void VectorFont::drawGlyphs(const std::string& text, Alignment a) const
{
    static const std::string Offset = "offset";
    const double advance = static_cast<double>(mCharset->advance);
    TextOffset pen = offsetOf(text, advance, a);
    GlHandler& gl = GlHandler::instance();
    for (const char character : text) {
        if (!isDrawn(character)) {
            continue;
        }
        gl.setFloatVar(Offset, static_cast<float>(pen.horizontal), static_cast<float>(pen.vertical), 0.0f);
        drawGlyph(mGlyphs[static_cast<unsigned char>(character)]);
        pen.horizontal += advance;
    }
}

void VectorFont::drawGlyph(const Glyph& glyph) const
{
    std::size_t first = glyph.firstVertex;
    for (std::size_t i = first; i < glyph.firstVertex + std::size_t(glyph.vertexCount); ++i) {
        if (mStrokeEnds[i] == 0) {
            continue;
        }
        const std::size_t next = i + 1;
        if (next <= mUploadedVertexCount) { // of a batch there may be less
            glDrawArrays(GL_LINE_STRIP, static_cast<GLint>(first), static_cast<GLsizei>(next - first));
        }
        first = next;
    }
}

} // namespace Tavik::OpenGL
