#include <tavik/opengl/TerrainTexels.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Tavik::OpenGL {

namespace {

constexpr float Largest = std::numeric_limits<unsigned short>::max();

// From byte to 16 bits so that both mean the same part of their range.
constexpr int StepsPerByte = 257;

constexpr std::size_t BytesPerNormal = 3;

unsigned short rounded(float value)
{
    return static_cast<unsigned short>(std::lround(std::clamp(value, 0.0f, Largest)));
}

unsigned short packedComponent(float component)
{
    return rounded(std::isnan(component) ? Largest / 2 : (component + 1.0f) * (Largest / 2));
}

unsigned short widened(unsigned char byte)
{
    return static_cast<unsigned short>(byte * StepsPerByte);
}

unsigned short packedHeight(float metres)
{
    return rounded(((std::isnan(metres) ? 0.0f : metres) - TerrainLowestMetres) * TerrainStepsPerMetre);
}

template <typename TexelAt>
std::vector<unsigned short> pack(std::size_t count, TexelAt texelAt)
{
    std::vector<unsigned short> texels;
    texels.reserve(count * std::tuple_size_v<TerrainTexel>);
    for (std::size_t i = 0; i < count; ++i) {
        const TerrainTexel texel = texelAt(i);
        texels.insert(texels.end(), texel.begin(), texel.end());
    }
    return texels;
}

} // namespace

TerrainTexel terrainTexel(Math::Vector3<float> normal, float metres)
{
    return {packedComponent(normal.x), packedComponent(normal.y), packedComponent(normal.z), packedHeight(metres)};
}

TerrainTexel terrainTexel(unsigned char x, unsigned char y, unsigned char z, float metres)
{
    return {widened(x), widened(y), widened(z), packedHeight(metres)};
}

std::vector<unsigned short> packTerrain(const std::vector<Math::Vector3<float>>& normals,
                                        const std::vector<float>& metres)
{
    return pack(std::min(normals.size(), metres.size()),
                [&](std::size_t i) { return terrainTexel(normals[i], metres[i]); });
}

std::vector<unsigned short> packTerrain(const std::vector<unsigned char>& normals, const std::vector<float>& metres)
{
    return pack(std::min(normals.size() / BytesPerNormal, metres.size()), [&](std::size_t i) {
        const unsigned char* normal = &normals[i * BytesPerNormal];
        return terrainTexel(normal[0], normal[1], normal[2], metres[i]);
    });
}

} // namespace Tavik::OpenGL
