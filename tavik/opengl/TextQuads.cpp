#include <tavik/opengl/TextQuads.h>

#include <tavik/opengl/AttributeLocations.h>
#include <tavik/opengl/TextAlignment.h>

#include <algorithm>
#include <cmath>

namespace Tavik::OpenGL {

namespace {

using Math::Matrix4;
using Math::Vector2;
using Math::Vector3;

struct TextSize
{
    float width = 0.0f;  // sum of the advances
    float height = 0.0f; // of the highest bitmap
    std::size_t quadCount = 0;
};

TextSize measure(const FontType& font, const std::string& text)
{
    TextSize size;
    for (const char byte : text) {
        const GlyphRecord& glyph = font.glyph(byte);
        size.width += glyph.advance;
        size.height = std::max(size.height, glyph.rows);
        size.quadCount += glyph.hasInk() ? 1 : 0;
    }
    return size;
}

Vector2<float> startOf(const TextSize& size, const TextLayout& layout)
{
    const auto height = static_cast<double>(size.height);
    const TextOffset offset = textOffset(layout.alignment, static_cast<double>(size.width), height, height / 2.0);
    const Vector2<float> start(static_cast<float>(offset.horizontal), static_cast<float>(offset.vertical));
    return layout.isSnapped ? Vector2<float>(std::round(start.x), std::round(start.y)) : start;
}

Vector3<float> column(const Matrix4<float>& m, std::size_t index)
{
    return {m[index * 4], m[index * 4 + 1], m[index * 4 + 2]};
}

bool isFinite(Vector3<float> v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

// Pixels of the atlas, from the anchor, to the space of the matrix stack.
struct Axes
{
    Axes(const Matrix4<float>& transform, float scale)
        : origin(column(transform, 3)), x(column(transform, 0) * scale), y(column(transform, 1) * scale)
    {}

    Vector3<float> origin;
    Vector3<float> x;
    Vector3<float> y;
};

} // namespace

void TextQuads::add(const FontType& font, const std::string& text, const TextLayout& layout)
{
    const TextSize size = measure(font, text);
    Vector2<float> pen = startOf(size, layout);
    const Axes axes(layout.transform, layout.scale);
    const Vector3<float> start = axes.origin + axes.y * pen.y;
    const Vector3<float> extent = axes.x * (std::abs(pen.x) + size.width) + axes.y * size.height;
    if (size.quadCount == 0 || !isFinite(start) || !isFinite(extent) || !isFinite(start + extent)) {
        return;
    }
    reserve(mQuadCount + size.quadCount);
    Vector3<float>* vertex = mVertices.data() + mQuadCount * VerticesPerQuad;
    Vector2<float>* textureCoordinate = mTextureCoordinates.data() + mQuadCount * VerticesPerQuad;
    for (const char byte : text) {
        const GlyphRecord& glyph = font.glyph(byte);
        if (glyph.hasInk()) {
            const Vector3<float> left = start + axes.x * (pen.x + glyph.corners[0].x);
            const Vector3<float> right = start + axes.x * (pen.x + glyph.corners[2].x);
            const Vector3<float> bottom = axes.y * glyph.corners[0].y;
            const Vector3<float> top = axes.y * glyph.corners[2].y;
            vertex[0] = left + bottom;
            vertex[1] = right + bottom;
            vertex[2] = right + top;
            vertex[3] = left + top;
            textureCoordinate[0] = glyph.texture[0];
            textureCoordinate[1] = {glyph.texture[1].x, glyph.texture[0].y};
            textureCoordinate[2] = glyph.texture[1];
            textureCoordinate[3] = {glyph.texture[0].x, glyph.texture[1].y};
            vertex += VerticesPerQuad;
            textureCoordinate += VerticesPerQuad;
        }
        pen.x += glyph.advance;
    }
    mQuadCount += size.quadCount;
    mIsDirty = true;
}

void TextQuads::clearVertex()
{
    mQuadCount = 0;
    mIsDirty = true;
}

void TextQuads::upload()
{
    mIsDirty = false;
    if (isEmpty()) {
        return;
    }
    const std::size_t vertexCount = mQuadCount * VerticesPerQuad;
    mVertexArray.bind();
    mVertexBuffer.uploadVertices(mVertices.data(), vertexCount * sizeof(mVertices[0]));
    VertexArray::setFloatAttribute(VertexLocation, 3);
    mTextureCoordinateBuffer.uploadVertices(mTextureCoordinates.data(), vertexCount * sizeof(mTextureCoordinates[0]));
    VertexArray::setFloatAttribute(TextureCoordinateLocation, 2);
    if (mUploadedIndices < indexCount()) {
        mIndexBuffer.uploadIndices(mIndices.data(), mIndices.size() * sizeof(mIndices[0]));
        mUploadedIndices = mIndices.size();
    }
    VertexArray::unbind();
}

void TextQuads::clear()
{
    clearVertex();
    mVertexArray.clear();
    mVertexBuffer.clear();
    mTextureCoordinateBuffer.clear();
    mIndexBuffer.clear();
    mUploadedIndices = 0;
}

void TextQuads::reserve(std::size_t quadCount)
{
    const std::size_t vertexCount = quadCount * VerticesPerQuad;
    if (vertexCount <= mVertices.size()) {
        return;
    }
    mVertices.resize(std::max(vertexCount, mVertices.size() * 2));
    mTextureCoordinates.resize(mVertices.size());
    auto next = static_cast<std::uint32_t>(mIndices.size() / IndicesPerQuad * VerticesPerQuad);
    while (mIndices.size() / IndicesPerQuad < mVertices.size() / VerticesPerQuad) {
        mIndices.insert(mIndices.end(), {next, next + 1, next + 2, next + 3, QuadSeparator});
        next += VerticesPerQuad;
    }
}

} // namespace Tavik::OpenGL
