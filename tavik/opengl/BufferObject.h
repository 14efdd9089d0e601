#pragma once

#include <tavik/Export.h>

#include <cstddef>
#include <utility>

namespace Tavik::OpenGL {

/// Owner of one OpenGL buffer, for drawables; applications have no need of it.
///
/// It may live before there is a context: the buffer is created with its first contents. It is deleted with its owner,
/// for which the same context must be current, or none. Rendering thread only.
class TAVIK_API BufferObject
{
public:
    BufferObject() = default;
    ~BufferObject() { clear(); }

    BufferObject(BufferObject&& other) noexcept : mName(std::exchange(other.mName, 0)) {}
    BufferObject& operator=(BufferObject&& other) noexcept
    {
        std::swap(mName, other.mName);
        return *this;
    }

    /// OpenGL's name, 0 until there are contents.
    unsigned int name() const { return mName; }

    /// Replaces the contents and leaves the buffer bound as array buffer.
    /// @param size  bytes at data
    void uploadVertices(const void* data, std::size_t size)
    {
        bindVertices();
        storeVertices(data, size);
    }

    /// The two steps of it, for those who look for errors in between.
    void bindVertices() { bind(VertexTarget); }
    static void storeVertices(const void* data, std::size_t size) { store(VertexTarget, data, size); }

    /// Replaces the contents and leaves the buffer bound as element buffer of the vertex array that is bound.
    void uploadIndices(const void* data, std::size_t size)
    {
        bind(IndexTarget);
        store(IndexTarget, data, size);
    }

    /// Creates the buffer with room for pixels that change often, and leaves it bound as pixel unpack buffer.
    /// @param size  bytes
    void reservePixels(std::size_t size);

    /// Deletes the buffer; the next upload starts afresh.
    void clear();

private:
    // OpenGL's GL_ARRAY_BUFFER and GL_ELEMENT_ARRAY_BUFFER.
    static constexpr unsigned int VertexTarget = 0x8892;
    static constexpr unsigned int IndexTarget = 0x8893;

    void bind(unsigned int target);
    static void store(unsigned int target, const void* data, std::size_t size);

    unsigned int mName = 0;
};

} // namespace Tavik::OpenGL
