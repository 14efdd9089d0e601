#pragma once

#include <tavik/Export.h>

#include <utility>

namespace Tavik::OpenGL {

/// Owner of one OpenGL texture, for drawables; applications have no need of it.
///
/// It may live before there is a context. The texture is deleted with its owner, for which the same context must be
/// current, or none. Rendering thread only.
class TAVIK_API TextureObject
{
public:
    TextureObject() = default;
    ~TextureObject() { clear(); }

    TextureObject(TextureObject&& other) noexcept : mName(std::exchange(other.mName, 0)) {}
    TextureObject& operator=(TextureObject&& other) noexcept
    {
        std::swap(mName, other.mName);
        return *this;
    }

    /// OpenGL's name, 0 while there is no texture.
    unsigned int name() const { return mName; }

    /// Takes a texture over and deletes the one before.
    /// @param name  OpenGL's name, 0 for none
    void take(unsigned int name);

    /// Deletes the texture.
    void clear() { take(0); }

private:
    unsigned int mName = 0;
};

} // namespace Tavik::OpenGL
