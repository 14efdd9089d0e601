#include <tavik/opengl/TerrainColors.h>

#include <tavik/opengl/TerrainTexels.h>
#include <tavik/opengl/TextureMaking.h>

#include <GL/glew.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <vector>

namespace Tavik::OpenGL {

namespace {

struct ColorStop
{
    float metres;
    float red; // 0 to 255
    float green;
    float blue;
};

// The colours of a school atlas, light enough for a route and its labels. The coast is a step: half a metre above the
// sea may be an error of measuring, and a shore that fades over some metres of height would drown plains.
constexpr ColorStop Stops[] = {
    {-512.0f, 104.0f, 146.0f, 184.0f}, {1.5f, 150.0f, 188.0f, 214.0f},    {3.0f, 116.0f, 158.0f, 100.0f},
    {150.0f, 146.0f, 180.0f, 112.0f},  {500.0f, 188.0f, 200.0f, 132.0f},  {1000.0f, 214.0f, 196.0f, 140.0f},
    {1800.0f, 184.0f, 146.0f, 104.0f}, {2600.0f, 158.0f, 120.0f, 94.0f},  {3300.0f, 196.0f, 186.0f, 180.0f},
    {4200.0f, 250.0f, 250.0f, 250.0f}, {8850.0f, 255.0f, 255.0f, 255.0f},
};

// 2.3 m each. Texels end where a height is 0 m, so that the sea, whose height is exactly that, has one colour.
constexpr int TexelCount = 4096;

constexpr std::size_t ChannelCount = 3;

unsigned char mixed(float a, float b, float part)
{
    return static_cast<unsigned char>(std::lround(a + (b - a) * part));
}

// @param metres  within the range of the stops
std::array<unsigned char, ChannelCount> colorAt(float metres)
{
    const ColorStop* above = std::find_if(std::begin(Stops) + 1, std::end(Stops) - 1,
                                          [metres](const ColorStop& stop) { return stop.metres >= metres; });
    const ColorStop* below = above - 1;
    const float part = std::clamp((metres - below->metres) / (above->metres - below->metres), 0.0f, 1.0f);
    return {mixed(below->red, above->red, part), mixed(below->green, above->green, part),
            mixed(below->blue, above->blue, part)};
}

} // namespace

unsigned int makeTerrainColors()
{
    std::vector<unsigned char> pixels;
    pixels.reserve(TexelCount * ChannelCount);
    for (int i = 0; i < TexelCount; ++i) {
        const float alpha = (static_cast<float>(i) + 0.5f) / TexelCount * std::numeric_limits<unsigned short>::max();
        const auto color = colorAt(alpha / TerrainStepsPerMetre + TerrainLowestMetres);
        pixels.insert(pixels.end(), color.begin(), color.end());
    }
    return makeTexture(GL_TEXTURE_1D, {GL_RGB, TexelCount, 1, GL_RGB, GL_UNSIGNED_BYTE, pixels.data()},
                       {GL_LINEAR, GL_CLAMP_TO_EDGE});
}

} // namespace Tavik::OpenGL
