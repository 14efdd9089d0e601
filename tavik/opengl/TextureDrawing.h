#pragma once

#include <tavik/math/Vector4.h>

#include <cstddef>
#include <cstdint>

namespace Tavik::OpenGL {

/// One drawing with textures: what is bound through it is unbound when it ends, and the unit that was active is active
/// again.
class TextureUnits
{
public:
    TextureUnits();
    ~TextureUnits();

    TextureUnits(const TextureUnits&) = delete;
    TextureUnits& operator=(const TextureUnits&) = delete;

    /// Units in order from 0: binds a texture to the next one.
    /// @param target  GL_TEXTURE_1D or GL_TEXTURE_2D
    /// @param name  0 for a unit without texture, which reads as black
    void bindNext(unsigned int target, unsigned int name);

private:
    static constexpr unsigned int MaximumCount = 3;

    int mPreviousUnit = 0;
    unsigned int mCount = 0;
    unsigned int mTargets[MaximumCount] = {};
};

/// Activates a program that draws textures, with its colour, and blends with source alpha over what is there; endFill()
/// ends it.
void beginTextures(std::uint32_t program, Math::Vector4<float> color);

/// Hands the current matrix to the program and draws the first vertices of the bound vertex array as one strip of
/// triangles.
void drawStrip(std::size_t vertexCount);

} // namespace Tavik::OpenGL
