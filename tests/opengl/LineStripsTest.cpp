#include "LineTest.h"

#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/LineStripsSimple.h>

using namespace Tavik::OpenGL;
using Tavik::Math::Vector2;
using Tavik::Math::Vector3;
using Tavik::Math::Vector4;

namespace {

class LineStripsTest : public LineTest
{
protected:
    static LineStrips hardEdged(float width)
    {
        LineStrips lines;
        lines.setAntiAlias(false);
        lines.setLineWidth(width);
        return lines;
    }

    static Picture strips(const std::vector<Points>& list, float width = 4.0f, bool antiAlias = false)
    {
        LineStrips lines;
        lines.setAntiAlias(antiAlias);
        lines.setColor({1.0f, 1.0f, 1.0f, 0.5f});
        lines.setLineWidth(width);
        for (const Points& points : list) {
            lines.addLineStrip(points);
        }
        return picture([&] { lines.render(-1); });
    }
};

} // namespace

TEST_F(LineStripsTest, OneIndexDrawsNothing)
{
    LineStrips lines = hardEdged(10.0f);
    EXPECT_EQ(litPixels(picture([&] { lines.render(-1); })), 0);
    lines.addVertex(Vector2<float>(64.0f, 64.0f));
    EXPECT_EQ(litPixels(picture([&] { lines.render(-1); })), 0);
    EXPECT_EQ(litPixels(strips({{{64.0f, 64.0f}}})), 0);
    EXPECT_EQ(litPixels(strips({{{64.0f, 64.0f}, {64.0f, 64.0f}, {64.0f, 64.0f}}})), 0) << "no length at all";
}

TEST_F(LineStripsTest, WidthIsInPixelsWhateverTheShapeOfTheViewPort)
{
    struct Case
    {
        int width;
        int height;
    };
    for (const Case& size : {Case{128, 128}, Case{128, 64}, Case{64, 128}}) {
        setSize(size.width, size.height);
        for (const int width : {1, 2, 5, 12}) {
            SCOPED_TRACE(testing::Message() << size.width << " x " << size.height << ", line width " << width);
            const float center = 32.0f + (width % 2 == 0 ? 0.0f : 0.5f);
            LineStrips level = hardEdged(static_cast<float>(width));
            level.addLineStrip(Points{{10.0f, center}, {50.0f, center}});
            const Picture levelPicture = picture([&] { level.render(-1); });
            EXPECT_EQ(litPixels(levelPicture), 40 * width);
            EXPECT_EQ(litPixels(levelPicture, 10, 32 - width / 2, 50, 32 - width / 2 + width), 40 * width);

            LineStrips upright = hardEdged(static_cast<float>(width));
            upright.addLineStrip(Points{{center, 10.0f}, {center, 50.0f}});
            const Picture uprightPicture = picture([&] { upright.render(-1); });
            EXPECT_EQ(litPixels(uprightPicture), 40 * width);
            EXPECT_EQ(litPixels(uprightPicture, 32 - width / 2, 10, 32 - width / 2 + width, 50), 40 * width);
        }
    }
}

TEST_F(LineStripsTest, BlendsOnlyWithAntiAliasing)
{
    const Picture soft = strips({{{10.0f, 64.0f}, {110.0f, 64.0f}}}, 20.0f, true);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    // Half white over the background, from one end to the other and nowhere twice.
    for (int x = 10; x < 110; ++x) {
        const Picture::Pixel pixel = at(soft, x, 64);
        EXPECT_NEAR(pixel[0], (255 + 51) / 2.0, 1) << x;
        EXPECT_NEAR(pixel[1], (255 + 102) / 2.0, 1) << x;
    }
    EXPECT_EQ(litPixels(soft), 100 * 20);
    int brightness = Background[0];
    for (int y = 54; y <= 60; ++y) { // the soft edge is 0.3 of the width, 6 pixels
        EXPECT_GT(at(soft, 64, y)[0], brightness) << y;
        EXPECT_EQ(at(soft, 64, y), at(soft, 64, 127 - y)) << y;
        brightness = at(soft, 64, y)[0];
    }

    const Picture hard = strips({{{10.0f, 64.0f}, {110.0f, 64.0f}}}, 20.0f, false);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(at(hard, 64, 54), White) << "opaque up to the edge";
    EXPECT_EQ(at(hard, 64, 64), White);
}

