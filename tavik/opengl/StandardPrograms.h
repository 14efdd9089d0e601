#pragma once

#include <cstdint>
#include <vector>

namespace Tavik::OpenGL {

/// Identifiers of the standard programs, which GlHandler.h describes.
constexpr std::uint32_t VertexColorProgram = 1;
constexpr std::uint32_t OneColorProgram = 2;
constexpr std::uint32_t TextureProgram = 3;
constexpr std::uint32_t TextureTerrainProgram = 4;
constexpr std::uint32_t TextureFontProgram = 5;
constexpr std::uint32_t TextureFontSdfProgram = 6;
constexpr std::uint32_t VectorFontProgram = 7;
constexpr std::uint32_t SegmentProgram = 8;
constexpr std::uint32_t PolylineProgram = 9;
constexpr std::uint32_t PolylineColorProgram = 10;
constexpr std::uint32_t PatternProgram = 11;

/// GLSL text of one stage; without text there is no such stage.
struct ShaderSource
{
    const unsigned char* text;
    unsigned int length;
};

struct AttributeLocation
{
    const char* name;
    unsigned int location;
};

/// What a standard program is made of.
struct StandardProgram
{
    std::uint32_t id;
    ShaderSource vertex;
    ShaderSource fragment;
    ShaderSource geometry;
    std::vector<AttributeLocation> attributes;
};

/// All standard programs, in the order in which they are built.
std::vector<StandardProgram> standardPrograms();

} // namespace Tavik::OpenGL
