#include "LineTest.h"

#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/LineStripsSimple.h>
#include <tavik/opengl/Lines.h>

#include <functional>

using namespace Tavik::OpenGL;
using Tavik::Math::Vector2;
using Tavik::Math::Vector3;
using Tavik::Math::Vector4;

using LinesTest = LineTest;
using LineLoopsTest = LineTest;

TEST_F(LineLoopsTest, LoopsAreClosedAndSeparate)
{
    const Points square = {{20.0f, 20.0f}, {60.0f, 20.0f}, {60.0f, 60.0f}, {20.0f, 60.0f}};
    LineLoops loops;
    loops.setAntiAlias(false);
    loops.setLineWidth(4.0f);
    for (const Vector2<float> corner : square) {
        loops.addVertex(corner);
    }
    const Picture one = picture([&] { loops.render(1.0); });
    for (const Vector2<int> middle : {Vector2<int>(40, 20), {60, 40}, {40, 60}, {20, 40}}) {
        EXPECT_TRUE(isLit(one, middle.x, middle.y)) << middle.x << ", " << middle.y;
    }
    EXPECT_EQ(litPixels(one, 24, 24, 56, 56), 0);

    loops.clearVertex();
    loops.addLineLoop(square);
    EXPECT_TRUE(samePicture(picture([&] { loops.render(1.0); }), one));
    loops.addLineLoop(std::vector<Vector3<float>>{{80.0f, 80.0f, 0.0f}, {120.0f, 80.0f, 0.0f}, {80.0f, 120.0f, 0.0f}});
    const Picture two = picture([&] { loops.render(1.0); });
    EXPECT_TRUE(isLit(two, 80, 100)) << "the second loop's closing side";
    EXPECT_FALSE(isLit(two, 70, 70)) << "between the loops";
    EXPECT_TRUE(isLit(two, 20, 40));
    loops.clear();
    loops.calcPositions(); // nothing to upload to yet
    EXPECT_TRUE(samePicture(picture([&] { loops.render(1.0); }), two));

    // Single vertices are closed by the first upload after clearVertex, and only by it.
    loops.clearVertex();
    for (const Vector2<float> corner : square) {
        loops.addVertex(corner);
    }
    EXPECT_TRUE(samePicture(picture([&] { loops.render(1.0); }), one));
    loops.addVertex(Vector2<float>(100.0f, 20.0f));
    loops.addVertex(Vector2<float>(100.0f, 100.0f));
    const Picture open = picture([&] { loops.render(1.0); });
    EXPECT_TRUE(isLit(open, 100, 60));
    EXPECT_FALSE(isLit(open, 60, 60 + 8)) << "on the way back to the first vertex";
}

TEST_F(LineLoopsTest, ScaleMeasuresTheStippleAnew)
{
    LineLoops loops;
    loops.setAntiAlias(false);
    loops.setLineWidth(4.0f);
    loops.setStipple(0x00FF);
    loops.addLineLoop(Points{{0.0f, 20.0f}, {64.0f, 20.0f}, {64.0f, 60.0f}, {0.0f, 60.0f}});
    // Up to the right side, which has a pattern of its own.
    const std::string once = std::string(8, '#') + std::string(24, '.');
    const std::string twice = std::string(16, '#') + std::string(44, '.');
    EXPECT_EQ(row(picture([&] { loops.render(1.0); }), 20, 0, 60), (once + once).substr(0, 60));
    struct Case
    {
        double zoom; // on top of that of the case before
        double scale;
        const std::string& expected;
    };
    const std::string measured = (once + once).substr(0, 60);
    // Until the first change the stored scale is 0, whatever the first drawing was called with.
    for (const Case& c :
         {Case{2.0, 0.0, twice}, Case{1.0, 0.0009, twice}, Case{1.0, 0.002, measured}, Case{2.0, 0.0025, twice}}) {
        MatrixScale(c.zoom, 1.0, 1.0);
        EXPECT_EQ(row(picture([&] { loops.render(c.scale); }), 20, 0, 60), c.expected) << c.scale;
    }
}

