#include "TextureFontTest.h"

#include <tavik/opengl/TextureFontSdf.h>

#include <cstddef>
#include <vector>

using namespace Tavik::OpenGL;

using TextureFontSdfTest = TextureFontTest<TextureFontSdf>;

TEST_F(TextureFontSdfTest, ThinStrokesStayWhereverTheyFallAmongPixels)
{
    for (const int size : {8, 9, 10, 12, 16}) {
        TextureFontSdf font = loaded(size);
        for (int tenth = 0; tenth < 10; ++tenth) {
            const double place = 20.0 + tenth / 10.0;
            const Picture text = drawn([&] {
                font.renderFont(place, 40.0, "l", TextureFontSdf::BottomLeft);
                font.renderFont(60.0, place, "-", TextureFontSdf::BottomLeft);
            });
            double stem = 0.0; // pixels of ink across it
            double bar = 0.0;
            for (int i = 0; i < Size; ++i) {
                stem += (at(text, i, 40 + size / 3)[0] - 51) / 204.0;
                bar += (at(text, 60 + size / 5, i)[0] - 51) / 204.0;
            }
            EXPECT_NEAR(stem, 0.09 * size, 0.45) << size << ", " << tenth;
            EXPECT_NEAR(bar, 0.08 * size, 0.45) << size << ", " << tenth;
        }
    }
}

TEST_F(TextureFontSdfTest, OutlinesSurroundLettersAndSpareTheirNeighbours)
{
    TextureFontSdf font = loaded(50);
    font.setColor({1.0f, 1.0f, 1.0f, 1.0f});
    font.setOutlineColor({1.0f, 0.0f, 0.0f, 1.0f});
    for (const double x : {20.0, 29.0, 38.0}) { // closer than the outlines are wide
        font.addText("l", moved(x, 40), TextureFontSdf::BottomLeft);
    }
    std::size_t inkWithout = 0;
    for (const float width : {0.0f, 0.1f, 0.2f, 0.3f, 0.4f}) {
        font.setOutlineWidth(width);
        const Picture text = drawn([&] { font.render(); });
        std::vector<int> white;
        int red = 0; // left of the first stem
        for (int x = 0; x < Size; ++x) {
            const Picture::Pixel p = at(text, x, 50);
            if (p[1] > 150) {
                white.push_back(x);
            }
            red += white.empty() && p[0] > 150 && p[1] < 100 ? 1 : 0;
        }
        inkWithout = width == 0.0f ? white.size() : inkWithout;
        EXPECT_EQ(white.size(), inkWithout) << width << ": stems keep their ink";
        EXPECT_NEAR(static_cast<float>(red), 16.0f * width, 1.0f) << width;
    }
    font.clearVertex();
    font.setOutlineWidth(0.3f);
    font.setColor({1.0f, 1.0f, 1.0f, 0.0f});
    const Picture hollow = drawn([&] { font.renderFont(20, 40, "l", TextureFontSdf::BottomLeft); });
    const Box box = ink(hollow, 200);
    EXPECT_EQ(at(hollow, (box.left + box.right) / 2, 60), Background) << "translucent letters are not filled below";
}
