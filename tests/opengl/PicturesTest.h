#pragma once

#include "LineTest.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <vector>

/// Draws pictures in window pixels, y up. What the application has set for textures and for reading pixels must
/// survive each test, and the units have no texture afterwards.
class PicturesTest : public LineTest
{
protected:
    using Bytes = std::vector<unsigned char>;

    void SetUp() override
    {
        LineTest::SetUp();
        glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 5);
        glActiveTexture(GL_TEXTURE0 + ApplicationUnit);
        glGenTextures(1, &mApplicationTexture);
        glBindTexture(GL_TEXTURE_2D, mApplicationTexture);
    }

    void TearDown() override
    {
        EXPECT_EQ(integer(GL_UNPACK_ALIGNMENT), 8);
        EXPECT_EQ(integer(GL_UNPACK_ROW_LENGTH), 5);
        EXPECT_EQ(integer(GL_PIXEL_UNPACK_BUFFER_BINDING), 0);
        EXPECT_EQ(integer(GL_ACTIVE_TEXTURE), GL_TEXTURE0 + ApplicationUnit);
        EXPECT_EQ(integer(GL_TEXTURE_BINDING_2D), static_cast<int>(mApplicationTexture));
        glDeleteTextures(1, &mApplicationTexture);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        LineTest::TearDown();
    }

    /// As LineTest does it; then the units must be free again.
    template <typename Draw>
    static Picture picture(Draw draw)
    {
        Picture drawn = LineTest::picture(draw);
        EXPECT_EQ(integer(GL_ACTIVE_TEXTURE), GL_TEXTURE0 + ApplicationUnit);
        for (unsigned int unit = 0; unit < ApplicationUnit; ++unit) {
            glActiveTexture(GL_TEXTURE0 + unit);
            EXPECT_EQ(integer(GL_TEXTURE_BINDING_2D), 0) << unit;
            EXPECT_EQ(integer(GL_TEXTURE_BINDING_1D), 0) << unit;
        }
        glActiveTexture(GL_TEXTURE0 + ApplicationUnit);
        return drawn;
    }

    static int integer(unsigned int name)
    {
        int value = -1;
        glGetIntegerv(name, &value);
        return value;
    }

    /// OpenGL objects of the kinds that pictures are made of.
    static int objectCount()
    {
        int count = 0;
        for (unsigned int name = 1; name < 1000; ++name) {
            count += glIsBuffer(name) + glIsVertexArray(name) + glIsTexture(name);
        }
        return count;
    }

    /// A rectangle whose lower left corner is (left, bottom), the first row of the picture on top.
    template <typename Drawable>
    static void addRectangle(Drawable& drawable, float left, float bottom, float width, float height)
    {
        using Corner = Tavik::Math::Vector3<float>;
        drawable.addVertex(Corner(left, bottom, 0.0f), {0.0f, 1.0f});
        drawable.addVertex(Corner(left, bottom + height, 0.0f), {0.0f, 0.0f});
        drawable.addVertex(Corner(left + width, bottom, 0.0f), {1.0f, 1.0f});
        drawable.addVertex(Corner(left + width, bottom + height, 0.0f), {1.0f, 0.0f});
    }

private:
    static constexpr unsigned int ApplicationUnit = 3;

    unsigned int mApplicationTexture = 0;
};
