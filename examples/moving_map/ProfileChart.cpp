#include <moving_map/ProfileChart.h>

#include <moving_map/Contours.h>
#include <moving_map/Palette.h>
#include <moving_map/Pen.h>
#include <moving_map/Symbols.h>
#include <moving_map/Units.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace MovingMap {

namespace {

constexpr double LengthInRanges = 2.0; // of the piece that is shown
constexpr double PartBehind = 0.1;     // of it, behind the aircraft

constexpr float BottomMargin = 16.0f; // below sea level, pixels
constexpr double HeadRoom = 1.15;
constexpr double SmallestTopMetres = 1000.0;

constexpr int ColumnPixels = 2;
constexpr float GroundBrightness = 0.55f;
constexpr double TintMetres = 200.0; // between colours in a column

/// The largest of 1, 2 and 5 times a power of ten that divides a length into at least a number of parts.
double niceStep(double length, double parts)
{
    const double largest = length / parts;
    const double power = std::pow(10.0, std::floor(std::log10(largest)));
    for (const double factor : {5.0, 2.0}) {
        if (factor * power <= largest) {
            return factor * power;
        }
    }
    return power;
}

} // namespace

ProfileChart::ProfileChart()
{
    mGround.setUseMultiColor(true);
    mGround.setLineWidth(ColumnPixels);
    mGround.setAntiAlias(false);
    mSurface.setUseMultiColor(true);
    mSurface.setLineWidth(2.4f);
}

double ProfileChart::begin(const Scene& scene)
{
    return scene.distanceMetres - PartBehind * LengthInRanges * scene.rangeMetres;
}

double ProfileChart::end(const Scene& scene)
{
    return scene.distanceMetres + (1.0 - PartBehind) * LengthInRanges * scene.rangeMetres;
}

void ProfileChart::render(const Scene& scene, const RouteProfile& profile, const Area& area)
{
    area.fill(Palette::PanelBackground);
    area.activate();
    mArea = area;
    mBegin = begin(scene);
    mEnd = end(scene);
    const auto columns = static_cast<std::size_t>(area.width) / ColumnPixels + 1;
    mHeights = profile.highest(mBegin, (mEnd - mBegin) * ColumnPixels / area.width, columns);
    setScale(scene, area);
    renderGrid(scene);
    renderTerrain(mHeights);
    renderPlan(scene);
    renderAircraft(scene);
}

void ProfileChart::setScale(const Scene& scene, const Area& area)
{
    double highest = SmallestTopMetres;
    for (const float height : mHeights) {
        highest = std::fmax(highest, height);
    }
    for (int x = 0; x <= area.width; x += ColumnPixels) {
        const double distance = mBegin + (mEnd - mBegin) * x / area.width;
        if (distance >= 0.0 && distance <= scene.path.length()) {
            highest = std::fmax(highest, scene.path.altitudeMetres(distance));
        }
    }
    mTop = highest * HeadRoom;
}

float ProfileChart::toX(double distanceMetres) const
{
    return static_cast<float>((distanceMetres - mBegin) / (mEnd - mBegin) * mArea.width);
}

float ProfileChart::toY(double altitudeMetres) const
{
    return BottomMargin +
           static_cast<float>(altitudeMetres / mTop * (static_cast<double>(mArea.height) - BottomMargin));
}

void ProfileChart::renderGrid(const Scene& scene)
{
    const auto width = static_cast<float>(mArea.width);
    const auto height = static_cast<float>(mArea.height);
    mGrid.clearVertex();
    const double heightStep = niceStep(mTop / MetresPerFoot, 4.0) * MetresPerFoot;
    for (int i = 1; i * heightStep < mTop; ++i) {
        mGrid.addVertex(Pixel(0.0f, toY(i * heightStep)));
        mGrid.addVertex(Pixel(width, toY(i * heightStep)));
    }
    // From the aircraft on, so that the lines stand still and distances can be read off them.
    const double distanceStep = niceStep((mEnd - mBegin) / MetresPerNauticalMile, 8.0) * MetresPerNauticalMile;
    for (int i = static_cast<int>((mBegin - scene.distanceMetres) / distanceStep);
         scene.distanceMetres + i * distanceStep < mEnd; ++i) {
        const float x = toX(scene.distanceMetres + i * distanceStep);
        mGrid.addVertex(Pixel(x, 0.0f));
        mGrid.addVertex(Pixel(x, height));
    }
    applyPen(mGrid, {Palette::Grid, 1.0f});
    mGrid.setAntiAlias(false);
    mGrid.render();
}

