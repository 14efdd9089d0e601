#pragma once

namespace Tavik::OpenGL {

/// Locations of the vertex attributes, the same in all standard programs.
constexpr unsigned int VertexLocation = 0;
constexpr unsigned int TextureCoordinateLocation = 2;
constexpr unsigned int NormalsLocation = 3;
constexpr unsigned int ColorLocation = 4;
constexpr unsigned int PositionLocation = 5;

} // namespace Tavik::OpenGL