TEST_F(LineStripsTest, StippleRunsThroughAllStripsEvery32Pixels)
{
    LineStrips lines = hardEdged(4.0f);
    lines.setStipple(0x8035);
    lines.addLineStrip(Points{{0.0f, 20.0f}, {7.0f, 20.0f}, {70.0f, 20.0f}});
    // 70 pixels so far, and 50 more across the gap to the next strip.
    lines.addLineStrip(Points{{70.0f, 70.0f}, {110.0f, 70.0f}});
    const Picture drawn = picture([&] { lines.render(-1); });

    const std::string period = "#.#.##.........#................";
    const std::string length = period + period + period + period + period;
    EXPECT_EQ(row(drawn, 20, 0, 70), length.substr(0, 70));
    EXPECT_EQ(row(drawn, 70, 70, 110), length.substr(120, 40));

    lines.setStipple(0);
    EXPECT_EQ(litPixels(picture([&] { lines.render(-1); })), 4 * (70 + 40));
}

TEST_F(LineStripsTest, StripsAreSeparate)
{
    const Picture both = strips({{{10.0f, 20.0f}, {50.0f, 20.0f}}, {{50.0f, 100.0f}, {10.0f, 100.0f}}});
    EXPECT_EQ(litPixels(both), 2 * 4 * 40);
    EXPECT_TRUE(samePicture(
        both,
        strips({{}, {{10.0f, 20.0f}, {50.0f, 20.0f}}, {{30.0f, 60.0f}}, {}, {{50.0f, 100.0f}, {10.0f, 100.0f}}, {}})));
}

TEST_F(LineStripsTest, CountIsInExpandedIndices)
{
    LineStrips lines = hardEdged(2.0f);
    for (const float x : {10.0f, 20.0f, 30.0f, 40.0f, 50.0f}) {
        lines.addVertex(Vector2<float>(x, 64.0f)); // a a b c d e e
    }
    struct Case
    {
        int count;
        int segments;
    };
    for (const Case& c :
         {Case{0, 0}, Case{3, 0}, Case{4, 1}, Case{6, 3}, Case{7, 4}, Case{8, 4}, Case{-1, 4}, Case{-7, 4}}) {
        EXPECT_EQ(litPixels(picture([&] { lines.render(c.count); })), 2 * 10 * c.segments) << c.count;
    }
}

TEST_F(LineStripsTest, ColorsOfTheVerticesNeedOneForEach)
{
    LineStrips lines = hardEdged(4.0f);
    lines.setColor({0.0f, 1.0f, 0.0f, 1.0f});
    lines.addVertex(Vector2<float>(0.0f, 64.0f), Red);
    lines.addVertex(Vector3<float>(64.0f, 64.0f, 0.0f), Red);
    lines.addVertex(Vector4<float>(128.0f, 64.0f, 0.0f, 1.0f), Blue);
    const Picture::Pixel green = {0, 255, 0, 255};
    EXPECT_EQ(at(picture([&] { lines.render(-1); }), 96, 64), green) << "multi-colour is off";

    lines.setUseMultiColor(true);
    const Picture colored = picture([&] { lines.render(-1); });
    EXPECT_EQ(at(colored, 30, 64), (Picture::Pixel{255, 0, 0, 255}));
    EXPECT_NEAR(at(colored, 96, 64)[0], 128, 3);
    EXPECT_NEAR(at(colored, 96, 64)[2], 128, 3);
    EXPECT_NEAR(at(colored, 127, 64)[2], 255, 3);

    lines.addVertex(Vector2<float>(128.0f, 0.0f)); // without colour
    EXPECT_EQ(at(picture([&] { lines.render(-1); }), 96, 64), green);
}

TEST_F(LineStripsTest, RepeatedAndBrokenPointsLeaveNoTrace)
{
    const Vector2<float> a(20.0f, 30.0f);
    const Vector2<float> b(90.0f, 30.0f);
    const Vector2<float> c(90.0f, 100.0f);
    const Picture whole = strips({{a, b, c}}, 10.0f);
    struct Case
    {
        const char* name;
        Points points;
    };
    const Case repeated[] = {
        {"first", {a, a, b, c}},
        {"corner", {a, b, b, c}},
        {"last", {a, b, c, c}},
        {"first and last three times", {a, a, a, b, c, c, c}},
        {"NaN in front", {{NaN, 30.0f}, a, b, c}},
        {"infinity behind", {a, b, c, {INFINITY, 0.0f}}},
    };
    for (const Case& repetition : repeated) {
        EXPECT_TRUE(samePicture(strips({repetition.points}, 10.0f), whole)) << repetition.name;
    }
    const Picture interrupted = strips({{a, b, {NaN, NaN}, b, c}}, 10.0f);
    EXPECT_TRUE(samePicture(interrupted, strips({{a, b}, {b, c}}, 10.0f)));
    EXPECT_TRUE(isLit(whole, 91, 27)) << "the corner's wedge";
    EXPECT_FALSE(isLit(interrupted, 91, 27));
}

