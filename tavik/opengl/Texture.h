#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector2.h>
#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/BufferObject.h>
#include <tavik/opengl/TextureObject.h>
#include <tavik/opengl/TexturedVertices.h>

#include <cstdint>
#include <vector>

namespace Tavik::OpenGL {

/// A picture on strips of triangles, multiplied by a colour, drawn in one call.
///
///     Image::PngReader::ImageRGBA image;
///     if (Image::PngReader::readFileRGBA("symbol.png", image)) {
///         texture.load(image.data, image.width, image.height, GL_RGBA);
///         std::free(image.data);
///     }
///     texture.render(); // each frame
///
/// load() makes a rectangle of the picture's size round the origin; move it with the matrix stack. For other shapes
/// clearVertex() after it, and add vertices: addVertex() one by one, or addTexture() a strip at a time.
///
/// Coordinates are in the space of the matrix stack. The loads need the context to be current and OpenGL to be loaded,
/// which they see to themselves; where it is not, they return false. Vertices may be added before there is a context;
/// the next render() after a change uploads them all, and memory is kept by clearVertex().
///
/// The driver may store the picture compressed, with small losses of colour.
///
/// Drawing blends with source alpha over what is there. Afterwards the blend state stays so, primitive restart is off,
/// unit 0 has no texture, the unit that was active is active again, and no program and no vertex array is bound.
/// OpenGL errors of the drawing are dropped.
///
/// The object owns its OpenGL objects: destroy it while its context is current, or when there is none. After a move the
/// source may only be assigned to or destroyed. Rendering thread only.
class TAVIK_API Texture
{
public:
    /// Between the strips in the indices, and the restart index when drawing.
    static constexpr unsigned int StripSeparator = 0xFFFFFFFF;

    /// Whether the next load() makes smaller versions of the picture too, for drawing it smaller than it is without
    /// flicker; off by default.
    void setUseMipMaps(bool on) { mUseMipMaps = on; }

    /// What the next load() lets texture coordinates outside of [0, 1] mean.
    /// @param mode  OpenGL's constant: GL_CLAMP_TO_EDGE, the default, GL_REPEAT, GL_MIRRORED_REPEAT, …
    void setWrapMode(unsigned int mode) { mWrapMode = mode; }

    /// Takes a picture of 8 bits a channel, and makes a rectangle of its size (pixels) round the origin, upright where
    /// y points up. The picture and all vertices before are dropped.
    /// @param pixels  rows without padding, top row first
    /// @param width,height  pixels, at least 1 and no more than OpenGL's GL_MAX_TEXTURE_SIZE
    /// @param format  OpenGL's order of the channels, such as GL_RGBA or GL_RGB
    /// @return false when pixels are null, the size is out of range or OpenGL refuses; then nothing changes
    bool load(const unsigned char* pixels, unsigned int width, unsigned int height, unsigned int format);

    /// The same from a blob: width and height as 32-bit numbers of this machine, 4 bytes that are not read, pixels.
    bool load(const void* blob, unsigned int format);

    /// Makes a texture from a blob of RGBA pixels, read with linear filters and repeated outside of [0, 1].
    /// @return OpenGL's name, the caller's to delete; 0 for null, and as load() returns false
    static unsigned int createTexture(const void* blob);

    /// @{
    /// Append a vertex to the strip that is open, or start one; w is dropped.
    /// @param vertex      in the space of the matrix stack
    /// @param coordinate  of the picture: (0, 0) is the first pixel of the first row, (1, 1) the last of the last
    void addVertex(Math::Vector3<float> vertex, Math::Vector2<float> coordinate);
    void addVertex(Math::Vector4<float> vertex, Math::Vector2<float> coordinate)
    {
        addVertex(Math::Vector3<float>(vertex.x, vertex.y, vertex.z), coordinate);
    }
    /// @}

    /// @{
    /// Append the points with their texture coordinates to the strip that is open, and end it; w is dropped. The longer
    /// list is cut to the shorter.
    void addTexture(const std::vector<Math::Vector3<float>>& points, const std::vector<Math::Vector2<float>>& uv);
    void addTexture(const std::vector<Math::Vector4<float>>& points, const std::vector<Math::Vector2<float>>& uv);
    /// @}

    /// Removes all vertices; the picture stays.
    void clearVertex();

    /// Removes vertices and picture and deletes the OpenGL objects; the settings stay.
    void clear();

    /// A colour that the picture is multiplied by, white by default.
    void setColor(Math::Vector4<float> color) { mColor = color; }

    /// @{
    /// Size of the picture, pixels; 0 without.
    unsigned int width() const { return mWidth; }
    unsigned int height() const { return mHeight; }
    /// @}

    /// Uploads the vertices; done by render() after changes.
    void setData();

    /// Draws, if there are a picture and vertices.
    void render();

private:
    template <typename Point>
    void addStrip(const std::vector<Point>& points, const std::vector<Math::Vector2<float>>& uv);

    TextureObject mTexture;
    TexturedVertices mVertices;
    std::vector<std::uint32_t> mIndices;
    BufferObject mIndexBuffer;
    unsigned int mWidth = 0;
    unsigned int mHeight = 0;
    bool mUseMipMaps = false;
    unsigned int mWrapMode = 0x812F; // GL_CLAMP_TO_EDGE
    std::uint32_t mNextIndex = 0;
    Math::Vector4<float> mColor = {1.0f, 1.0f, 1.0f, 1.0f};
};

} // namespace Tavik::OpenGL
