#include <gallery/Colors.h>
#include <gallery/Exhibits.h>
#include <gallery/Patterns.h>

#include <tavik/opengl/Circle.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/Lines.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/Polygon.h>
#include <tavik/opengl/Tesselator.h>
#include <tavik/opengl/TriangleStrip.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace Gallery {

namespace {

namespace GL = Tavik::OpenGL;

constexpr float Turn = 6.2831853f; // radians

void drawPolygonOf(const GL::Tesselator::TessPolygon& shape, Color color, Pattern pattern)
{
    GL::Polygon polygon;
    polygon.addTessPolygon(shape);
    polygon.setColor(color);
    polygon.setPattern(pattern.data());
    polygon.render();
    color.w = 0.35f; // the gaps of the pattern keep a hint of the colour
    polygon.setPattern(nullptr);
    polygon.setColor(color);
    polygon.render();
}

void drawDisc(Point centre, double radius, unsigned int segments, Color color)
{
    GL::Circle circle;
    circle.setCircle(radius, segments);
    circle.setColor(color);
    GL::MatrixPush();
    GL::MatrixTranslate(centre.x, centre.y, 0.0);
    circle.render();
    GL::MatrixPop();
}

} // namespace

/// A ribbon in colours from vertex to vertex, and one colour through patterns.
void drawTriangleStrip()
{
    GL::TriangleStrip ribbon;
    ribbon.setUseMultiColor(true);
    for (int i = 0; i <= 72; ++i) {
        const float part = static_cast<float>(i) / 72.0f;
        const float x = 20.0f + 360.0f * part;
        const float y = 215.0f + 32.0f * std::sin(1.5f * Turn * part);
        ribbon.addVertex(Point(x, y - 30.0f), mixed(Blue, Magenta, part));
        ribbon.addVertex(Point(x, y + 30.0f), mixed(Cyan, Amber, part));
    }
    ribbon.render();

    const std::array<Pattern, 3> patterns = {diagonalLines(), dots(), crosshatch()};
    const std::array<Color, 3> colors = {Green, Amber, Cyan};
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        GL::TriangleStrip rectangle;
        rectangle.setRect(110, 110);
        rectangle.setColor(colors[i]);
        Pattern pattern = patterns[i];
        rectangle.setPattern(pattern.data());
        GL::MatrixPush();
        GL::MatrixTranslate(20.0 + 125.0 * static_cast<double>(i), 20.0, 0.0);
        rectangle.render();
        GL::MatrixPop();
    }
}

/// A concave area, a pentagram that the winding rule fills whole, and an area with a hole.
void drawPolygon()
{
    GL::Tesselator concave;
    for (const Point& p : std::vector<Point>{
             {20, 20}, {185, 20}, {185, 130}, {140, 130}, {140, 65}, {105, 65}, {105, 130}, {60, 100}, {20, 130}}) {
        concave.addVertex(p);
    }
    drawPolygonOf(concave.tesselate(), Green, diagonalLines());

    GL::Tesselator pentagram;
    for (int i = 0; i < 5; ++i) {
        const float angle = Turn * static_cast<float>(2 * i) / 5.0f;
        pentagram.addVertex(Point(105.0f + 75.0f * std::sin(angle), 208.0f + 75.0f * std::cos(angle)));
    }
    drawPolygonOf(pentagram.tesselate(), Amber, dots());

    GL::Tesselator ring;
    for (int i = 0; i < 90; ++i) {
        const float angle = Turn * static_cast<float>(i) / 90.0f;
        const float radius = 85.0f + 8.0f * std::cos(6.0f * angle);
        ring.addVertex(Point(293.0f + radius * std::sin(angle), 150.0f + 1.3f * radius * std::cos(angle)));
    }
    ring.beginContour();
    for (int i = 0; i < 90; ++i) { // the other way round: a hole
        const float angle = -Turn * static_cast<float>(i) / 90.0f;
        ring.addVertex(Point(293.0f + 40.0f * std::sin(angle), 150.0f + 60.0f * std::cos(angle)));
    }
    drawPolygonOf(ring.tesselate(), Magenta, crosshatch());
}

/// Discs of few and of many segments, translucent where they overlap.
void drawCircle()
{
    const std::array<unsigned int, 6> segments = {3, 4, 5, 6, 8, 12};
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const float part = static_cast<float>(i) / 5.0f;
        drawDisc({44.0f + 62.0f * static_cast<float>(i), 245.0f}, 28.0, segments[i], mixed(Cyan, Blue, part));
    }
    Color color = Amber;
    color.w = 0.6f;
    drawDisc({140.0f, 110.0f}, 85.0, 96, color);
    color = Magenta;
    color.w = 0.6f;
    drawDisc({200.0f, 110.0f}, 85.0, 96, color);
    color = Cyan;
    color.w = 0.6f;
    drawDisc({260.0f, 110.0f}, 85.0, 96, color);
}

/// One set of ticks and one needle, turned and scaled into a compass card.
void drawMatrixStack()
{
    GL::Lines tick;
    tick.addVertex(Point(0.0f, 100.0f));
    tick.addVertex(Point(0.0f, 120.0f));
    GL::LineLoops needle;
    needle.addLineLoop(std::vector<Point>{{0, 105}, {10, 60}, {4, 60}, {4, -90}, {-4, -90}, {-4, 60}, {-10, 60}});
    needle.setLineWidth(3.0f);
    needle.setColor(Magenta);

    GL::MatrixPush();
    GL::MatrixTranslate(200.0, 150.0, 0.0);
    for (int bearing = 0; bearing < 360; bearing += 10) {
        const bool isLong = bearing % 30 == 0;
        GL::MatrixPush();
        GL::MatrixRotate(-bearing, 0.0, 0.0, 1.0);
        tick.setColor(isLong ? White : Grey);
        tick.setLineWidth(isLong ? 4.0f : 2.0f);
        tick.render();
        GL::MatrixPop();
    }
    GL::MatrixRotate(-40.0, 0.0, 0.0, 1.0);
    needle.render(1.0);
    GL::MatrixScale(0.5, 0.5, 1.0);
    GL::MatrixRotate(125.0, 0.0, 0.0, 1.0);
    needle.setColor(Cyan);
    needle.render(1.0);
    GL::MatrixPop();
}

} // namespace Gallery
