#pragma once

#include <cstdint>
#include <vector>

namespace Tavik::OpenGL {

/// GLSL text of one stage; without text there is no such stage.
struct ShaderSource
{
    const unsigned char* text;
    unsigned int length;
};

struct AttributeLocation
{
    const char* name;
    int location;
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
