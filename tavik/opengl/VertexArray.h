#pragma once

#include <tavik/Export.h>

#include <utility>

namespace Tavik::OpenGL {

/// Owner of one OpenGL vertex array object, for drawables; applications have no need of it.
///
/// It may live before there is a context: the object is created when it is bound first. It is deleted with its owner,
/// for which the same context must be current, or none. Rendering thread only.
class TAVIK_API VertexArray
{
public:
    VertexArray() = default;
    ~VertexArray() { clear(); }

    VertexArray(VertexArray&& other) noexcept : mName(std::exchange(other.mName, 0)) {}
    VertexArray& operator=(VertexArray&& other) noexcept
    {
        std::swap(mName, other.mName);
        return *this;
    }

    /// OpenGL's name, 0 until it is bound.
    unsigned int name() const { return mName; }

    void bind();
    static void unbind();

    /// Point an attribute of the bound vertex array at the bound array buffer, tightly packed from its start, and
    /// switch it on.
    /// @param components  floats for each vertex, 1 to 4
    static void setFloatAttribute(unsigned int location, int components);

    /// One unsigned int for each vertex.
    static void setIntegerAttribute(unsigned int location);

    /// Switches an attribute of the bound vertex array off.
    static void disableAttribute(unsigned int location);

    /// Deletes the object; the next bind() starts afresh.
    void clear();

private:
    unsigned int mName = 0;
};

} // namespace Tavik::OpenGL
