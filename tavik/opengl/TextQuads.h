#pragma once

#include <tavik/Export.h>
#include <tavik/math/Matrix4.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/opengl/BufferObject.h>
#include <tavik/opengl/FontType.h>
#include <tavik/opengl/VertexArray.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Tavik::OpenGL {

/// How strings are laid out.
struct TextLayout
{
    Math::Matrix4<float> transform; ///< from the string's anchor to the space of the matrix stack
    float scale = 1.0f;             ///< drawn pixels for each pixel of the atlas
    int alignment = 2;              ///< 0 to 8 as in the fonts' Alignment
    bool isSnapped = false;         ///< starts whole pixels of the atlas from the anchor
};

/// The quads of text, on the CPU and on the GPU; applications have no need of it.
///
/// Each glyph with ink is a fan of four vertices, attribute 0 (3 floats) and 2 (texture coordinates, 2 floats), and of
/// four indices and a restart index. Memory is kept when the text goes. Rendering thread only.
class TAVIK_API TextQuads
{
public:
    /// Restart index after each fan.
    static constexpr std::uint32_t QuadSeparator = 0xFFFFFFFF;

    /// Appends the quads of one string. Nothing is appended where the transform is NaN, infinite or too large.
    void add(const FontType& font, const std::string& text, const TextLayout& layout);

    /// Removes all quads.
    void clearVertex();

    bool isEmpty() const { return mQuadCount == 0; }
    std::size_t indexCount() const { return mQuadCount * IndicesPerQuad; }

    /// Uploads what has changed, if there are quads.
    void upload();

    /// Whether anything has been added or removed since the last upload, or there has been none.
    bool isDirty() const { return mIsDirty; }

    void bind() { mVertexArray.bind(); }

    /// Removes all quads and deletes the OpenGL objects; the next upload starts afresh.
    void clear();

private:
    static constexpr std::size_t VerticesPerQuad = 4;
    static constexpr std::size_t IndicesPerQuad = 5;

    void reserve(std::size_t quadCount);

    // Of as many quads as there ever were; those from mQuadCount on have no meaning. All indices are always the same.
    std::vector<Math::Vector3<float>> mVertices;
    std::vector<Math::Vector2<float>> mTextureCoordinates;
    std::vector<std::uint32_t> mIndices;
    std::size_t mQuadCount = 0;
    std::size_t mUploadedIndices = 0;
    bool mIsDirty = false;

    VertexArray mVertexArray;
    BufferObject mVertexBuffer;
    BufferObject mTextureCoordinateBuffer;
    BufferObject mIndexBuffer;
};

} // namespace Tavik::OpenGL
