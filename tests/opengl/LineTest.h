#pragma once

#include "GlTest.h"

#include <tavik/opengl/MatrixStack.h>

#include <cmath>
#include <vector>

using Points = std::vector<Tavik::Math::Vector2<float>>;

inline const float NaN = std::nanf("");
inline const Tavik::Math::Vector4<float> Red = {1.0f, 0.0f, 0.0f, 1.0f};
inline const Tavik::Math::Vector4<float> Blue = {0.0f, 0.0f, 1.0f, 1.0f};

/// Draws in window pixels, y up, on a background that no line has.
class LineTest : public GlTest
{
protected:
    using Picture = Tavik::Support::Picture;

    static constexpr Picture::Pixel Background = {51, 102, 153, 255};
    static constexpr Picture::Pixel White = {255, 255, 255, 255};

    void SetUp() override
    {
        GlTest::SetUp();
        Tavik::OpenGL::GlHandler::instance();
        setSize(Size, Size);
    }

    void TearDown() override
    {
        int vertexArray = -1;
        int program = -1;
        glGetIntegerv(GL_VERTEX_ARRAY_BINDING, &vertexArray);
        glGetIntegerv(GL_CURRENT_PROGRAM, &program);
        EXPECT_EQ(vertexArray, 0);
        EXPECT_EQ(program, 0);
        EXPECT_FALSE(glIsEnabled(GL_PRIMITIVE_RESTART));
        EXPECT_FALSE(glIsEnabled(GL_LINE_SMOOTH));
        GlTest::TearDown();
    }

    /// The part of the window, from the lower left corner, that is drawn to.
    static void setSize(int width, int height)
    {
        glViewport(0, 0, width, height);
        Tavik::OpenGL::GlHandler::instance().setViewPort({static_cast<float>(width), static_cast<float>(height)});
        Tavik::OpenGL::MatrixLoadIdent();
        Tavik::OpenGL::MatrixTranslate(-1.0, -1.0, 0.0);
        Tavik::OpenGL::MatrixScale(2.0 / width, 2.0 / height, 1.0);
    }

    template <typename Draw>
    static Picture picture(Draw draw)
    {
        glClearColor(0.2f, 0.4f, 0.6f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        draw();
        return window().readPicture();
    }

    /// Calls draw() while everything that draws is an OpenGL error, 1286.
    template <typename Draw>
    static void withIncompleteFramebuffer(Draw draw)
    {
        int framebuffer = 0;
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer);
        unsigned int incomplete = 0;
        glGenFramebuffers(1, &incomplete);
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, incomplete);
        draw();
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<unsigned int>(framebuffer));
        glDeleteFramebuffers(1, &incomplete);
    }

    /// @param y  from the bottom, as lines count
    static Picture::Pixel at(const Picture& picture, int x, int y) { return picture.pixel(x, Size - 1 - y); }

    static bool isLit(const Picture& picture, int x, int y) { return at(picture, x, y) != Background; }

    /// Pixels of a part of a picture that differ from the background.
    static int litPixels(const Picture& picture, int left = 0, int bottom = 0, int right = Size, int top = Size)
    {
        int count = 0;
        for (int y = bottom; y < top; ++y) {
            for (int x = left; x < right; ++x) {
                count += isLit(picture, x, y) ? 1 : 0;
            }
        }
        return count;
    }

    /// One row from the left: '#' where it is lit.
    static std::string row(const Picture& picture, int y, int left, int right)
    {
        std::string text;
        for (int x = left; x < right; ++x) {
            text += isLit(picture, x, y) ? '#' : '.';
        }
        return text;
    }

    static ::testing::AssertionResult samePicture(const Picture& a, const Picture& b, int tolerance = 0)
    {
        const auto difference = Tavik::Support::comparePictures(a, b, tolerance);
        if (difference.pixelsOver == 0) {
            return ::testing::AssertionSuccess();
        }
        const std::string path = ::testing::TempDir() + "/tavik_line_test_";
        a.writePng(path + "a.png");
        b.writePng(path + "b.png");
        difference.picture.writePng(path + "difference.png");
        return ::testing::AssertionFailure()
               << difference.pixelsOver << " pixels differ, by up to " << difference.largest << ", see " << path << "*";
    }
};