TEST_F(LinesTest, SegmentsAreIndependent)
{
    Lines lines;
    lines.setAntiAlias(false);
    lines.setLineWidth(4.0f);
    lines.addVertex(Vector2<float>(10.0f, 20.0f));
    EXPECT_EQ(litPixels(picture([&] { lines.render(); })), 0);
    lines.addVertex(Vector3<float>(90.0f, 20.0f, 0.0f));
    lines.addVertex(Vector4<float>(90.0f, 60.0f, 0.0f, 1.0f));
    EXPECT_EQ(litPixels(picture([&] { lines.render(); })), 80 * 4) << "no partner yet";
    lines.addVertex(Vector2<float>(10.0f, 60.0f));
    lines.addVertex(Vector2<float>(64.0f, 100.0f)); // a point: nothing
    lines.addVertex(Vector2<float>(64.0f, 100.0f));
    EXPECT_EQ(litPixels(picture([&] { lines.render(); })), 2 * 80 * 4);

    lines.setStipple(0x000F); // each segment starts anew
    const Picture stippled = picture([&] { lines.render(); });
    const std::string pattern = "####............................####............................####............";
    EXPECT_EQ(row(stippled, 20, 10, 90), pattern);
    EXPECT_EQ(row(stippled, 60, 10, 90), std::string(pattern.rbegin(), pattern.rend()));
    lines.setStipple(0);
    lines.clear();
    EXPECT_EQ(litPixels(picture([&] { lines.render(); })), 2 * 80 * 4);

    lines.setRect(100, 60);
    const Picture sides = picture([&] { lines.render(); });
    EXPECT_TRUE(isLit(sides, 1, 30));
    EXPECT_TRUE(isLit(sides, 101, 30));
    EXPECT_EQ(litPixels(sides, 10, 0, 90, 128), 0);
}

TEST_F(LinesTest, AntiAliasingBlends)
{
    Lines lines;
    lines.setLineWidth(20.0f);
    lines.setColor({1.0f, 1.0f, 1.0f, 0.5f});
    lines.addVertex(Vector2<float>(10.0f, 64.0f));
    lines.addVertex(Vector2<float>(110.0f, 64.0f));
    const Picture soft = picture([&] { lines.render(); });
    EXPECT_NEAR(at(soft, 64, 64)[0], (255 + 51) / 2.0, 1);
    EXPECT_LT(at(soft, 64, 55)[0], at(soft, 64, 58)[0]);
    lines.setAntiAlias(false);
    EXPECT_EQ(at(picture([&] { lines.render(); }), 64, 55), White);
}

TEST_F(LinesTest, NoObjectsAreLeftBehind)
{
    const auto objectCount = [] {
        int count = 0;
        for (unsigned int name = 1; name < 1000; ++name) {
            count += (glIsBuffer(name) == GL_TRUE ? 1 : 0) + (glIsVertexArray(name) == GL_TRUE ? 1 : 0);
        }
        return count;
    };
    const int before = objectCount();
    {
        LineStrips strips;
        strips.addVertex(Vector2<float>(10.0f, 20.0f), {1.0f, 0.0f, 0.0f, 1.0f});
        strips.addVertex(Vector2<float>(90.0f, 20.0f), {1.0f, 0.0f, 0.0f, 1.0f});
        Lines lines;
        lines.setRect(20, 20);
        picture([&] {
            strips.render(-1);
            lines.render();
        });
        EXPECT_EQ(objectCount(), before + 5 + 2);
        strips.clear();
        lines.clear();
        EXPECT_EQ(objectCount(), before);
        picture([&] {
            strips.render(-1);
            lines.render();
        });
    }
    EXPECT_EQ(objectCount(), before);
}

TEST_F(LinesTest, ErrorsOfDrawingArePrintedOnce)
{
    expectGlErrors();
    const Points points = {{10.0f, 20.0f}, {60.0f, 20.0f}};
    LineStrips strips;
    strips.addLineStrip(points);
    LineStripsSimple simple;
    simple.addLineStrip(points);
    LineLoops loops;
    loops.addLineLoop(points);
    Lines lines;
    lines.addVertex(points[0]);
    lines.addVertex(points[1]);
    struct Case
    {
        const char* printed;
        std::function<void()> render;
    };
    const Case cases[] = {
        {"Error <LineStrips> <void Tavik::OpenGL::LineStrips::render(int)> 1286\n", [&] { strips.render(-1); }},
        {"Error <LineStripsSimple> <void Tavik::OpenGL::LineStripsSimple::render(int)> 1286\n",
         [&] { simple.render(-1); }},
        {"Error <LineLoops> <void Tavik::OpenGL::LineLoops::render(double)> 1286\n", [&] { loops.render(1.0); }},
        {"Error <Lines> <void Tavik::OpenGL::Lines::render()> 1286\n", [&] { lines.render(); }},
    };
    withIncompleteFramebuffer([&] {
        for (const Case& c : cases) {
            testing::internal::CaptureStdout();
            c.render();
            EXPECT_EQ(testing::internal::GetCapturedStdout(), c.printed);
        }
    });
}
