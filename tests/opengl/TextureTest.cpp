#include "PicturesTest.h"

#include <tavik/opengl/Texture.h>
#include <tavik/opengl/Video.h>

#include <cstring>
#include <limits>
#include <random>

using namespace Tavik::OpenGL;
using Tavik::Math::Vector2;
using Tavik::Math::Vector3;
using Tavik::Math::Vector4;

class TextureTest : public PicturesTest
{
protected:
    // Black and white at random: colours that texture compression keeps, and where a row that begins one byte off
    // shows.
    static Bytes noise(unsigned int width, unsigned int height, std::size_t channels, unsigned int seed = 1)
    {
        std::mt19937 random(seed);
        Bytes pixels;
        for (unsigned int i = 0; i < width * height; ++i) {
            pixels.insert(pixels.end(), 3, (random() & 1) != 0 ? 255 : 0);
            pixels.insert(pixels.end(), channels - 3, 255);
        }
        return pixels;
    }

    // Draws with the origin of the default rectangle so that its lower left corner lies on (left, bottom).
    template <typename Drawable>
    static Picture drawnAt(Drawable& drawable, int left, int bottom)
    {
        return picture([&] {
            MatrixPush();
            MatrixTranslate(left + drawable.width() * 0.5, bottom + drawable.height() * 0.5, 0.0);
            drawable.render();
            MatrixPop();
        });
    }

    static ::testing::AssertionResult shows(const Picture& drawn, int left, int bottom, const Bytes& pixels, int width,
                                            int height, std::size_t channels)
    {
        Picture expected(Size, Size, Background);
        for (int i = 0; i < width * height; ++i) {
            const unsigned char* pixel = &pixels[static_cast<std::size_t>(i) * channels];
            expected.setPixel(left + i % width, Size - bottom - height + i / width,
                              {pixel[0], pixel[1], pixel[2], 255});
        }
        return samePicture(drawn, expected);
    }

    template <typename Drawable>
    static int lit(Drawable& drawable)
    {
        return litPixels(picture([&] { drawable.render(); }));
    }
};

TEST_F(TextureTest, PicturesOfAnySizeStandUprightRoundTheOrigin)
{
    struct Case
    {
        unsigned int width;
        unsigned int height;
        unsigned int format;
        std::size_t channels;
    };
    Texture texture;
    for (const Case& c :
         {Case{1, 1, GL_RGB, 3}, Case{7, 5, GL_RGB, 3}, Case{8, 4, GL_RGBA, 4}, Case{13, 3, GL_RGB, 3}}) {
        const Bytes pixels = noise(c.width, c.height, c.channels);
        unsigned int buffer = 0; // the application's, which has nothing to do with it
        glGenBuffers(1, &buffer);
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, buffer);
        ASSERT_TRUE(texture.load(pixels.data(), c.width, c.height, c.format)) << c.width;
        glDeleteBuffers(1, &buffer);
        const auto width = static_cast<int>(c.width);
        const auto height = static_cast<int>(c.height);
        EXPECT_TRUE(shows(drawnAt(texture, 20, 30), 20, 30, pixels, width, height, c.channels)) << c.width;
    }
}

TEST_F(TextureTest, MipMapsAverageWhereWithoutThemPixelsAreSkipped)
{
    constexpr unsigned int Pixels = 64;
    Bytes stripes(std::size_t{Pixels} * Pixels * 4, 255);
    for (std::size_t i = 0; i < stripes.size(); i += 8) {
        std::memset(&stripes[i], 0, 3);
    }
    for (const bool useMipMaps : {false, true}) {
        Texture texture;
        texture.setUseMipMaps(useMipMaps);
        ASSERT_TRUE(texture.load(stripes.data(), Pixels, Pixels, GL_RGBA));
        texture.clearVertex();
        addRectangle(texture, 0.0f, 0.0f, Pixels / 8.0f, Pixels / 8.0f);
        const Picture drawn = picture([&] { texture.render(); });
        EXPECT_EQ(litPixels(drawn), 64);
        EXPECT_NEAR(at(drawn, 4, 4)[0], 127, 6) << useMipMaps; // between two stripes either way
        MatrixTranslate(1.0 / 16, 0.0, 0.0);
        const int moved = at(picture([&] { texture.render(); }), 4, 4)[0];
        EXPECT_EQ(moved > 120 && moved < 135, useMipMaps) << moved;
        setSize(Size, Size);
    }
}

TEST_F(TextureTest, WrapModeSaysWhatLiesBeyondThePicture)
{
    const Bytes pixels = {255, 255, 255, 0, 0, 0};
    struct Case
    {
        unsigned int mode;
        const char* row; // white of a picture of two pixels, drawn three times as wide as it is
    };
    for (const Case& c :
         {Case{GL_CLAMP_TO_EDGE, "W....."}, Case{GL_REPEAT, "W.W.W."}, Case{GL_MIRRORED_REPEAT, "W..WW."}}) {
        Texture texture;
        texture.setWrapMode(c.mode);
        ASSERT_TRUE(texture.load(pixels.data(), 2, 1, GL_RGB));
        texture.clearVertex();
        for (const Vector2<float> corner : {Vector2<float>{0, 0}, {0, 1}, {1, 0}, {1, 1}}) {
            texture.addVertex(Vector3<float>(corner.x * 6.0f, corner.y, 0.0f), {corner.x * 3.0f, corner.y});
        }
        const Picture drawn = picture([&] { texture.render(); });
        std::string row;
        for (int x = 0; x < 6; ++x) {
            row += at(drawn, x, 0)[0] > 127 ? 'W' : '.';
        }
        EXPECT_EQ(row, c.row);
    }
}

