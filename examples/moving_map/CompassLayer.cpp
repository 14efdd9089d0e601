#include <moving_map/CompassLayer.h>

#include <moving_map/Pen.h>
#include <moving_map/Symbols.h>
#include <tavik/opengl/MatrixStack.h>

namespace MovingMap {

namespace {

using Pixel = MapView::Pixel;

constexpr float ShortTick = 6.0f;
constexpr float MiddleTick = 11.0f;
constexpr float LongTick = 16.0f;
constexpr float LubberSize = 15.0f;

constexpr float CasingPixels = 3.0f; // wider than the line that it stands under
constexpr float LineWidth = 2.0f;

constexpr std::uint16_t Dashes = 0xFFFF; // 16 pixels drawn, 16 left out

constexpr float NumberDistance = 13.0f; // from the ticks to its middle
constexpr float SmallestRadius = 90.0f; // with a number each 30 degrees

} // namespace

const std::array<CompassLayer::Number, 12> CompassLayer::Numbers = {{{0, "N"},
                                                                     {30, "3"},
                                                                     {60, "6"},
                                                                     {90, "E"},
                                                                     {120, "12"},
                                                                     {150, "15"},
                                                                     {180, "S"},
                                                                     {210, "21"},
                                                                     {240, "24"},
                                                                     {270, "W"},
                                                                     {300, "30"},
                                                                     {330, "33"}}};

float CompassLayer::radius(const Scene& scene)
{
    return static_cast<float>(scene.rangeMetres / scene.view.metresPerPixel());
}

void CompassLayer::render(const Scene& scene)
{
    const float radius = CompassLayer::radius(scene);
    if (radius != mRadius) {
        build(radius);
        mRadius = radius;
    }
    const Pixel place = scene.view.toPixel(scene.aircraft.position);
    Tavik::OpenGL::MatrixPush();
    Tavik::OpenGL::MatrixTranslate(place.x, place.y, 0.0);
    Tavik::OpenGL::MatrixRotate(scene.view.up(), 0.0, 0.0, 1.0);

    applyPen(mRim, {Palette::Casing, LineWidth + CasingPixels});
    mRim.render(1.0);
    applyPen(mTicks, {Palette::Casing, LineWidth + CasingPixels});
    mTicks.render();
    applyPen(mRim, {scene.colors.rings, LineWidth});
    mRim.render(1.0);
    applyPen(mTicks, {scene.colors.rings, LineWidth});
    mTicks.render();
    applyPen(mHalf, {scene.colors.rings, LineWidth, Dashes});
    mHalf.render(1.0);

    Tavik::OpenGL::MatrixRotate(-scene.aircraft.trackDegrees, 0.0, 0.0, 1.0);
    applyPen(mLubberEdge, {Palette::Casing, CasingPixels});
    mLubberEdge.render(1.0);
    mLubber.setColor(scene.colors.aircraft);
    mLubber.render();
    Tavik::OpenGL::MatrixPop();
}

Pixel CompassLayer::numberPlace(const Scene& scene, int bearing)
{
    const Pixel aircraft = scene.view.toPixel(scene.aircraft.position);
    return aircraft + scene.view.direction(bearing) * (radius(scene) - LongTick - NumberDistance);
}

bool CompassLayer::showsNumber(const Scene& scene, int bearing)
{
    return radius(scene) >= SmallestRadius || bearing % 90 == 0;
}

/// With north up, about the origin.
void CompassLayer::build(float radius)
{
    const Pixel centre;
    mRim.clearVertex();
    mRim.addLineLoop(Symbols::circle(centre, radius));
    mHalf.clearVertex();
    mHalf.addLineLoop(Symbols::circle(centre, 0.5f * radius));
    mTicks.clearVertex();
    for (int bearing = 0; bearing < 360; bearing += 5) {
        const LocalPlane::Point direction = directionOf(bearing);
        const Pixel outwards(static_cast<float>(direction.x), static_cast<float>(direction.y));
        const float length = bearing % 30 == 0 ? LongTick : bearing % 10 == 0 ? MiddleTick : ShortTick;
        mTicks.addVertex(outwards * radius);
        mTicks.addVertex(outwards * (radius - length));
    }
    const Pixel up(0.0f, 1.0f);
    const Symbols::Outline lubber = Symbols::pointer(up * radius, up * -1.0f, LubberSize);
    mLubberEdge.clearVertex();
    mLubberEdge.addLineLoop(lubber);
    mLubber.clearVertex();
    mLubber.addTessPolygon(Symbols::fill(lubber));
}

} // namespace MovingMap
