#pragma once

// How the picture drawables make their textures.

#include <array>
#include <cstddef>

namespace Tavik::OpenGL {

/// A texture bound to the active unit for a while; afterwards the unit has what it had before.
class TextureBinding
{
public:
    /// @param target  GL_TEXTURE_1D or GL_TEXTURE_2D
    TextureBinding(unsigned int target, unsigned int name);
    ~TextureBinding();

    TextureBinding(const TextureBinding&) = delete;
    TextureBinding& operator=(const TextureBinding&) = delete;

private:
    unsigned int mTarget;
    int mPrevious = 0;
};

/// Lets OpenGL read pixels from memory as they stand, rows without padding, for a while; afterwards the application's
/// settings, and its unpack buffer, are back.
class PixelUnpacking
{
public:
    PixelUnpacking();
    ~PixelUnpacking();

    PixelUnpacking(const PixelUnpacking&) = delete;
    PixelUnpacking& operator=(const PixelUnpacking&) = delete;

private:
    static constexpr std::size_t SettingCount = 5;

    std::array<int, SettingCount> mPrevious = {};
    int mPreviousBuffer = 0;
};

/// How a texture is read. The values are OpenGL's.
struct TextureSampling
{
    int filter;
    int wrapMode;
};

/// Pixels in memory and how OpenGL is to keep them. The constants are OpenGL's.
struct TextureImage
{
    int internalFormat;
    unsigned int width;  ///< pixels
    unsigned int height; ///< pixels; for a texture of one dimension it is not looked at
    unsigned int format;
    unsigned int type;
    const void* pixels; ///< null leaves the texture's contents undefined
};

/// Makes a texture; what was bound before is bound afterwards.
/// @param target  GL_TEXTURE_1D or GL_TEXTURE_2D
/// @param hasMipMaps  makes the smaller levels as well, and reads them
/// @return the caller's to delete; 0 where OpenGL is not loaded, the size is 0 or more than OpenGL takes, or OpenGL
///         refuses a constant or has no memory: then no error is left behind
unsigned int makeTexture(unsigned int target, const TextureImage& image, TextureSampling sampling,
                         bool hasMipMaps = false);

/// Whether OpenGL takes textures of this size.
bool isTextureSize(unsigned int width, unsigned int height);

} // namespace Tavik::OpenGL
