#pragma once

#include <moving_map/Area.h>
#include <moving_map/RouteProfile.h>
#include <moving_map/Scene.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/Lines.h>

#include <vector>

namespace MovingMap {

/// A section along the route: the ground below it in the colours of the contours, the planned heights, the aircraft.
///
/// The scale along the route is linear, and so is the one of heights, which leaves room above the highest of ground and
/// plan in the piece that is shown.
class ProfileChart
{
public:
    ProfileChart();

    /// The piece of the path that is shown, in metres flown.
    static double begin(const Scene& scene);
    static double end(const Scene& scene);

    /// @param area  of the window; the chart activates it
    void render(const Scene& scene, const RouteProfile& profile, const Area& area);

private:
    using Pixel = Tavik::Math::Vector2<float>;

    void setScale(const Scene& scene, const Area& area);
    float toX(double distanceMetres) const;
    float toY(double altitudeMetres) const;
    void renderGrid(const Scene& scene);
    void renderTerrain(const std::vector<float>& heights);
    std::vector<Pixel> planLine(const RoutePath& path, double from, double to) const;
    void renderPlan(const Scene& scene);
    void renderAircraft(const Scene& scene);

    Area mArea;
    double mBegin = 0.0;
    double mEnd = 1.0;
    double mTop = 1.0;
    std::vector<float> mHeights;

    Tavik::OpenGL::Lines mGrid;
    Tavik::OpenGL::Lines mSeaLevel;
    Tavik::OpenGL::LineStrips mGround;  // columns of colour
    Tavik::OpenGL::LineStrips mSurface; // the line on top of them
    Tavik::OpenGL::LineStrips mPlan;
    Tavik::OpenGL::LineStrips mActivePlan;
    Tavik::OpenGL::Lines mFixes;
    Tavik::OpenGL::LineLoops mAircraft;
    Tavik::OpenGL::Lines mAircraftPlace; // where no height is planned
};

} // namespace MovingMap
