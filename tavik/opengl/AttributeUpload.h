#pragma once

#include <tavik/opengl/BufferObject.h>
#include <tavik/opengl/VertexArray.h>

#include <vector>

namespace Tavik::OpenGL {

/// Uploads one attribute of the bound vertex array, of so many floats for each vertex.
/// @return whether it is on: it is off where not each vertex has a value, or there are none, since drivers may read all
///         attributes that are on
template <typename Value>
bool uploadAttribute(BufferObject& buffer, const std::vector<Value>& values, std::size_t vertexCount,
                     unsigned int location, int components)
{
    if (values.empty() || values.size() != vertexCount) {
        VertexArray::disableAttribute(location);
        return false;
    }
    buffer.uploadVertices(values.data(), values.size() * sizeof(Value));
    VertexArray::setFloatAttribute(location, components);
    return true;
}

} // namespace Tavik::OpenGL
