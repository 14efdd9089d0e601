#include <moving_map/HeightRamp.h>

#include <moving_map/Palette.h>
#include <tavik/opengl/TerrainTexels.h>

#include <GL/gl.h>

#include <array>
#include <cmath>
#include <cstddef>

namespace MovingMap {

namespace {

// Colours change with steps of 9 m, which nobody sees, and with the size of texture that every driver takes. The 56th
// step ends at 0.994 m: as good as the height at which the map draws the coast.
constexpr std::size_t Steps = 1022;
constexpr double MetresPerStep = 65535.0 / Tavik::OpenGL::TerrainStepsPerMetre / Steps;

unsigned char toByte(float component)
{
    return static_cast<unsigned char>(std::lround(255.0f * component));
}

} // namespace

HeightRamp::~HeightRamp()
{
    if (mName != 0) {
        glDeleteTextures(1, &mName);
    }
}

unsigned int HeightRamp::name()
{
    if (mName != 0) {
        return mName;
    }
    std::array<unsigned char, 4 * Steps> pixels = {};
    for (std::size_t step = 0; step < Steps; ++step) {
        const double middle = static_cast<double>(step) + 0.5;
        const Color color = heightColor(Tavik::OpenGL::TerrainLowestMetres + middle * MetresPerStep);
        pixels[4 * step + 0] = toByte(color.x);
        pixels[4 * step + 1] = toByte(color.y);
        pixels[4 * step + 2] = toByte(color.z);
        pixels[4 * step + 3] = toByte(color.w);
    }
    glGenTextures(1, &mName);
    glBindTexture(GL_TEXTURE_1D, mName);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexImage1D(GL_TEXTURE_1D, 0, GL_RGBA8, static_cast<GLsizei>(Steps), 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    glBindTexture(GL_TEXTURE_1D, 0);
    return mName;
}

} // namespace MovingMap
