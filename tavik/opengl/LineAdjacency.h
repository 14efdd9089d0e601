#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Tavik::OpenGL {

/// Turns the indices of line strips into those of line strips with adjacency, where each segment knows its neighbours:
/// the first and the last index of each strip are doubled. A strip a b c becomes a a b c c, with the separator after
/// it where there was one; a strip of one index comes three times and draws nothing.
///
/// @param indices  vertex indices in strips; the separator ends a strip, and so does whatever is not below vertexCount,
///                 so that nothing is ever read past the vertices
/// @param result  replaced; its memory is used again
void expandAdjacency(const std::vector<std::uint32_t>& indices, std::size_t vertexCount, std::uint32_t separator,
                     std::vector<std::uint32_t>& result);

} // namespace Tavik::OpenGL
