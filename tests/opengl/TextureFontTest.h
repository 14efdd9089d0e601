#pragma once

#include "LineTest.h"

#include <support/Fonts.h>
#include <tavik/math/Matrix4.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>

/// Pixels with ink.
struct Box
{
    int left = 1000;
    int bottom = 1000;
    int right = -1; // one past the last pixel, as top
    int top = -1;
};

inline Tavik::Math::Matrix4<float> moved(double x, double y)
{
    Tavik::Math::Matrix4<float> m;
    m.translate(static_cast<float>(x), static_cast<float>(y), 0.0f);
    return m;
}

/// Draws with one of the two texture fonts, and sees to it that nothing is reported.
template <typename Font>
class TextureFontTest : public LineTest
{
protected:
    void SetUp() override
    {
        LineTest::SetUp();
        testing::internal::CaptureStdout();
    }

    void TearDown() override
    {
        const std::string printed = testing::internal::GetCapturedStdout();
        std::fputs(printed.c_str(), stdout); // failures among it
        EXPECT_EQ(printed.find("Error <"), std::string::npos);
        EXPECT_TRUE(glIsEnabled(GL_BLEND) || !mDraws);
        LineTest::TearDown();
    }

    static Font loaded(int size)
    {
        Font font;
        EXPECT_TRUE(font.load(Tavik::Support::sansFontPath(), size)) << "the sans-serif font";
        return font;
    }

    template <typename Draw>
    Picture drawn(Draw draw)
    {
        mDraws = true;
        return picture(draw);
    }

    static Box ink(const Picture& picture, int threshold = 128)
    {
        Box box;
        for (int y = 0; y < Size; ++y) {
            for (int x = 0; x < Size; ++x) {
                // The background's red is 51, the text's 255.
                if ((at(picture, x, y)[0] - 51) * 255 / 204 >= threshold) {
                    box = {std::min(box.left, x), std::min(box.bottom, y), std::max(box.right, x + 1),
                           std::max(box.top, y + 1)};
                }
            }
        }
        return box;
    }

    static bool isEmpty(const Picture& picture) { return ink(picture, 1).right < 0; }

private:
    bool mDraws = false;
};