void ProfileChart::renderTerrain(const std::vector<float>& heights)
{
    mGround.clearVertex();
    mSurface.clearVertex();
    const std::vector<Pixel> endOfStrip;
    bool known = false;
    for (std::size_t column = 0; column < heights.size(); ++column) {
        const double height = heights[column];
        if (std::isnan(height)) {
            if (known) {
                mSurface.addLineStrip(endOfStrip);
            }
            known = false;
            continue;
        }
        known = true;
        const auto x = static_cast<float>(column * ColumnPixels);
        mSurface.addVertex(Pixel(x, toY(height)), heightColor(height));
        const Color foot = height < CoastMetres ? Palette::SeaLevel : heightColor(CoastMetres);
        mGround.addVertex(Pixel(x, 0.0f), shaded(foot, 0.5f * GroundBrightness));
        for (int tint = 0; tint * TintMetres < height; ++tint) {
            const double level = tint * TintMetres;
            mGround.addVertex(Pixel(x, toY(level)),
                              shaded(heightColor(std::max(level, CoastMetres)), GroundBrightness));
        }
        mGround.addVertex(Pixel(x, toY(height)), shaded(heightColor(height), GroundBrightness));
        mGround.addLineStrip(endOfStrip);
    }
    mGround.render(-1);

    mSeaLevel.clearVertex();
    mSeaLevel.addVertex(Pixel(0.0f, toY(0.0)));
    mSeaLevel.addVertex(Pixel(static_cast<float>(mArea.width), toY(0.0)));
    applyPen(mSeaLevel, {Palette::SeaLevel, 1.6f});
    mSeaLevel.render();
    mSurface.render(-1);
}

/// The planned heights over a piece of the path, as far as it is shown.
std::vector<ProfileChart::Pixel> ProfileChart::planLine(const RoutePath& path, double from, double to) const
{
    const double begin = std::max(from, mBegin);
    const double end = std::min(to, mEnd);
    std::vector<Pixel> points;
    const auto add = [&](double distance) { points.emplace_back(toX(distance), toY(path.altitudeMetres(distance))); };
    if (begin < end) {
        add(begin);
        for (const PathFix& fix : path.fixes()) { // the plan bends nowhere else
            if (fix.distanceMetres > begin && fix.distanceMetres < end) {
                add(fix.distanceMetres);
            }
        }
        add(end);
    }
    return points;
}

/// A route without planned heights shows where its fixes lie, and nothing of how high it is flown.
void ProfileChart::renderPlan(const Scene& scene)
{
    const bool hasHeights = !std::isnan(scene.altitudeMetres);
    double activeFrom = 0.0;
    double activeTo = 0.0;
    for (const PathPoint& point : scene.path.points()) {
        if (point.leg < scene.aircraft.leg) {
            activeFrom = point.distanceMetres;
        }
        if (point.leg <= scene.aircraft.leg) {
            activeTo = point.distanceMetres;
        }
    }
    mPlan.clearVertex();
    mActivePlan.clearVertex();
    if (hasHeights) {
        mPlan.addLineStrip(planLine(scene.path, 0.0, activeFrom));
        mPlan.addLineStrip(planLine(scene.path, activeTo, scene.path.length()));
        mActivePlan.addLineStrip(planLine(scene.path, activeFrom, activeTo));
    }

    mFixes.clearVertex();
    for (const PathFix& fix : scene.path.fixes()) {
        const float x = toX(fix.distanceMetres);
        const float y = hasHeights ? toY(scene.path.altitudeMetres(fix.distanceMetres)) : 0.0f;
        mFixes.addVertex(Pixel(x, hasHeights ? y - 9.0f : 0.0f));
        mFixes.addVertex(Pixel(x, hasHeights ? y + 9.0f : static_cast<float>(mArea.height)));
    }
    applyPen(mPlan, {Palette::OtherLeg, 2.2f});
    mPlan.render(-1);
    applyPen(mActivePlan, {Palette::ActiveLeg, 2.6f});
    mActivePlan.render(-1);
    applyPen(mFixes, {Palette::OtherLeg, 1.8f});
    mFixes.render();
}

/// A pointer at the planned height, or a line upright where no height is planned.
void ProfileChart::renderAircraft(const Scene& scene)
{
    if (std::isnan(scene.altitudeMetres)) {
        mAircraftPlace.clearVertex();
        mAircraftPlace.addVertex(Pixel(toX(scene.distanceMetres), 0.0f));
        mAircraftPlace.addVertex(Pixel(toX(scene.distanceMetres), static_cast<float>(mArea.height)));
        applyPen(mAircraftPlace, {Palette::Aircraft, 2.2f});
        mAircraftPlace.render();
        return;
    }
    const Pixel place(toX(scene.distanceMetres), toY(scene.altitudeMetres));
    mAircraft.clearVertex();
    mAircraft.addLineLoop(Symbols::pointer(place + Pixel(8.0f, 0.0f), {1.0f, 0.0f}, 16.0f));
    applyPen(mAircraft, {Palette::Casing, 5.0f});
    mAircraft.render(1.0);
    applyPen(mAircraft, {Palette::Aircraft, 2.2f});
    mAircraft.render(1.0);
}

} // namespace MovingMap
