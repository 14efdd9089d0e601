#include <support/Picture.h>
#include <support/TemporaryDirectory.h>
#include <support/Window.h>

#include <GL/gl.h>
#include <gtest/gtest.h>
#include <png.h>

using namespace Tavik::Support;

namespace {

constexpr Picture::Pixel Grey = {100, 100, 100, 255};

Picture readPng(const std::string& path)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        return {};
    }
    image.format = PNG_FORMAT_RGBA;
    Picture picture(static_cast<int>(image.width), static_cast<int>(image.height));
    png_image_finish_read(&image, nullptr, picture.data(), 0, nullptr);
    return picture;
}

} // namespace

TEST(Picture, ComparisonCountsPixelsWithAnyChannelOverTheTolerance)
{
    const Picture a(4, 3, Grey);
    Picture b = a;
    b.setPixel(0, 0, {103, 100, 100, 255});
    b.setPixel(3, 2, {100, 100, 100, 235});
    struct Case
    {
        int tolerance;
        std::size_t pixelsOver;
    };
    for (const Case& c : {Case{0, 2}, Case{2, 2}, Case{3, 1}, Case{19, 1}, Case{20, 0}}) {
        EXPECT_EQ(comparePictures(a, b, c.tolerance).pixelsOver, c.pixelsOver) << "tolerance " << c.tolerance;
        EXPECT_EQ(comparePictures(b, a, c.tolerance).pixelsOver, c.pixelsOver) << "tolerance " << c.tolerance;
    }
    const PictureDifference difference = comparePictures(a, b, 3);
    EXPECT_EQ(difference.largest, 20);
    EXPECT_EQ(difference.picture.pixel(3, 2)[0], 255);
    EXPECT_EQ(difference.picture.pixel(0, 0)[0], 0);
    EXPECT_EQ(comparePictures(a, Picture(3, 4, Grey), 255).pixelsOver, 12u);
}

TEST(Picture, PngKeepsEveryPixel)
{
    Picture picture(3, 2, Grey);
    picture.setPixel(2, 0, {255, 1, 2, 3});
    const TemporaryDirectory directory;
    const std::string path = directory.path() + "/picture.png";
    ASSERT_TRUE(picture.writePng(path));
    EXPECT_EQ(comparePictures(picture, readPng(path), 0).pixelsOver, 0u);

    EXPECT_FALSE(picture.writePng(directory.path() + "/missing/picture.png"));
    EXPECT_FALSE(Picture().writePng(path));
}

TEST(Window, ReadsTopRowFirstAtTheSizeAskedFor)
{
    for (const auto visibility : {Window::Visibility::Hidden, Window::Visibility::Shown}) {
        Window window("Tavik test", 60, 40, visibility);
        ASSERT_TRUE(window.isOpen()) << window.error();
        if (visibility == Window::Visibility::Hidden || window.isHeadless()) {
            EXPECT_EQ(window.widthPixels(), 60);
            EXPECT_EQ(window.heightPixels(), 40);
        }
        glClearColor(0.0f, 0.0f, 1.0f, 0.25f);
        glClear(GL_COLOR_BUFFER_BIT);
        glEnable(GL_SCISSOR_TEST);
        glScissor(0, 0, 10, 5); // lower left corner, as OpenGL counts
        glClearColor(1.0f, 0.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        glDisable(GL_SCISSOR_TEST);

        const Picture picture = window.readPicture();
        const Picture::Pixel red = {255, 0, 0, 255};
        const Picture::Pixel blue = {0, 0, 255, 255};
        EXPECT_EQ(picture.pixel(9, picture.height() - 5), red);
        EXPECT_EQ(picture.pixel(10, picture.height() - 5), blue);
        EXPECT_EQ(picture.pixel(9, picture.height() - 6), blue);
        EXPECT_EQ(Window::takeGlError(), 0u);
    }
}
