#include <moving_map/SymbolLayer.h>

#include <moving_map/Palette.h>

#include <GL/gl.h>

#include <string>

namespace MovingMap {

namespace {

using Tavik::OpenGL::VectorFont;
using Tavik::OpenGL::VectorSymbol;

constexpr double Size = 34.0; // nominal height of a character, pixels
constexpr float CasingWidth = 5.0f;
constexpr float LineWidth = 1.8f;

char symbolOf(FixKind kind, bool flyOver)
{
    switch (kind) {
    case FixKind::Vor:
        return VectorSymbol::Vor;
    case FixKind::Dme:
        return VectorSymbol::Dme;
    case FixKind::Vortac:
        return VectorSymbol::Vortac;
    case FixKind::Ndb:
        return VectorSymbol::Ndb;
    case FixKind::Airport:
        return VectorSymbol::Airport;
    case FixKind::Obstacle:
        return VectorSymbol::Obstacle;
    case FixKind::Intersection:
        return flyOver ? VectorSymbol::WaypointFlyOver : VectorSymbol::Intersection;
    case FixKind::Waypoint:
        break;
    }
    return flyOver ? VectorSymbol::WaypointFlyOver : VectorSymbol::WaypointFlyBy;
}

} // namespace

void SymbolLayer::render(const Scene& scene)
{
    if (mView != scene.view || mNextFix != scene.nextFix) {
        build(scene);
        mView = scene.view;
        mNextFix = scene.nextFix;
    }
    const std::array<Color, LookCount> colors = {scene.colors.station, scene.colors.obstacle, scene.colors.otherLeg,
                                                 scene.colors.activeLeg};
    for (std::size_t look = 0; look < LookCount; ++look) {
        mSymbols[look].setColor(Palette::Casing);
        glLineWidth(CasingWidth);
        mSymbols[look].render();
        mSymbols[look].setColor(colors[look]);
        glLineWidth(LineWidth);
        mSymbols[look].render();
    }
    glLineWidth(1.0f);
}

void SymbolLayer::build(const Scene& scene)
{
    for (VectorFont& symbols : mSymbols) {
        symbols.clearVertex();
    }
    mVisible = scene.view.bounds(2.0f * SymbolRadius);
    for (const Station& station : scene.route.stations) {
        add(station.kind == FixKind::Obstacle ? Obstacles : Stations, scene, station.position,
            symbolOf(station.kind, false));
    }
    const std::vector<PathFix>& fixes = scene.path.fixes();
    for (std::size_t i = 0; i < fixes.size(); ++i) {
        add(i == scene.nextFix ? ActiveFix : Fixes, scene, fixes[i].position,
            symbolOf(fixes[i].kind, fixes[i].flyOver));
    }
}

void SymbolLayer::add(Look look, const Scene& scene, Position position, char symbol)
{
    if (!mVisible.mayTouch(position, position)) {
        return;
    }
    const MapView::Pixel place = scene.view.toPixel(position);
    Tavik::Math::Matrix4<float> matrix;
    matrix.translate(place.x, place.y, 0.0f);
    mSymbols[look].addText(std::string(1, symbol), matrix, Size, VectorFont::MiddleCenter);
}

} // namespace MovingMap
