#include <tavik/opengl/VectorFont.h>

#include <tavik/opengl/AttributeLocations.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineDrawing.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/StandardPrograms.h>
#include <tavik/opengl/TextAlignment.h>

#include <GL/glew.h>

#include <algorithm>
#include <cstring>

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

// Points behind the batch that there is memory for: glyphs are written two points at a time, and 4 bytes more.
constexpr std::size_t BatchSlack = 2;

// In font units.
double widthOf(const std::string& text, double advance)
{
    return advance * static_cast<double>(text.size());
}

// Of the left end of the baseline from the anchor, in font units.
TextOffset offsetOf(const std::string& text, double advance, VectorFont::Alignment alignment)
{
    return textOffset(alignment, widthOf(text, advance), NominalHeight, 0.5 * NominalHeight);
}

// Vectors as GCC and Clang have them for every processor. Each lane is rounded as a single number would be, so that
// batches have the same bits everywhere.
using Float4 = float __attribute__((vector_size(16)));
using Index4 = std::uint32_t __attribute__((vector_size(16)));

template <typename Vector>
Vector load(const void* values)
{
    Vector result;
    std::memcpy(&result, values, sizeof(result));
    return result;
}

template <typename Vector>
void store(Vector values, void* to)
{
    std::memcpy(to, &values, sizeof(values));
}

template <int Lane>
Float4 broadcast(Float4 values)
{
    return __builtin_shufflevector(values, values, Lane, Lane, Lane, Lane);
}

Float4 column(const Matrix4<float>& m, std::size_t index)
{
    return Float4{m[4 * index], m[4 * index + 1], m[4 * index + 2], 0.0f};
}

} // namespace

// What addText() does to a glyph, in single precision.
class VectorFont::Placing
{
public:
    /// @param vertical  of the baseline, in font units
    Placing(const Matrix4<float>& m, float scale, double vertical)
        : mX(column(m, 0)), mY(column(m, 1)),
          // Glyphs are flat: z is 0, or no number where the scale is none.
          mZ(column(m, 2) * (scale * 0.0f)), mOrigin(column(m, 3)), mScale(scale),
          mBaseline(scale * static_cast<float>(vertical))
    {}

    /// Writes the points and indices of a glyph, in whole blocks, and 4 bytes behind the points.
    /// @param horizontal  of its left end, in font units
    void write(const Block* block, const Glyph& glyph, double horizontal, const BatchEnd& to) const
    {
        const float left = mScale * static_cast<float>(horizontal);
        const Float4 start = {left, mBaseline, left, mBaseline};
        const auto firstVertex = static_cast<std::uint32_t>(to.vertexCount);
        for (std::size_t i = 0; i < glyph.vertexCount; i += 2, ++block) {
            const Float4 points = load<Float4>(block->points) * mScale + start;
            store(place(broadcast<0>(points), broadcast<1>(points)), to.vertex + i);
            store(place(broadcast<2>(points), broadcast<3>(points)), to.vertex + i + 1);
            const auto indices = load<Index4>(block->indices);
            const auto separators = reinterpret_cast<Index4>(indices == StripSeparator); // their bits are all set
            store((indices + firstVertex) | separators, to.index + 2 * i);
        }
    }

private:
    Float4 place(Float4 x, Float4 y) const { return mX * x + mY * y + mZ + mOrigin; }

    Float4 mX; // columns of the matrix
    Float4 mY;
    Float4 mZ; // times z
    Float4 mOrigin;
    float mScale;
    float mBaseline; // in units of the matrix's source
};

void VectorFont::vectorFontInit(const CHARSET_STRUCT* charset)
{
    if (mIsInitialised || charset == nullptr) {
        return;
    }
    mIsInitialised = true;
    mCharset = charset;
    mGlyphVertices.clear();
    mGlyphBlocks.clear();
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
    Glyph glyph = {static_cast<std::uint32_t>(mGlyphVertices.size()), 0,
                   static_cast<std::uint32_t>(mGlyphBlocks.size()), 0};
    const CHARDEF_STRUCT* behind = readGlyph(data, glyph);
    const bool isKept = code >= 0 && code < static_cast<int>(CharacterCount);
    if (behind == nullptr || !isKept) {
        mGlyphVertices.resize(glyph.firstVertex);
        mGlyphBlocks.resize(glyph.firstBlock);
        glyph = {};
    }
    if (isKept) {
        mGlyphs[static_cast<std::size_t>(code)] = glyph;
    }
    return behind;
}

double VectorFont::calcTextWidth(const std::string& text, double size) const
{
    return widthOf(text, static_cast<double>(charset().advance)) * size / NominalHeight;
}

void VectorFont::addText(const std::string& text, Matrix4<float> m, double size, Alignment a)
{
    initOnce();
    const double advance = static_cast<double>(mCharset->advance);
    TextOffset pen = offsetOf(text, advance, a);
    const Placing placing(m, static_cast<float>(size / NominalHeight), pen.vertical);
    const Block* blocks = mGlyphBlocks.data();
    BatchEnd end = batchEnd();
    for (const char character : text) {
        if (!isDrawn(character)) {
            continue;
        }
        const Glyph glyph = mGlyphs[static_cast<unsigned char>(character)];
        if (glyph.vertexCount > end.room) {
            end = growBatch(end, glyph.vertexCount);
        }
        placing.write(blocks + glyph.firstBlock, glyph, pen.horizontal, end);
        end.vertex += glyph.vertexCount;
        end.index += glyph.indexCount;
        end.vertexCount += glyph.vertexCount;
        end.room -= glyph.vertexCount;
        pen.horizontal += advance;
    }
    setBatchEnd(end);
    mIsDirty = true;
}

