#include "LineTest.h"

#include <tavik/opengl/Circle.h>
#include <tavik/opengl/Polygon.h>
#include <tavik/opengl/TriangleStrip.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <set>

using namespace Tavik::OpenGL;
using Tavik::Math::Vector2;
using Tavik::Math::Vector3;
using Tavik::Math::Vector4;

namespace {

const Vector4<float> HalfWhite = {1.0f, 1.0f, 1.0f, 0.5f};

Points square(float left, float bottom, float size)
{
    return {{left, bottom}, {left + size, bottom}, {left + size, bottom + size}, {left, bottom + size}};
}

Points turnedRound(Points points)
{
    return {points.rbegin(), points.rend()};
}

Tesselator::TessPolygon cut(const std::vector<Points>& contours)
{
    Tesselator tesselator;
    for (const Points& contour : contours) {
        tesselator.beginContour();
        for (const Vector2<float> corner : contour) {
            tesselator.addVertex(corner);
        }
    }
    return tesselator.tesselate();
}

double triangleArea(Vector3<float> a, Vector3<float> b, Vector3<float> c)
{
    const Vector3<double> u(b.x - a.x, b.y - a.y, b.z - a.z);
    const Vector3<double> v(c.x - a.x, c.y - a.y, c.z - a.z);
    return 0.5 * std::sqrt(std::pow(u.y * v.z - u.z * v.y, 2) + std::pow(u.z * v.x - u.x * v.z, 2) +
                           std::pow(u.x * v.y - u.y * v.x, 2));
}

// Of all triangles, and each must belong to a primitive of a kind that fills.
double area(const Tesselator::TessPolygon& polygon)
{
    double sum = 0.0;
    std::size_t vertexCount = 0;
    for (const auto& primitive : polygon.primitives()) {
        EXPECT_EQ(primitive.startPosition, vertexCount);
        vertexCount += primitive.vertexCount;
        const Vector3<float>* v = polygon.vertices().data() + primitive.startPosition;
        const unsigned int step = primitive.mode == GL_TRIANGLES ? 3 : 1;
        EXPECT_TRUE(primitive.mode >= GL_TRIANGLES && primitive.mode <= GL_TRIANGLE_FAN) << primitive.mode;
        for (unsigned int i = 0; i + 2 < primitive.vertexCount; i += step) {
            sum += triangleArea(primitive.mode == GL_TRIANGLE_FAN ? v[0] : v[i], v[i + 1], v[i + 2]);
        }
    }
    EXPECT_EQ(vertexCount, polygon.vertices().size());
    return sum;
}

class FilledShapesTest : public LineTest
{
protected:
    static Picture polygon(const std::vector<std::vector<Points>>& areas)
    {
        Polygon drawn;
        drawn.setColor(HalfWhite);
        for (const std::vector<Points>& contours : areas) {
            drawn.addTessPolygon(cut(contours));
        }
        return picture([&] { drawn.render(); });
    }
};

} // namespace

