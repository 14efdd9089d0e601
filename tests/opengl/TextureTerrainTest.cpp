#include "PicturesTest.h"

#include <tavik/opengl/TerrainTexels.h>
#include <tavik/opengl/TextureTerrain.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using namespace Tavik::OpenGL;
using Tavik::Math::Vector3;
using Tavik::Math::Vector4;

namespace {

constexpr std::size_t ChannelCount = 4;
constexpr int Columns = 7; // odd: rows without padding
constexpr int Rows = 6;
constexpr int RampSize = 8;
constexpr int Left = 20;
constexpr int Bottom = 30;

using Color = std::array<double, 4>;

struct Settings
{
    const char* name;
    double factor = 0.5;
    double contrast = 1.0;
    double brightness = 1.0;
    double osm = 0.0;
    Vector3<float> light = {1.0f, -1.0f, -1.41421356f};
    Vector4<float> color = {1.0f, 1.0f, 1.0f, 1.0f};
    bool shading = true;
};

// The same random textures for all: as the drawable gets them, and as numbers from 0 to 1.
struct Scene
{
    Scene()
    {
        std::mt19937 random(7);
        for (int i = 0; i < Columns * Rows; ++i) {
            for (int channel = 0; channel < 4; ++channel) {
                picture.push_back(static_cast<unsigned char>(random() % 256));
            }
            const Vector3<float> normal(static_cast<float>(random() % 200) * 0.01f - 1.0f,
                                        static_cast<float>(random() % 200) * 0.01f - 1.0f, 0.6f);
            const TerrainTexel texel = terrainTexel(normal, 0.0f);
            normals.insert(normals.end(), texel.begin(), texel.end());
            rampIndex.push_back(static_cast<int>(random() % RampSize));
            normals.back() = static_cast<unsigned short>((rampIndex.back() + 0.5) / RampSize * 65535.0);
        }
        for (int i = 0; i < RampSize * 3; ++i) {
            ramp.push_back(static_cast<unsigned char>(random() % 256));
        }
    }

    Color expected(const Settings& s, int column, int row) const
    {
        const auto texel = static_cast<std::size_t>(row) * Columns + static_cast<std::size_t>(column);
        double light = 1.0;
        if (s.shading) {
            const double n[] = {normalPart(texel, 0), normalPart(texel, 1), normalPart(texel, 2)};
            const double dot = -(s.light.x * n[0] + s.light.y * n[1] + s.light.z * n[2]);
            light = std::max(0.0, dot / std::hypot(n[0], n[1], n[2]) / std::hypot(s.light.x, s.light.y, s.light.z));
        }
        const double shade = (1.0 - s.factor) + light * s.factor;
        const double tint[] = {s.color.x * shade, s.color.y * shade, s.color.z * shade, s.color.w};
        Color result;
        for (std::size_t channel = 0; channel < 4; ++channel) {
            const auto index = static_cast<std::size_t>(rampIndex[texel]) * 3 + channel;
            const double relief = channel == 3 ? 1.0 : ramp[index] / 255.0 * shade;
            const double mixed = picture[texel * 4 + channel] / 255.0 * tint[channel] * s.osm + relief * (1.0 - s.osm);
            result[channel] = channel == 3 ? mixed : (s.contrast * (mixed - 0.5) + 0.5) * s.brightness;
        }
        return result;
    }

    std::vector<unsigned char> picture;
    std::vector<unsigned short> normals;
    std::vector<unsigned char> ramp;

private:
    double normalPart(std::size_t texel, std::size_t axis) const
    {
        return (normals[texel * 4 + axis] / 65535.0 - 0.5) * 2.0;
    }

    std::vector<int> rampIndex;
};

} // namespace

class TextureTerrainTest : public PicturesTest
{
protected:
    static unsigned int makeRamp(const Bytes& pixels)
    {
        unsigned int name = 0;
        glGenTextures(1, &name);
        glBindTexture(GL_TEXTURE_1D, name);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glTexImage1D(GL_TEXTURE_1D, 0, GL_RGB, static_cast<int>(pixels.size() / 3), 0, GL_RGB, GL_UNSIGNED_BYTE,
                     pixels.data());
        glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
        glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glBindTexture(GL_TEXTURE_1D, 0);
        return name;
    }

