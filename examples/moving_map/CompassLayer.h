#pragma once

#include <moving_map/Scene.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/Lines.h>
#include <tavik/opengl/Polygon.h>

#include <array>

namespace MovingMap {

/// The compass rose about the aircraft, whose rim is the outer range ring: a tick each 5 degrees, longer each 10 and
/// 30, a lubber mark at the track, and a ring at half the range. Its numbers are labels of the map.
///
/// The rose is made anew only when its radius changes, and turned by its matrix.
class CompassLayer
{
public:
    void render(const Scene& scene);

    /// Radius of the rim in pixels.
    static float radius(const Scene& scene);

    struct Number
    {
        int bearing;
        const char* text; ///< tens of degrees, or a letter
    };
    static const std::array<Number, 12> Numbers;

    /// The middle of the number at a bearing, in pixels of the map.
    static MapView::Pixel numberPlace(const Scene& scene, int bearing);

    /// Whether the rose is large enough for that number.
    static bool showsNumber(const Scene& scene, int bearing);

private:
    void build(float radius);

    float mRadius = 0.0f; // for which it was built
    Tavik::OpenGL::LineLoops mRim;
    Tavik::OpenGL::LineLoops mHalf;
    Tavik::OpenGL::Lines mTicks;
    Tavik::OpenGL::LineLoops mLubberEdge;
    Tavik::OpenGL::Polygon mLubber;
};

} // namespace MovingMap