TEST_F(LineStripsTest, JointsAreClosedByBothSegments)
{
    const Picture corner = strips({{{20.0f, 30.0f}, {90.0f, 30.0f}, {90.0f, 100.0f}}}, 20.0f, true);
    // Half white, over the background at first and over itself the second time.
    EXPECT_NEAR(at(corner, 50, 29)[0], (255 + 51) / 2.0, 1);
    EXPECT_NEAR(at(corner, 91, 28)[0], (255 + 153) / 2.0, 3);
}

TEST_F(LineStripsTest, BrokenPointsDoNotSpoilTheStipple)
{
    LineStrips lines = hardEdged(4.0f);
    lines.setStipple(0x00FF);
    lines.addLineStrip(Points{{0.0f, 10.0f}, {NaN, NaN}, {0.0f, 20.0f}});
    lines.addLineStrip(Points{{0.0f, 20.0f}, {64.0f, 20.0f}});
    const std::string period = "########........................";
    EXPECT_EQ(row(picture([&] { lines.render(-1); }), 20, 0, 64), period + period);
}

TEST_F(LineStripsTest, RectangleTakesTheIndicesThatAreThere)
{
    LineStrips lines = hardEdged(2.0f);
    for (int i = 0; i < 300; ++i) { // most of them beyond the four corners
        lines.addVertex(Vector2<float>(static_cast<float>(i), 0.0f));
    }
    picture([&] { lines.render(-1); });
    lines.setRect(100, 60);
    const Picture z = strips({{{0.0f, 0.0f}, {0.0f, 60.0f}, {100.0f, 0.0f}, {100.0f, 60.0f}}}, 2.0f);
    EXPECT_TRUE(samePicture(picture([&] { lines.render(-1); }), z));
}

TEST_F(LineStripsTest, ChangesShowAtTheNextRender)
{
    const Points low = {{10.0f, 20.0f}, {60.0f, 20.0f}};
    const Points high = {{10.0f, 90.0f}, {60.0f, 90.0f}, {60.0f, 120.0f}};
    LineStrips lines = hardEdged(4.0f);
    lines.addLineStrip(low);
    const Picture first = picture([&] { lines.render(-1); });
    EXPECT_TRUE(samePicture(first, strips({low})));
    lines.clear();
    EXPECT_TRUE(samePicture(picture([&] { lines.render(-1); }), first)) << "from new OpenGL objects";
    lines.addLineStrip(high);
    EXPECT_TRUE(samePicture(picture([&] { lines.render(-1); }), strips({low, high}))) << "added after an upload";
    LineStrips moved = std::move(lines);
    EXPECT_TRUE(samePicture(picture([&] { moved.render(-1); }), strips({low, high})));
    moved.clearVertex();
    EXPECT_EQ(litPixels(picture([&] { moved.render(-1); })), 0);
    moved.addLineStrip(high);
    EXPECT_TRUE(samePicture(picture([&] { moved.render(-1); }), strips({high})));
}

TEST_F(LineStripsTest, SimpleStripsAreHairlines)
{
    LineStripsSimple lines;
    lines.setAntiAlias(false);
    lines.setLineWidth(20.0f);
    lines.setStipple(0x0101);
    lines.addLineStrip(Points{{10.0f, 20.5f}, {60.0f, 20.5f}, {110.0f, 20.5f}});
    lines.addLineStrip(Points{{10.0f, 90.5f}, {60.0f, 90.5f}});
    struct Case
    {
        int count;
        int pixels;
    };
    for (const Case& c : {Case{-1, 150}, Case{2, 50}, Case{3, 100}, Case{4, 100}, Case{99, 150}}) {
        EXPECT_EQ(litPixels(picture([&] { lines.render(c.count); })), c.pixels) << c.count;
    }
    lines.setRect(100, 60);
    const Picture z = picture([&] { lines.render(-1); });
    EXPECT_GT(litPixels(z, 48, 28, 52, 32), 0) << "three corners in the first strip, nothing in the second";
    EXPECT_EQ(litPixels(z, 73, 43, 77, 47), 0) << "nor a line to where there is no vertex";

    lines.clearVertex();
    lines.addVertex(Vector2<float>(0.0f, 64.5f), Red);
    lines.addVertex(Vector2<float>(128.0f, 64.5f), Blue);
    lines.setUseMultiColor(true);
    const Picture colored = picture([&] { lines.render(-1); });
    EXPECT_NEAR(at(colored, 2, 64)[0], 255, 6);
    EXPECT_NEAR(at(colored, 125, 64)[2], 255, 6);
}