TEST(Tesselator, FillsWhatTheContoursWindAround)
{
    const Points pentagram = {{0.0f, 10.0f}, {5.878f, -8.09f}, {-9.511f, 3.09f}, {9.511f, 3.09f}, {-5.878f, -8.09f}};
    struct Case
    {
        const char* name;
        std::vector<Points> contours;
        double area;
    };
    const Case cases[] = {
        {"triangle", {{{0.0f, 0.0f}, {4.0f, 0.0f}, {0.0f, 6.0f}}}, 12.0},
        {"concave", {{{0.0f, 0.0f}, {8.0f, 0.0f}, {8.0f, 8.0f}, {4.0f, 2.0f}, {0.0f, 8.0f}}}, 40.0},
        {"clockwise", {turnedRound(square(0.0f, 0.0f, 5.0f))}, 25.0},
        {"figure-eight", {{{0.0f, 0.0f}, {8.0f, 8.0f}, {8.0f, 0.0f}, {0.0f, 8.0f}}}, 32.0},
        {"lobes wound the same way",
         {{{0.0f, 0.0f},
           {9.0f, 0.0f},
           {9.0f, 9.0f},
           {3.0f, 9.0f},
           {3.0f, 3.0f},
           {6.0f, 3.0f},
           {6.0f, 6.0f},
           {0.0f, 6.0f}}},
         6.0 * 9.0 + 3.0 * 6.0},
        {"pentagram, middle and all", {pentagram}, 112.26},
        {"twice around the first corner",
         {{{8.0f, 18.0f}, {16.0f, 14.0f}, {4.0f, 21.0f}, {19.0f, 7.0f}, {18.0f, 23.0f}}},
         89.5385},
        {"through the first corner",
         {{{0.0f, 0.0f}, {2.0f, 0.0f}, {2.0f, 2.0f}, {0.0f, 0.0f}, {2.0f, 0.0f}, {2.0f, 2.0f}}},
         2.0},
        {"hole", {square(0.0f, 0.0f, 10.0f), turnedRound(square(2.0f, 2.0f, 5.0f))}, 75.0},
        {"no hole the same way round", {square(0.0f, 0.0f, 10.0f), square(2.0f, 2.0f, 5.0f)}, 100.0},
        {"island in a hole",
         {square(0.0f, 0.0f, 10.0f), turnedRound(square(1.0f, 1.0f, 8.0f)), square(3.0f, 3.0f, 2.0f)},
         40.0},
        {"apart", {square(0.0f, 0.0f, 3.0f), square(20.0f, 0.0f, 4.0f)}, 25.0},
        {"overlapping", {square(0.0f, 0.0f, 4.0f), square(2.0f, 2.0f, 4.0f)}, 28.0},
        {"empty and small contours",
         {{}, {}, square(0.0f, 0.0f, 3.0f), {}, {{9.0f, 9.0f}}, {{5.0f, 5.0f}, {7.0f, 5.0f}}},
         9.0},
        {"broken corners left out",
         {{{NaN, 1.0f}, {0.0f, 0.0f}, {INFINITY, 0.0f}, {4.0f, 0.0f}, {4.0f, 4.0f}, {9.0f, -INFINITY}, {0.0f, 4.0f}}},
         16.0},
        {"nothing", {}, 0.0},
        {"flat", {{{0.0f, 0.0f}, {4.0f, 4.0f}, {2.0f, 2.0f}, {1.0f, 1.0f}}}, 0.0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_NEAR(area(cut(c.contours)), c.area, 0.005);
    }
    Tesselator upright; // a profile: any plane will do
    for (const Vector2<float> corner : square(1.0f, 2.0f, 3.0f)) {
        upright.addVertex(Vector4<float>(corner.x, 7.0f, corner.y, 1.0f));
    }
    EXPECT_NEAR(area(upright.tesselate()), 9.0, 1e-6);
    EXPECT_NEAR(area(upright.tesselate()), 9.0, 1e-6) << "the vertices stay";
    upright.clearVertex();
    EXPECT_TRUE(upright.tesselate().primitives().empty());
}

TEST(Tesselator, HostileOutlinesEndSoon)
{
    // Seconds, and hundreds of megabytes, are what a few thousand edges at random would take.
    Points star;
    for (int i = 0; i < 4001; ++i) {
        const double angle = 2.0 * M_PI * i * 2000 / 4001;
        star.emplace_back(static_cast<float>(1000.0 * std::sin(angle)), static_cast<float>(1000.0 * std::cos(angle)));
    }
    EXPECT_TRUE(cut({star}).primitives().empty());
    star.resize(201);
    EXPECT_FALSE(cut({star}).primitives().empty());
    Points coast; // as large, but its edges do not cross
    for (int i = 0; i < 4000; ++i) {
        const double radius = i % 2 == 0 ? 1000.0 : 900.0;
        const double angle = 2.0 * M_PI * i / 4000;
        coast.emplace_back(static_cast<float>(radius * std::sin(angle)), static_cast<float>(radius * std::cos(angle)));
    }
    EXPECT_NEAR(area(cut({coast})), M_PI * 1000.0 * 900.0, 100.0);
    Points shuttle = {{0.0f, 1.0f}}; // to and fro along one line
    std::vector<Points> cells;       // as many edges that lie on each other, but only two and two
    for (int i = 0; i < 4000; ++i) {
        shuttle.emplace_back(static_cast<float>(i * 7919 % 4000), 0.0f);
        const int row = i / 64;
        cells.push_back(square(static_cast<float>(i % 64), static_cast<float>(row), 1.0f));
    }
    EXPECT_TRUE(cut({shuttle}).primitives().empty());
    EXPECT_NEAR(area(cut(cells)), 4000.0, 1e-3);

    constexpr float Huge = std::numeric_limits<float>::max();
    constexpr float Tiny = std::numeric_limits<float>::denorm_min();
    const float values[] = {0.0f, 1.0f, -1.0f, Huge, -Huge, Tiny, -Tiny, 1e20f, -1e-20f, INFINITY, NaN};
    std::mt19937 random(1);
    for (int run = 0; run < 2000; ++run) {
        Tesselator tesselator;
        for (auto i = random() % 30; i > 0; --i) {
            tesselator.addVertex(Vector3<float>(values[random() % 11], values[random() % 11],
                                                run % 2 == 0 ? 0.0f : values[random() % 11]));
            if (random() % 10 == 0) {
                tesselator.beginContour();
            }
        }
        for (const Vector3<float>& vertex : tesselator.tesselate().vertices()) {
            ASSERT_TRUE(std::isfinite(vertex.x) && std::isfinite(vertex.y) && std::isfinite(vertex.z)) << run;
        }
    }
}

TEST_F(FilledShapesTest, PolygonsFillTheirAreasOnce)
{
    const std::vector<Points> frame = {square(10.0f, 10.0f, 100.0f), turnedRound(square(30.0f, 30.0f, 40.0f))};
    const std::vector<Points> star = {
        {{64.0f, 120.0f}, {90.0f, 20.0f}, {20.0f, 84.0f}, {108.0f, 84.0f}, {38.0f, 20.0f}}};
    const Picture framed = polygon({frame});
    EXPECT_EQ(litPixels(framed), 100 * 100 - 40 * 40);
    EXPECT_EQ(litPixels(framed, 30, 30, 70, 70), 0);
    const Picture starred = polygon({star});
    for (const Picture& drawn : {framed, starred}) { // half white, nowhere twice: no edge between triangles shows
        for (int y = 0; y < Size; ++y) {
            for (int x = 0; x < Size; ++x) {
                if (isLit(drawn, x, y)) {
                    ASSERT_NEAR(at(drawn, x, y)[0], (255 + 51) / 2.0, 1) << x << ", " << y;
                }
            }
        }
    }
    EXPECT_TRUE(isLit(starred, 64, 64)) << "the middle of the star, which the outline goes around twice";

    const Picture both = polygon({frame, star}); // both show where they overlap
    EXPECT_NEAR(at(both, 64, 90)[0], (255 + 153) / 2.0, 2);
    EXPECT_EQ(at(both, 12, 12), at(framed, 12, 12));
    EXPECT_EQ(at(both, 64, 64), at(starred, 64, 64));
}

TEST_F(FilledShapesTest, AreasOfOneObjectDrawAsThoseOfMany)
{
    for (const float lift : {0.0f, 0.1f}) { // on one level, and each above the one before
        std::vector<Polygon> alone;
        Polygon together;
        together.setColor(HalfWhite);
        std::set<unsigned int> modes;
        for (int i = 0; i < 6; ++i) {
            Tesselator tesselator;
            for (int corner = 0; corner < 40; ++corner) { // saw teeth round a circle: primitives of several kinds
                const double angle = 2.0 * M_PI * corner / 40.0;
                const double radius = corner % 2 == 0 ? 40.0 : 25.0 + 2.0 * i;
                tesselator.addVertex(Vector3<float>(static_cast<float>(50.0 + 5.0 * i + radius * std::sin(angle)),
                                                    static_cast<float>(60.0 + radius * std::cos(angle)),
                                                    lift * static_cast<float>(i)));
            }
            const Tesselator::TessPolygon cut = tesselator.tesselate();
            for (const auto& primitive : cut.primitives()) {
                modes.insert(primitive.mode);
            }
            together.addTessPolygon(cut);
            alone.emplace_back();
            alone.back().setColor(HalfWhite);
            alone.back().addTessPolygon(cut);
        }
        EXPECT_GT(modes.size(), 1u);
        const Picture expected = picture([&] {
            for (Polygon& polygon : alone) {
                polygon.render();
            }
        });
        EXPECT_TRUE(samePicture(picture([&] { together.render(); }), expected)) << lift;
    }
}

TEST_F(FilledShapesTest, ChangesShowAtTheNextRender)
{
    Polygon shape;
    EXPECT_EQ(litPixels(picture([&] { shape.render(); })), 0);
    shape.init(); // of nothing
    shape.addTessPolygon(cut({square(10.0f, 10.0f, 20.0f)}));
    EXPECT_EQ(litPixels(picture([&] { shape.render(); })), 400);
    shape.clear();
    EXPECT_EQ(litPixels(picture([&] { shape.render(); })), 400) << "from new OpenGL objects";
    shape.addTessPolygon(cut({square(40.0f, 10.0f, 10.0f)}));
    EXPECT_EQ(litPixels(picture([&] { shape.render(); })), 500);
    shape.setColor(Red);
    Polygon moved = std::move(shape);
    EXPECT_EQ(at(picture([&] { moved.render(); }), 45, 15), (Picture::Pixel{255, 0, 0, 255}));
    moved.clearVertex();
    EXPECT_EQ(litPixels(picture([&] { moved.render(); })), 0);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
}

TEST_F(FilledShapesTest, PatternIsFixedToTheWindow)
{
    std::array<std::uint32_t, 32> rows;
    for (std::uint32_t row = 0; row < rows.size(); ++row) {
        rows[row] = 0x80000001u * (row + 3) ^ (row << 9); // no symmetry that could hide a swap
    }
    const std::array<std::uint32_t, 32> ones = [] {
        std::array<std::uint32_t, 32> all;
        all.fill(~0u);
        return all;
    }();
    Polygon polygon;
    polygon.addTessPolygon(cut({square(-50.0f, -50.0f, 100.0f)}));
    Circle circle;
    circle.setCircle(80.0, 32);
    TriangleStrip strip;
    for (const Vector2<float> corner :
         {Vector2<float>(-50.0f, -50.0f), {-50.0f, 50.0f}, {50.0f, -50.0f}, {50.0f, 50.0f}}) {
        strip.addVertex(corner);
    }
    struct Case
    {
        const char* name;
        std::function<void(const unsigned char*)> setPattern;
        std::function<void()> render;
    };
    for (const Case& c : {Case{"Polygon", [&](auto p) { polygon.setPattern(p); }, [&] { polygon.render(); }},
                          Case{"Circle", [&](auto p) { circle.setPattern(p); }, [&] { circle.render(); }},
                          Case{"TriangleStrip", [&](auto p) { strip.setPattern(p); }, [&] { strip.render(); }}}) {
        SCOPED_TRACE(c.name);
        const auto drawnAt = [&](double x, double y) {
            MatrixPush();
            MatrixTranslate(x, y, 0.0);
            Picture drawn = picture(c.render);
            MatrixPop();
            return drawn;
        };
        const Picture solid = drawnAt(60.0, 60.0);
        EXPECT_EQ(litPixels(solid, 20, 20, 100, 100), 80 * 80);
        c.setPattern(reinterpret_cast<const unsigned char*>(rows.data()));
        for (const double shift : {60.0, 67.0}) {
            const Picture drawn = drawnAt(shift, shift);
            for (int y = 20; y < 100; ++y) {
                const std::uint32_t row = rows[static_cast<std::size_t>(y) % rows.size()];
                for (int x = 20; x < 100; ++x) {
                    ASSERT_EQ(isLit(drawn, x, y), ((row >> (x % 32)) & 1) != 0) << x << ", " << y;
                }
            }
        }
        c.setPattern(reinterpret_cast<const unsigned char*>(ones.data()));
        EXPECT_TRUE(samePicture(drawnAt(60.0, 60.0), solid));
        c.setPattern(reinterpret_cast<const unsigned char*>(rows.data()));
        c.setPattern(nullptr);
        EXPECT_TRUE(samePicture(drawnAt(60.0, 60.0), solid));
    }
}

TEST_F(FilledShapesTest, CirclesAreAsRoundAsAskedFor)
{
    MatrixTranslate(64.0, 64.0, 0.0);
    struct Case
    {
        double radius;
        unsigned int segments;
        double area;
    };
    for (const Case& c : {Case{40.0, 0, 0.0}, Case{40.0, 1, 0.0}, Case{40.0, 2, 0.0}, Case{40.0, 4, 2.0 * 40.0 * 40.0},
                          Case{50.0, 64, M_PI * 50.0 * 50.0}, Case{50.0, 0xFFFFFFFF, M_PI * 50.0 * 50.0},
                          Case{-40.0, 4, 2.0 * 40.0 * 40.0}, Case{std::nan(""), 16, 0.0}, Case{INFINITY, 16, 0.0},
                          Case{1e300, 16, 0.0}}) {
        Circle circle;
        circle.setColor(Red);
        circle.setCircle(c.radius, c.segments);
        const Picture drawn = picture([&] { circle.render(); });
        EXPECT_NEAR(litPixels(drawn), c.area, 0.005 * c.area) << c.radius << ", " << c.segments;
        circle.clear();
        EXPECT_TRUE(samePicture(picture([&] { circle.render(); }), drawn));
        circle.clearVertex();
        EXPECT_EQ(litPixels(picture([&] { circle.render(); })), 0);
    }
    Circle quarter; // the rim begins at the top and goes clockwise
    quarter.setCircle(-40.0, 3);
    const Picture down = picture([&] { quarter.render(); });
    EXPECT_TRUE(isLit(down, 64, 64 - 38));
    EXPECT_FALSE(isLit(down, 64, 64 + 38));
}

TEST_F(FilledShapesTest, StripsTakeOneColorOrOneForEachVertex)
{
    TriangleStrip strip;
    strip.addVertex(Vector2<float>(10.0f, 10.0f));
    EXPECT_EQ(litPixels(picture([&] { strip.render(); })), 0);
    strip.setRect(100, 60);
    EXPECT_EQ(litPixels(picture([&] { strip.render(); })), 100 * 60);
    EXPECT_EQ(at(picture([&] { strip.render(); }), 50, 30), White);
    strip.clear();
    EXPECT_EQ(litPixels(picture([&] { strip.render(); })), 100 * 60);

    strip.clearVertex();
    strip.setColor({0.0f, 1.0f, 0.0f, 1.0f});
    strip.setUseMultiColor(true);
    strip.addVertex(Vector2<float>(0.0f, 0.0f), Red);
    strip.addVertex(Vector3<float>(0.0f, 128.0f, 0.0f), Red);
    strip.addVertex(Vector4<float>(128.0f, 0.0f, 0.0f, 1.0f), Blue);
    strip.addVertex(Vector2<float>(128.0f, 128.0f), Blue);
    const Picture colored = picture([&] { strip.render(); });
    for (const int x : {0, 32, 64, 127}) {
        EXPECT_NEAR(at(colored, x, 100)[2], 255.0 * (x + 0.5) / 128.0, 2) << x;
        EXPECT_EQ(at(colored, x, 100)[1], 0) << x;
    }
    strip.addVertex(Vector2<float>(128.0f, 128.0f)); // without colour: one for all
    EXPECT_EQ(at(picture([&] { strip.render(); }), 64, 64), (Picture::Pixel{0, 255, 0, 255}));
    strip.setRect(128, 128); // again as many as there are colours
    EXPECT_TRUE(samePicture(picture([&] { strip.render(); }), colored));
}

TEST_F(FilledShapesTest, BrokenVerticesSpoilOnlyTheirTriangles)
{
    TriangleStrip strip;
    for (const Vector2<float> corner : square(20.0f, 20.0f, 40.0f)) {
        strip.addVertex(corner); // two triangles
    }
    const Picture whole = picture([&] { strip.render(); });
    EXPECT_GT(litPixels(whole), 0);
    for (const float broken : {NaN, INFINITY, -INFINITY}) {
        strip.addVertex(Vector2<float>(broken, 100.0f));
        strip.addVertex(Vector3<float>(100.0f, 100.0f, broken));
        EXPECT_TRUE(samePicture(picture([&] { strip.render(); }), whole)) << broken;
    }
}

TEST_F(FilledShapesTest, ErrorsOfDrawingArePrintedOnce)
{
    expectGlErrors();
    Polygon polygon;
    polygon.addTessPolygon(cut({square(0.0f, 0.0f, 9.0f)}));
    Circle circle;
    circle.setCircle(9.0, 9);
    TriangleStrip strip;
    strip.setRect(9, 9);
    struct Case
    {
        const char* printed;
        std::function<void()> render;
    };
    const Case cases[] = {
        {"Error <Polygon> <void Tavik::OpenGL::Polygon::render()> 1286\n", [&] { polygon.render(); }},
        {"Error <Circle> <void Tavik::OpenGL::Circle::render()> 1286\n", [&] { circle.render(); }},
        {"Error <glDrawArrays> <void Tavik::OpenGL::TriangleStrip::render()> 1286\n", [&] { strip.render(); }},
    };
    withIncompleteFramebuffer([&] {
        for (const Case& c : cases) {
            testing::internal::CaptureStdout();
            c.render();
            EXPECT_EQ(testing::internal::GetCapturedStdout(), c.printed);
        }
    });
}
