#include <support/Fonts.h>
#include <tavik/opengl/TextureFont.h>
#include <tavik/opengl/TextureFontSdf.h>

#include <gtest/gtest.h>

using namespace Tavik::OpenGL;

template <typename Font>
static void useWithoutContext()
{
    Font font;
    EXPECT_FALSE(font.load(Tavik::Support::sansFontPath(), 16));
    unsigned char pixel = 255;
    EXPECT_EQ(font.createAlphaTexture(&pixel, 1, 1), 0u);
    font.addText("A", {}, Font::BottomLeft);
    font.setData();
    font.render();
    font.renderFont(1.0, 2.0, "A", Font::TopRight);
    font.clearVertex();
    font.clear();
    EXPECT_EQ(font.texture(), 0u);

    const int sides[][2] = {{-5, 1},      {0, 1},       {1, 1},       {2, 2},       {3, 4},
                            {5, 8},       {9, 16},      {16, 16},     {17, 32},     {1024, 1024},
                            {1025, 2048}, {2048, 2048}, {2049, 4096}, {5000, 4096}, {2147483647, 4096}};
    for (const auto& side : sides) {
        EXPECT_EQ(font.nextPower2(side[0]), side[1]) << side[0];
    }
}

TEST(TextureFontNoContext, EverythingIsWithoutEffectAndAlive)
{
    useWithoutContext<TextureFont>();
    useWithoutContext<TextureFontSdf>();
}