    // What a height looks like in the default colours, drawn flat.
    static Picture::Pixel colorOf(float metres)
    {
        TextureTerrain relief;
        relief.loadNormals(terrainTexel({0.0f, 0.0f, 1.0f}, metres).data(), 1, 1, GL_RGBA);
        relief.setShading(false);
        addRectangle(relief, 0.0f, 0.0f, 4.0f, 4.0f);
        return at(picture([&] { relief.render(); }), 1, 1);
    }
};

TEST_F(TextureTerrainTest, PixelsFollowTheFormulas)
{
    const Scene scene;
    const unsigned int ramp = makeRamp(scene.ramp);
    TextureTerrain terrain;
    ASSERT_TRUE(terrain.load(scene.picture.data(), Columns, Rows, GL_RGBA));
    ASSERT_TRUE(terrain.loadNormals(scene.normals.data(), Columns, Rows, GL_RGBA));
    EXPECT_EQ(terrain.width(), unsigned{Columns});
    EXPECT_EQ(terrain.height(), unsigned{Rows});
    terrain.setColorMap(ramp);
    // One pixel for each texel, so that no neighbour has a part in it.
    addRectangle(terrain, Left, Bottom, Columns, Rows);
    const Vector3<float> west(1.0f, 0.0f, -1.0f);
    const Vector4<float> tint(0.5f, 1.0f, 0.25f, 0.7f);
    const Settings settings[] = {{"defaults, not set"},
                                 {"no shading", 0.9, 1.0, 1.0, 0.0, west, tint, false},
                                 {"picture alone", 0.5, 1.0, 1.0, 1.0, west, tint},
                                 {"half and half", 1.0, 1.0, 1.0, 0.4, west, tint},
                                 {"contrast", 0.5, 1.5, 0.8},
                                 {"from below", 0.5, 1.0, 1.0, 0.0, {0.1f, 0.0f, 2.0f}}};
    for (const Settings& s : settings) {
        if (&s != settings) {
            terrain.setShading(s.shading);
            terrain.setShadingFactor(s.factor);
            terrain.setShadingContrast(s.contrast);
            terrain.setShadingBrightness(s.brightness);
            terrain.setTerrainOsm(s.osm);
            terrain.setLightDirection(s.light);
            terrain.setColor(s.color);
        }
        const Picture drawn = picture([&] { terrain.render(); });
        EXPECT_EQ(litPixels(drawn), Columns * Rows) << s.name;
        for (int pixel = 0; pixel < Columns * Rows; ++pixel) {
            const int column = pixel % Columns;
            const int row = pixel / Columns;
            const Color color = scene.expected(s, column, row);
            for (std::size_t channel = 0; channel < 3; ++channel) {
                const double over = std::clamp(color[channel], 0.0, 1.0) * 255.0;
                EXPECT_NEAR(at(drawn, Left + column, Bottom + Rows - 1 - row)[channel],
                            over * color[3] + Background[channel] * (1.0 - color[3]), 1.5)
                    << s.name << " column " << column << " row " << row << " channel " << channel;
            }
        }
    }
    glDeleteTextures(1, &ramp);
}

