#pragma once

#include <tavik/Export.h>
#include <tavik/math/Vector3.h>

#include <array>
#include <vector>

namespace Tavik::OpenGL {

/// One pixel of the texture that TextureTerrain::loadNormals() takes: red, green and blue are the surface normal's
/// east, north and up, −1 to 1 mapped to 0 to 65535; alpha is the height.
using TerrainTexel = std::array<unsigned short, 4>;

/// @{
/// The scale of heights in alpha, which the default colour ramp goes by:
///
///     alpha = (metres + 512) × 7      metres = alpha / 7 − 512
///
/// Seventh parts of a metre from −512 m to 8850 m, from below the lowest land to the highest.
constexpr float TerrainLowestMetres = -512.0f;
constexpr float TerrainStepsPerMetre = 7.0f;
/// @}

/// Packs normal and height of one point.
/// @param normal  east, north, up, of length 1; components beyond 1 are cut off, a NaN is 0
/// @param metres  height, brought into the scale's range; NaN is sea level
/// Safe from any thread.
TAVIK_API TerrainTexel terrainTexel(Math::Vector3<float> normal, float metres);

/// The same for a normal in three bytes, each component c in [−1, 1] packed as trunc((c + 1) × 127.5), as
/// HeightMap::getNormal() gives it.
TAVIK_API TerrainTexel terrainTexel(unsigned char x, unsigned char y, unsigned char z, float metres);

/// Packs a grid of normals and heights.
///
///     std::vector<unsigned short> texels = packTerrain(normals, heights);
///     relief.loadNormals(texels.data(), columns, rows, GL_RGBA);
///
/// @param normals,metres  row by row in the same order; the longer list is cut to the shorter. The row that comes first
///                        has texture coordinate v = 0, the first column u = 0
/// @return 4 values for each point
/// Safe from any thread.
TAVIK_API std::vector<unsigned short> packTerrain(const std::vector<Math::Vector3<float>>& normals,
                                                  const std::vector<float>& metres);

/// The same with three bytes for each normal.
TAVIK_API std::vector<unsigned short> packTerrain(const std::vector<unsigned char>& normals,
                                                  const std::vector<float>& metres);

} // namespace Tavik::OpenGL