void VectorFont::render()
{
    if (mTextIndexCount == 0 || !GlHandler::instance().isLoaded()) {
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
    drawStrips(GL_LINE_STRIP, StripSeparator, -1, mTextIndexCount);
    VertexArray::unbind();
    glDisable(GL_LINE_SMOOTH);
    GlHandler::checkError("VectorFont", "void Tavik::OpenGL::VectorFont::render()"); // before they are dropped below
    gl.deactivateShader();
}

void VectorFont::setData()
{
    upload(mTextVertices.data(), mTextVertexCount);
    mHoldsBatch = true;
    mIsDirty = mVertexArray.name() == 0;
}

void VectorFont::clearVertex()
{
    mTextVertexCount = 0;
    mTextIndexCount = 0;
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

const CHARSET_STRUCT& VectorFont::charset() const
{
    return mCharset != nullptr ? *mCharset : builtinCharset();
}

void VectorFont::initOnce()
{
    vectorFontInit(&charset());
}

const CHARDEF_STRUCT* VectorFont::readGlyph(const CHARDEF_STRUCT* data, Glyph& glyph)
{
    for (std::size_t i = 0; i < MaximumRecordsPerGlyph && data != nullptr; ++i) {
        const CHARDEF_STRUCT& record = data[i];
        if (record.operation < StrokePoint || record.operation > GlyphEnd) {
            continue;
        }
        mGlyphVertices.emplace_back(record.x, record.y, 0.0f);
        if (glyph.vertexCount % 2 == 0) {
            mGlyphBlocks.emplace_back();
        }
        const bool isSecond = glyph.vertexCount % 2 != 0;
        float* point = mGlyphBlocks.back().points + (isSecond ? 2 : 0);
        point[0] = record.x;
        point[1] = record.y;
        indexAt(glyph, glyph.indexCount++) = glyph.vertexCount;
        ++glyph.vertexCount;
        if (record.operation != StrokePoint) {
            indexAt(glyph, glyph.indexCount++) = StripSeparator;
        }
        if (record.operation == GlyphEnd) {
            return data + i + 1;
        }
    }
    return nullptr;
}

std::uint32_t& VectorFont::indexAt(const Glyph& glyph, std::size_t number)
{
    return mGlyphBlocks[glyph.firstBlock + number / 4].indices[number % 4];
}

VectorFont::BatchEnd VectorFont::batchEnd()
{
    const std::size_t taken = mTextVertexCount + BatchSlack;
    return {mTextVertices.data() + mTextVertexCount, mTextIndices.data() + mTextIndexCount, mTextVertexCount,
            mTextVertices.size() > taken ? mTextVertices.size() - taken : 0};
}

void VectorFont::setBatchEnd(const BatchEnd& end)
{
    mTextVertexCount = end.vertexCount;
    mTextIndexCount = static_cast<std::size_t>(end.index - mTextIndices.data());
}

VectorFont::BatchEnd VectorFont::growBatch(const BatchEnd& end, std::size_t vertexCount)
{
    setBatchEnd(end);
    mTextVertices.resize(std::max(mTextVertexCount + vertexCount + BatchSlack, 2 * mTextVertices.size()));
    mTextIndices.resize(2 * mTextVertices.size()); // a point has one and at most a separator
    return batchEnd();
}

void VectorFont::upload(const Vector3<float>* vertices, std::size_t count)
{
    mVertexArray.bind();
    if (count > 0) {
        mVertexBuffer.uploadVertices(vertices, count * sizeof(*vertices));
        VertexArray::setFloatAttribute(VertexLocation, 3);
        VertexArray::setIntegerAttribute(NormalsLocation); // the program does not read it
    } else {
        VertexArray::disableAttribute(VertexLocation); // drivers may read all attributes that are on
        VertexArray::disableAttribute(NormalsLocation);
    }
    mIndexBuffer.uploadIndices(mTextIndices.data(), mTextIndexCount * sizeof(mTextIndices[0]));
    VertexArray::unbind();
    mUploadedVertexCount = mVertexArray.name() == 0 ? 0 : count;
}

void VectorFont::uploadGlyphs()
{
    upload(mGlyphVertices.data(), mGlyphVertices.size());
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

void VectorFont::drawGlyphs(const std::string& text, Alignment a)
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

void VectorFont::drawGlyph(const Glyph& glyph)
{
    std::size_t first = glyph.firstVertex;
    std::size_t next = first;
    for (std::size_t i = 0; i < glyph.indexCount; ++i) {
        if (indexAt(glyph, i) != StripSeparator) {
            ++next;
            continue;
        }
        if (next <= mUploadedVertexCount) { // of a batch there may be less
            glDrawArrays(GL_LINE_STRIP, static_cast<GLint>(first), static_cast<GLsizei>(next - first));
        }
        first = next;
    }
}

} // namespace Tavik::OpenGL
