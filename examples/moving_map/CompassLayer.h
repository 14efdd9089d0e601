#pragma once

#include <moving_map/LabelPlacement.h>
#include <moving_map/Scene.h>
#include <moving_map/Text.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/Lines.h>
#include <tavik/opengl/Polygon.h>

#include <optional>
#include <vector>

namespace MovingMap {

/// The compass rose about the aircraft, whose rim is the outer range ring: a tick each 5 degrees, longer each 10 and
/// 30, upright numbers each 30, a lubber mark at the track, and a ring at half the range.
///
/// The rose is made anew only when its radius changes, and turned by its matrix; the numbers when the view or the
/// aircraft moves.
class CompassLayer
{
public:
    CompassLayer() : mNumbers(Palette::Text) {}

    void render(const Scene& scene);

    /// Adds where its numbers stand, in pixels of the map.
    static void addNumbers(const Scene& scene, std::vector<Box>& boxes);

    /// Radius of the rim in pixels.
    static float radius(const Scene& scene);

private:
    void build(float radius);
    void writeNumbers(const Scene& scene);

    float mRadius = 0.0f;         // for which it was built
    std::optional<MapView> mView; // for which the numbers were written
    Position mAircraft;           // likewise
    Tavik::OpenGL::LineLoops mRim;
    Tavik::OpenGL::LineLoops mHalf;
    Tavik::OpenGL::Lines mTicks;
    Tavik::OpenGL::LineLoops mLubberEdge;
    Tavik::OpenGL::Polygon mLubber;
    TextBatch mNumbers;
};

} // namespace MovingMap
