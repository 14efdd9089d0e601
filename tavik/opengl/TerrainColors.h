#pragma once

namespace Tavik::OpenGL {

/// Makes the default colour ramp of TextureTerrain, a one-dimensional texture over the scale of heights in
/// TerrainTexels.h: water up to sea level, then green, brown and white.
/// @return the caller's to delete; 0 where OpenGL cannot make it
unsigned int makeTerrainColors();

} // namespace Tavik::OpenGL