TEST_F(TextureTerrainTest, DefaultColorsRunFromWaterThroughGreenAndBrownToWhite)
{
    EXPECT_EQ(colorOf(0.0f), colorOf(1.0f));
    EXPECT_EQ(colorOf(NaN), colorOf(0.0f));
    EXPECT_EQ(colorOf(1e9f), colorOf(8850.0f));
    EXPECT_EQ(colorOf(-1e9f), colorOf(-512.0f));
    const Picture::Pixel sea = colorOf(0.0f);
    EXPECT_TRUE(sea[2] > sea[1] && sea[1] > sea[0]);
    const Picture::Pixel shore = colorOf(4.0f);
    EXPECT_TRUE(shore[1] > shore[0] && shore[1] > shore[2]);
    const Picture::Pixel mountain = colorOf(2200.0f);
    EXPECT_TRUE(mountain[0] > mountain[1] && mountain[1] > mountain[2]);
    const Picture::Pixel summit = colorOf(4800.0f);
    EXPECT_GT(*std::min_element(summit.begin(), summit.end()), 245);
    // With 8 bits heights would come in steps of 37 m.
    EXPECT_GT(colorOf(60.0f)[0], colorOf(50.0f)[0]);
    EXPECT_GT(colorOf(70.0f)[0], colorOf(60.0f)[0]);
}

TEST_F(TextureTerrainTest, PackedGridsKeepNormalsAndHeights)
{
    const std::vector<unsigned char> bytes = {127, 127, 255, 0, 255, 128, 1};
    const std::vector<Vector3<float>> floats = {{0.0f, -1.0f, 1.0f}, {NaN, 2.0f, -3.0f}, {}};
    const std::vector<float> metres = {-512.0f, 8849.0f};
    const std::vector<unsigned short> fromBytes = {127 * 257, 127 * 257, 65535, 0, 0, 65535, 128 * 257, 65527};
    const std::vector<unsigned short> fromFloats = {32768, 0, 65535, 0, 32768, 65535, 0, 65527};
    EXPECT_EQ(packTerrain(bytes, metres), fromBytes);
    EXPECT_EQ(packTerrain(floats, metres), fromFloats);
    EXPECT_EQ(packTerrain(floats, {0.0f}).size(), 4u);
}

TEST_F(TextureTerrainTest, WhatIsMissingOrWrongDrawsNothingAndLeavesWhatIsThere)
{
    const int before = objectCount();
    const Bytes pixels(ChannelCount * Columns * Rows, 255);
    TextureTerrain terrain;
    addRectangle(terrain, 0.0f, 0.0f, 10.0f, 10.0f);
    const auto lit = [&] { return litPixels(picture([&] { terrain.render(); })); };
    EXPECT_EQ(lit(), 0) << "no texture";

    EXPECT_FALSE(terrain.load(nullptr, GL_RGBA));
    EXPECT_FALSE(terrain.loadNormals(nullptr, 2, 2, GL_RGBA));
    EXPECT_FALSE(terrain.loadNormals(terrainTexel({}, 0.0f).data(), 0, 1, GL_RGBA));
    EXPECT_EQ(lit(), 0);
    EXPECT_EQ(objectCount(), before);

    Bytes blob(1 + 12); // from an odd address
    const std::uint32_t size[] = {Columns, Rows};
    std::memcpy(&blob[1], size, sizeof(size));
    blob.insert(blob.end(), pixels.begin(), pixels.end());
    ASSERT_TRUE(terrain.load(static_cast<const void*>(&blob[1]), GL_RGBA));
    EXPECT_EQ(terrain.width(), unsigned{Columns});
    EXPECT_EQ(lit(), 10 * 10);
    EXPECT_FALSE(terrain.load(pixels.data(), 0, 0, GL_RGBA));
    EXPECT_EQ(lit(), 10 * 10) << "the picture before is still there";

    terrain.addVertex(Vector4<float>(NaN, 30.0f, 0.0f, 1.0f), {0.0f, NaN});
    terrain.addVertex(Vector3<float>(std::numeric_limits<float>::infinity(), 0.0f, 0.0f), {0.0f, 0.0f});
    EXPECT_EQ(lit(), 10 * 10);
    terrain.clearVertex();
    terrain.setData();
    EXPECT_EQ(lit(), 0);
    terrain.clear();
    EXPECT_EQ(objectCount(), before);
    EXPECT_EQ(terrain.width(), 0u);
    addRectangle(terrain, 0.0f, 0.0f, 4.0f, 4.0f);
    ASSERT_TRUE(terrain.load(pixels.data(), Columns, Rows, GL_RGBA));
    EXPECT_EQ(lit(), 4 * 4);
}