TEST_F(TextureTest, StripsAreApartAndCutToTheirCoordinates)
{
    const int before = objectCount();
    const Bytes white(64, 255);
    Texture texture;
    const std::vector<Vector2<float>> uv = {{0, 1}, {0, 0}, {1, 1}, {1, 0}};
    const std::vector<Vector3<float>> square = {{10, 10, 0}, {10, 20, 0}, {20, 10, 0}, {20, 20, 0}, {100, 100, 0}};
    const std::vector<Vector4<float>> other = {{50, 50, 0, 9}, {50, 55, 0, 9}, {55, 50, 0, 9}, {55, 55, 0, 9}};
    texture.addTexture(square, uv); // without picture
    EXPECT_EQ(lit(texture), 0);
    ASSERT_TRUE(texture.load(white.data(), 4, 4, GL_RGBA)); // drops the strip
    EXPECT_EQ(lit(texture), 2 * 2) << "a quarter of its own rectangle is in the window";
    texture.clearVertex();
    texture.addTexture(std::vector<Vector3<float>>(), uv);
    EXPECT_EQ(lit(texture), 0);
    texture.addTexture(square, uv);
    texture.addTexture(other, uv);
    EXPECT_EQ(lit(texture), 10 * 10 + 5 * 5);
    texture.addVertex(Vector3<float>(NaN, NaN, 0.0f), {0.0f, 0.0f});
    texture.addVertex(Vector4<float>(std::numeric_limits<float>::infinity(), 0.0f, 0.0f, 1.0f), {NaN, 0.0f});
    texture.addVertex(Vector3<float>(60.0f, 0.0f, 0.0f), {0.0f, 0.0f});
    EXPECT_EQ(lit(texture), 10 * 10 + 5 * 5);

    texture.setColor({1.0f, 0.0f, 0.5f, 0.5f});
    const Picture::Pixel pixel = at(picture([&] { texture.render(); }), 15, 15);
    EXPECT_NEAR(pixel[0], (255 + Background[0]) / 2.0, 1.0);
    EXPECT_NEAR(pixel[1], Background[1] / 2.0, 1.0);
    EXPECT_NEAR(pixel[2], (127 + Background[2]) / 2.0, 1.0);
    texture.clear();
    EXPECT_EQ(objectCount(), before);
}

TEST_F(TextureTest, WhatIsWrongLeavesThePictureBefore)
{
    const std::uint32_t blob[] = {2, 1, 0, 0xFFFFFFFF, 0xFFFFFFFF};
    EXPECT_EQ(Texture::createTexture(nullptr), 0u);
    const unsigned int name = Texture::createTexture(blob);
    EXPECT_EQ(glIsTexture(name), GL_TRUE);
    glDeleteTextures(1, &name);

    const Bytes white(16, 255);
    Texture texture;
    EXPECT_FALSE(texture.load(nullptr, GL_RGBA));
    ASSERT_TRUE(texture.load(static_cast<const void*>(blob), GL_RGBA));
    EXPECT_FALSE(texture.load(nullptr, 2, 2, GL_RGBA));
    EXPECT_FALSE(texture.load(white.data(), 0, 2, GL_RGBA));
    EXPECT_FALSE(texture.load(white.data(), 2, 0xFFFFFFFF, GL_RGBA));
    EXPECT_FALSE(texture.load(white.data(), static_cast<unsigned int>(integer(GL_MAX_TEXTURE_SIZE)) + 1, 1, GL_RGBA));
    expectGlErrors();
    EXPECT_FALSE(texture.load(white.data(), 2, 2, GL_FLOAT));
    texture.setWrapMode(GL_FLOAT);
    EXPECT_FALSE(texture.load(white.data(), 2, 2, GL_RGBA));
    EXPECT_EQ(texture.width(), 2u);
    EXPECT_EQ(texture.height(), 1u);
    EXPECT_EQ(litPixels(drawnAt(texture, 10, 10)), 2);
}

TEST_F(TextureTest, VideoShowsTheLastFrame)
{
    const int before = objectCount();
    constexpr unsigned int Width = 13;
    constexpr unsigned int Height = 7;
    const Bytes frames[] = {noise(Width, Height, 3, 1), noise(Width, Height, 3, 2), noise(Width, Height, 3, 3)};
    Video video;
    video.putFrame(frames[0].data()); // not ready for it
    EXPECT_EQ(lit(video), 0);
    video.init(Width, Height);
    video.putFrame(nullptr);
    EXPECT_EQ(litPixels(drawnAt(video, 20, 30)), 0) << "no frame yet";
    // Several before one drawing, and a drawing without a new one.
    video.putFrame(frames[0].data());
    video.putFrame(frames[1].data());
    EXPECT_TRUE(shows(drawnAt(video, 20, 30), 20, 30, frames[1], Width, Height, 3));
    video.putFrame(frames[2].data());
    video.putFrame(nullptr);
    for (int drawing = 0; drawing < 2; ++drawing) {
        EXPECT_TRUE(shows(drawnAt(video, 30, 20), 30, 20, frames[2], Width, Height, 3));
    }
    video.clearVertex();
    addRectangle(video, 40.0f, 40.0f, 26.0f, 14.0f);
    EXPECT_EQ(lit(video), 26 * 14);

    video.init(Width, 0xFFFFFFFF);
    video.putFrame(frames[0].data());
    EXPECT_EQ(video.width(), 0u);
    EXPECT_EQ(objectCount(), before);
    video.init(1, 1);
    EXPECT_EQ(litPixels(drawnAt(video, 20, 30)), 0) << "the frame of another size is gone";
    const Bytes white(3, 255);
    video.putFrame(white.data());
    EXPECT_TRUE(shows(drawnAt(video, 5, 6), 5, 6, white, 1, 1, 3));
    video.clear();
    video.putFrame(white.data());
    EXPECT_EQ(objectCount(), before);
}
