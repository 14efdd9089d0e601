#include <moving_map/TrafficLayer.h>

#include <moving_map/Pen.h>
#include <moving_map/Units.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>

namespace MovingMap {

namespace {

using Pixel = MapView::Pixel;

// Corners from the nose clockwise, pixels; the nose ahead is (0, 1).
constexpr std::array<Pixel, 4> Arrowhead = {{{0.0f, 13.0f}, {9.0f, -10.0f}, {0.0f, -5.0f}, {-9.0f, -10.0f}}};
constexpr std::array<Pixel, 4> Diamond = {{{0.0f, 11.0f}, {9.0f, 0.0f}, {0.0f, -11.0f}, {-9.0f, 0.0f}}};
constexpr std::array<std::size_t, 4> StripOrder = {1, 0, 2, 3}; // of the corners, as two triangles

constexpr float CasingWidth = 5.4f;
constexpr float LineWidth = 2.4f;
constexpr float Margin = 90.0f; // around the map, for the texts of aircraft just outside

constexpr int TextSize = 14;
constexpr float TagDistance = 22.0f;   // up or down from the symbol's middle
constexpr float ArrowDistance = 19.0f; // to the right of it
constexpr float ArrowLength = 16.0f;
constexpr float ArrowHead = 4.5f;
constexpr float CallsignDistance = 27.0f; // to the right of it

constexpr double NearMetres = 6.0 * MetresPerNauticalMile;
constexpr double NearHeightMetres = 1200.0 * MetresPerFoot;
constexpr double FarHeightMetres = 9900.0 * MetresPerFoot; // what two digits can tell
constexpr double ArrowClimb = 500.0 * MetresPerFoot / 60.0;

/// How much higher than the own ship it is, where both heights are known.
std::optional<double> heightAboveOwn(const Scene& scene, const Motion& motion)
{
    if (!motion.altitudeMetres || std::isnan(scene.altitudeMetres)) {
        return std::nullopt;
    }
    return *motion.altitudeMetres - scene.altitudeMetres;
}

bool isNear(const Scene& scene, const Motion& motion)
{
    const std::optional<double> above = heightAboveOwn(scene, motion);
    return (!above || std::abs(*above) <= NearHeightMetres) &&
           planeDistance(scene.aircraft.position, motion.position) <= NearMetres;
}

} // namespace

TrafficLayer::TrafficLayer() : mOld(Palette::OldTraffic), mFresh(Palette::Traffic) {}

void TrafficLayer::update(const Scene& scene, const std::vector<FeedPicture::Aircraft>& traffic)
{
    mOld.clear();
    mFresh.clear();
    const GeoBounds visible = scene.view.bounds(Margin);
    for (const FeedPicture::Aircraft& aircraft : traffic) {
        const Position position = aircraft.motion.position;
        const double above = heightAboveOwn(scene, aircraft.motion).value_or(0.0);
        if (!visible.mayTouch(position, position) || std::abs(above) > FarHeightMetres) {
            continue;
        }
        Batch& batch = aircraft.isOld ? mOld : mFresh;
        const Pixel place = scene.view.toPixel(position);
        batch.add(scene, aircraft.motion, place);
        batch.text.add(aircraft.callsign, place + Pixel(CallsignDistance, 0.0f), TextSize, TextAlign::Left);
    }
}

void TrafficLayer::render()
{
    mOld.render();
    mFresh.render();
}

TrafficLayer::Batch::Batch(Color lineColor) : color(lineColor), text(lineColor) {}

void TrafficLayer::Batch::clear()
{
    if (!isEmpty) {
        isEmpty = true;
        text.clear();
        outlines.clearVertex();
        arrows.clearVertex();
        fill.clearVertex();
    }
}

void TrafficLayer::Batch::add(const Scene& scene, const Motion& motion, Pixel place)
{
    isEmpty = false;
    const Pixel ahead = motion.trackDegrees ? scene.view.direction(*motion.trackDegrees) : Pixel(0.0f, 1.0f);
    const Pixel right(ahead.y, -ahead.x);
    corners.clear();
    for (const Pixel& corner : motion.trackDegrees ? Arrowhead : Diamond) {
        corners.push_back(place + right * corner.x + ahead * corner.y);
    }
    outlines.addLineLoop(corners);
    if (isNear(scene, motion)) {
        // Triangles without area lead from one symbol to the next.
        fill.addVertex(corners[StripOrder.front()]);
        for (const std::size_t corner : StripOrder) {
            fill.addVertex(corners[corner]);
        }
        fill.addVertex(corners[StripOrder.back()]);
    }
    if (const std::optional<double> above = heightAboveOwn(scene, motion)) {
        addTag(*above, place);
    }
    if (std::abs(motion.climbMetresPerSecond.value_or(0.0)) >= ArrowClimb) {
        const float up = *motion.climbMetresPerSecond > 0.0 ? 1.0f : -1.0f;
        addArrow(place + Pixel(ArrowDistance, 0.0f), up);
    }
}

/// Above the symbol of an aircraft that is higher, below that of a lower one.
void TrafficLayer::Batch::addTag(double metresAbove, Pixel place)
{
    const int hundreds = static_cast<int>(std::lround(metresAbove / MetresPerFoot / 100.0));
    char tag[8];
    std::snprintf(tag, sizeof(tag), hundreds == 0 ? "%02d" : "%+03d", hundreds);
    const float side = hundreds < 0 ? -1.0f : 1.0f;
    text.add(tag, place + Pixel(0.0f, side * TagDistance), TextSize, TextAlign::Centre);
}

/// @param up  1 for a climb, −1 for a descent
void TrafficLayer::Batch::addArrow(Pixel middle, float up)
{
    const Pixel tip = middle + Pixel(0.0f, 0.5f * up * ArrowLength);
    const Pixel ends[] = {middle * 2.0f - tip, tip + Pixel(ArrowHead, -up * ArrowHead),
                          tip + Pixel(-ArrowHead, -up * ArrowHead)};
    for (const Pixel& end : ends) {
        arrows.addVertex(end);
        arrows.addVertex(tip);
    }
}

void TrafficLayer::Batch::render()
{
    if (isEmpty) {
        return;
    }
    for (const Pen& pen : {Pen{Palette::Casing, CasingWidth}, Pen{color, LineWidth}}) {
        applyPen(outlines, pen);
        outlines.render(1.0);
        applyPen(arrows, pen);
        arrows.render();
    }
    fill.setColor(color);
    fill.render();
    text.render();
}

} // namespace MovingMap
