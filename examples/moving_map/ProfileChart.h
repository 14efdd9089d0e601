#pragma once

#include <moving_map/Area.h>
#include <moving_map/RouteProfile.h>
#include <moving_map/Scene.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/Lines.h>
#include <tavik/opengl/TriangleStrip.h>

#include <optional>
#include <tuple>
#include <vector>

namespace MovingMap {

/// A section along the route: the ground below it in the colours of the map, the planned heights, the aircraft.
///
/// The scale along the route is linear, and so is the one of heights, which leaves room above the highest of ground and
/// plan in the piece that is shown. What is drawn is built again when anything of it has changed.
class ProfileChart
{
public:
    ProfileChart();

    /// The piece of the path that is shown, in metres flown.
    static double begin(const Scene& scene);
    static double end(const Scene& scene);

    /// @param area  of the window; the chart activates it
    void render(const Scene& scene, const RouteProfile& profile, const Area& area);

    /// Where a distance flown and a height above the sea appeared last, in pixels of the area.
    float toX(double distanceMetres) const;
    float toY(double altitudeMetres) const;

    /// Between the lines of its grid: those of heights count from sea level, those upright from the aircraft.
    double heightStepMetres() const { return mHeightStep; }
    double distanceStepMetres() const { return mDistanceStep; }

private:
    using Pixel = Tavik::Math::Vector2<float>;

    // What the chart depends on: distance flown, planned altitude if there is one, range, leg, heights, area.
    using Shown = std::tuple<double, std::optional<double>, double, std::size_t, std::size_t, int, int>;

    void build(const Scene& scene, const RouteProfile& profile);
    void setScale(const Scene& scene);
    void buildGrid(const Scene& scene);
    void buildGround();
    void buildSurface();
    void addPlan(Tavik::OpenGL::LineStrips& lines, const RoutePath& path, double from, double to) const;
    void buildPlan(const Scene& scene);
    void buildAircraft(const Scene& scene);

    Area mArea;
    double mBegin = 0.0;
    double mEnd = 1.0;
    double mTop = 1.0;
    double mHeightStep = 1.0;
    double mDistanceStep = 1.0;
    std::optional<Shown> mShown;
    std::vector<RouteProfile::Point> mHeights; // of the ground

    Tavik::OpenGL::Lines mGrid;
    Tavik::OpenGL::Lines mSeaLevel;
    Tavik::OpenGL::TriangleStrip mGround;
    Tavik::OpenGL::LineStrips mSurface; // the line on top of it
    Tavik::OpenGL::LineStrips mPlan;
    Tavik::OpenGL::LineStrips mActivePlan;
    Tavik::OpenGL::Lines mFixes;
    Tavik::OpenGL::LineLoops mAircraft;
    Tavik::OpenGL::Lines mAircraftPlace; // where no height is planned
};

} // namespace MovingMap
