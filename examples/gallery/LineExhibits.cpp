#include <gallery/Colors.h>
#include <gallery/Exhibits.h>

#include <tavik/geodetic/Turns.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/LineStripsSimple.h>
#include <tavik/opengl/Lines.h>

#include <array>
#include <cmath>
#include <vector>

namespace Gallery {

namespace {

constexpr float Turn = 6.2831853f; // radians

std::vector<Point> regularPolygon(Point centre, float radius, int corners, float inner = 1.0f)
{
    std::vector<Point> points;
    for (int i = 0; i < corners; ++i) {
        const float angle = Turn * static_cast<float>(i) / static_cast<float>(corners);
        const float reach = i % 2 == 0 ? radius : radius * inner;
        points.emplace_back(centre.x + reach * std::sin(angle), centre.y + reach * std::cos(angle));
    }
    return points;
}

/// A route of three legs with the turns between them, as it is flown.
std::vector<Point> flownRoute(float shiftY)
{
    using Tavik::Math::Vector2;
    const std::array<Vector2<double>, 4> fixes = {
        {{30.0, 40.0 + shiftY}, {140.0, 150.0 + shiftY}, {260.0, 60.0 + shiftY}, {370.0, 120.0 + shiftY}}};
    std::vector<Point> route = {{static_cast<float>(fixes[0].x), static_cast<float>(fixes[0].y)}};
    bool limited = false;
    for (std::size_t i = 1; i + 1 < fixes.size(); ++i) {
        for (const auto& p : Tavik::Geodetic::calcFlyByPoints(fixes[i - 1], fixes[i], fixes[i + 1], 45.0, 2, limited)) {
            route.emplace_back(static_cast<float>(p.x), static_cast<float>(p.y));
        }
    }
    route.emplace_back(static_cast<float>(fixes.back().x), static_cast<float>(fixes.back().y));
    return route;
}

} // namespace

/// A fan of widths from 1.5 to 12 pixels, and stipples that begin anew with each segment.
void drawLines()
{
    constexpr std::array<float, 8> Widths = {1.5f, 2.0f, 3.0f, 4.0f, 5.5f, 7.0f, 9.0f, 12.0f};
    for (std::size_t i = 0; i < Widths.size(); ++i) {
        const float part = static_cast<float>(i) / 7.0f;
        const float angle = 0.25f * Turn * part;
        Tavik::OpenGL::Lines line;
        line.setLineWidth(Widths[i]);
        line.setColor(mixed(Cyan, Magenta, part));
        line.addVertex(Point(20.0f + 70.0f * std::cos(angle), 90.0f + 70.0f * std::sin(angle)));
        line.addVertex(Point(20.0f + 190.0f * std::cos(angle), 90.0f + 190.0f * std::sin(angle)));
        line.render();
    }
    constexpr std::array<unsigned short, 5> Stipples = {0x0000, 0xFFFF, 0x0F0F, 0x3333, 0x00FF};
    for (std::size_t i = 0; i < Stipples.size(); ++i) {
        const float y = 30.0f + 26.0f * static_cast<float>(i);
        Tavik::OpenGL::Lines pair;
        pair.setLineWidth(4.0f);
        pair.setStipple(Stipples[i]);
        pair.setColor(White);
        for (const float x : {235.0f, 385.0f, 235.0f, 385.0f}) {
            pair.addVertex(Point(x, y));
        }
        pair.render();
    }
}

/// Three routes with turns: solid over a dark edge, stippled, and in colours from vertex to vertex.
void drawLineStrips()
{
    Tavik::OpenGL::LineStrips edge;
    edge.setColor({0.0f, 0.0f, 0.0f, 1.0f});
    edge.setLineWidth(11.0f);
    edge.addLineStrip(flownRoute(130.0f));
    edge.render(-1);

    Tavik::OpenGL::LineStrips solid;
    solid.setColor(Magenta);
    solid.setLineWidth(6.0f);
    solid.addLineStrip(flownRoute(130.0f));
    solid.render(-1);

    Tavik::OpenGL::LineStrips stippled;
    stippled.setColor(White);
    stippled.setLineWidth(3.0f);
    stippled.setStipple(0x0FFF);
    stippled.addLineStrip(flownRoute(65.0f));
    stippled.render(-1);

    Tavik::OpenGL::LineStrips colored;
    colored.setUseMultiColor(true);
    colored.setLineWidth(8.0f);
    for (const Point& point : flownRoute(0.0f)) {
        colored.addVertex(point, mixed(Blue, Amber, (point.x - 30.0f) / 340.0f));
    }
    colored.render(-1);
}

/// Hairlines, many at a time: contours of a made-up hill.
void drawLineStripsSimple()
{
    Tavik::OpenGL::LineStripsSimple contours;
    contours.setLineWidth(1.5f);
    contours.setUseMultiColor(true);
    for (int level = 0; level < 16; ++level) {
        const float radius = 8.0f + 9.0f * static_cast<float>(level);
        for (int i = 0; i <= 120; ++i) {
            const float angle = Turn * static_cast<float>(i) / 120.0f;
            const float bulge = 1.0f + 0.12f * std::sin(3.0f * angle + 0.2f * static_cast<float>(level)) +
                                0.05f * std::cos(5.0f * angle);
            const Point point(200.0f + 1.2f * radius * bulge * std::sin(angle),
                              150.0f + 0.85f * radius * bulge * std::cos(angle));
            contours.addVertex(point, mixed(White, Green, static_cast<float>(level) / 15.0f));
        }
        contours.addLineStrip(std::vector<Point>()); // ends the contour
    }
    contours.render(-1);
}

/// Closed outlines, whose last corner is joined like the others.
void drawLineLoops()
{
    Tavik::OpenGL::LineLoops outlines;
    outlines.setColor(Amber);
    outlines.setLineWidth(7.0f);
    outlines.addLineLoop(regularPolygon({85.0f, 205.0f}, 60.0f, 3));
    outlines.addLineLoop(regularPolygon({215.0f, 220.0f}, 55.0f, 6));
    outlines.addLineLoop(regularPolygon({330.0f, 220.0f}, 60.0f, 10, 0.45f));
    outlines.render(1.0);

    Tavik::OpenGL::LineLoops rings;
    rings.setColor(Cyan);
    rings.setLineWidth(2.5f);
    rings.setStipple(0x0FFF);
    for (const float radius : {22.0f, 40.0f, 58.0f}) {
        rings.addLineLoop(regularPolygon({200.0f, 75.0f}, radius, 90));
    }
    rings.render(1.0);
}

} // namespace Gallery
