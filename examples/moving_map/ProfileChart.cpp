#include <moving_map/ProfileChart.h>

#include <moving_map/Contours.h>
#include <moving_map/Palette.h>
#include <moving_map/Pen.h>
#include <moving_map/Symbols.h>
#include <moving_map/Units.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace MovingMap {

namespace {

constexpr double LengthInRanges = 2.0; // of the piece that is shown
constexpr double PartBehind = 0.1;     // of it, behind the aircraft

constexpr float BottomMargin = 16.0f; // below sea level, pixels
constexpr double HeadRoom = 1.15;
constexpr double SmallestTopMetres = 1000.0;

constexpr double SmallestStepPixels = 2.0; // between points of the ground
constexpr float GroundBrightness = 0.55f;
constexpr float FootBrightness = 0.5f; // of that, at the lower edge of the chart

const std::vector<Tavik::Math::Vector2<float>> EndOfStrip;

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

/// Slices side by side in one strip of triangles; triangles without area lead from one row of slices to the next.
class Slices
{
public:
    explicit Slices(Tavik::OpenGL::TriangleStrip& strip) : mStrip(strip) {}

    struct End
    {
        Tavik::Math::Vector2<float> place;
        Color color;
    };

    void add(const End& foot, const End& top)
    {
        if (!mIsOpen && !mIsEmpty) {
            mStrip.addVertex(mLast.place, mLast.color);
            mStrip.addVertex(foot.place, foot.color);
        }
        mStrip.addVertex(foot.place, foot.color);
        mStrip.addVertex(top.place, top.color);
        mLast = top;
        mIsOpen = true;
        mIsEmpty = false;
    }

    /// What comes next does not join what came last.
    void end() { mIsOpen = false; }

private:
    Tavik::OpenGL::TriangleStrip& mStrip;
    End mLast;
    bool mIsOpen = false;
    bool mIsEmpty = true;
};

constexpr double HighestAircraftMetres = 20'000.0; // which the chart makes room for

} // namespace

ProfileChart::ProfileChart()
{
    mGround.setUseMultiColor(true);
    mGrid.setAntiAlias(false);
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
    const auto altitude = std::isnan(scene.altitudeMetres) ? std::nullopt : std::optional(scene.altitudeMetres);
    const Shown shown(scene.distanceMetres, altitude, scene.rangeMetres, scene.aircraft.leg, profile.version(),
                      area.width, area.height);
    if (mShown != shown) {
        build(scene, profile);
        mShown = shown;
    }
    mGrid.render();
    mGround.render();
    mSeaLevel.render();
    mSurface.render(-1);
    mPlan.render(-1);
    mActivePlan.render(-1);
    mFixes.render();
    mAircraftPlace.render();
    for (const Pen& pen : {Pen{Palette::Casing, 5.0f}, Pen{scene.colors.aircraft, 2.2f}}) {
        applyPen(mAircraft, pen);
        mAircraft.render(1.0);
    }
}

void ProfileChart::build(const Scene& scene, const RouteProfile& profile)
{
    mBegin = begin(scene);
    mEnd = end(scene);
    const double metresPerPixel = (mEnd - mBegin) / mArea.width;
    int samplesPerPoint = 1; // doubled, so that points stay where they are until others between them go
    while (samplesPerPoint * RouteProfile::SpacingMetres < SmallestStepPixels * metresPerPixel) {
        samplesPerPoint *= 2;
    }
    profile.surface(mBegin, mEnd, samplesPerPoint, mHeights);
    setScale(scene);
    buildGrid(scene);
    buildGround();
    buildSurface();
    buildPlan(scene);
    buildAircraft(scene);
}

void ProfileChart::setScale(const Scene& scene)
{
    double highest = SmallestTopMetres;
    for (const RouteProfile::Point& point : mHeights) {
        highest = std::fmax(highest, point.heightMetres);
    }
    // Between its fixes the plan rises or falls evenly.
    const auto include = [&](double distance) { highest = std::fmax(highest, scene.path.altitudeMetres(distance)); };
    include(mBegin);
    include(mEnd);
    for (const PathFix& fix : scene.path.fixes()) {
        if (fix.distanceMetres > mBegin && fix.distanceMetres < mEnd) {
            include(fix.distanceMetres);
        }
    }
    if (scene.altitudeMetres < HighestAircraftMetres) { // where it does not fly as planned
        highest = std::max(highest, scene.altitudeMetres);
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

void ProfileChart::buildGrid(const Scene& scene)
{
    const auto width = static_cast<float>(mArea.width);
    const auto height = static_cast<float>(mArea.height);
    mGrid.clearVertex();
    mHeightStep = niceStep(mTop / MetresPerFoot, 4.0) * MetresPerFoot;
    for (int i = 1; i * mHeightStep < mTop; ++i) {
        mGrid.addVertex(Pixel(0.0f, toY(i * mHeightStep)));
        mGrid.addVertex(Pixel(width, toY(i * mHeightStep)));
    }
    // From the aircraft on, so that the lines stand still and distances can be read off them.
    mDistanceStep = niceStep((mEnd - mBegin) / MetresPerNauticalMile, 8.0) * MetresPerNauticalMile;
    for (int i = static_cast<int>((mBegin - scene.distanceMetres) / mDistanceStep);
         scene.distanceMetres + i * mDistanceStep < mEnd; ++i) {
        const float x = toX(scene.distanceMetres + i * mDistanceStep);
        mGrid.addVertex(Pixel(x, 0.0f));
        mGrid.addVertex(Pixel(x, height));
    }
    applyPen(mGrid, {Palette::Grid, 1.0f});

    mSeaLevel.clearVertex();
    mSeaLevel.addVertex(Pixel(0.0f, toY(0.0)));
    mSeaLevel.addVertex(Pixel(width, toY(0.0)));
    applyPen(mSeaLevel, {Palette::SeaLevel, 1.6f});
}

/// The ground in bands of heights between which the colours change evenly: so each height has its own colour, on steep
/// ground as well.
void ProfileChart::buildGround()
{
    mGround.clearVertex();
    Slices slices(mGround);
    const auto at = [&](const RouteProfile::Point& point, double height) -> Slices::End {
        const double metres = std::min<double>(point.heightMetres, height);
        return {{toX(point.distanceMetres), toY(metres)}, shaded(heightColor(metres), GroundBrightness)};
    };
    const auto addBand = [&](const auto& foot, double top) {
        for (const RouteProfile::Point& point : mHeights) {
            if (std::isnan(point.heightMetres)) {
                slices.end();
            } else {
                slices.add(foot(point), at(point, top));
            }
        }
        slices.end();
    };
    const auto chartsEdge = [&](const RouteProfile::Point& point) -> Slices::End {
        const Slices::End coast = at(point, CoastMetres);
        return {{coast.place.x, 0.0f}, shaded(coast.color, FootBrightness)};
    };
    const std::vector<double>& tints = tintHeights();
    addBand(chartsEdge, tints.front());
    for (std::size_t i = 0; i < tints.size() && tints[i] < mTop / HeadRoom; ++i) {
        const double top = i + 1 < tints.size() ? tints[i + 1] : mTop;
        addBand([&](const RouteProfile::Point& point) { return at(point, tints[i]); }, top);
    }
}

void ProfileChart::buildSurface()
{
    mSurface.clearVertex();
    bool isOpen = false;
    for (const RouteProfile::Point& point : mHeights) {
        const bool isKnown = !std::isnan(point.heightMetres);
        if (isKnown) {
            mSurface.addVertex(Pixel(toX(point.distanceMetres), toY(point.heightMetres)),
                               heightColor(point.heightMetres));
        } else if (isOpen) {
            mSurface.addLineStrip(EndOfStrip);
        }
        isOpen = isKnown;
    }
}

/// Adds the planned heights over a piece of the path, as far as it is shown.
void ProfileChart::addPlan(Tavik::OpenGL::LineStrips& lines, const RoutePath& path, double from, double to) const
{
    const double begin = std::max(from, mBegin);
    const double end = std::min(to, mEnd);
    if (begin >= end) {
        return;
    }
    const auto add = [&](double distance) {
        lines.addVertex(Pixel(toX(distance), toY(path.altitudeMetres(distance))));
    };
    add(begin);
    for (const PathFix& fix : path.fixes()) { // the plan bends nowhere else
        if (fix.distanceMetres > begin && fix.distanceMetres < end) {
            add(fix.distanceMetres);
        }
    }
    add(end);
    lines.addLineStrip(EndOfStrip);
}

/// A route without planned heights shows where its fixes lie, and nothing of how high it is flown.
void ProfileChart::buildPlan(const Scene& scene)
{
    const bool hasHeights = scene.path.hasAltitudes();
    mPlan.clearVertex();
    mActivePlan.clearVertex();
    if (hasHeights) {
        // Legs follow one another in the points; a leg begins where the one before it ends.
        const std::vector<PathPoint>& points = scene.path.points();
        const auto endOfLegsBefore = [&](std::size_t leg) {
            const auto behind = std::partition_point(points.begin() + 1, points.end(),
                                                     [leg](const PathPoint& point) { return point.leg < leg; });
            return (behind - 1)->distanceMetres;
        };
        const double activeFrom = endOfLegsBefore(scene.aircraft.leg);
        const double activeTo = endOfLegsBefore(scene.aircraft.leg + 1);
        addPlan(mPlan, scene.path, 0.0, activeFrom);
        addPlan(mPlan, scene.path, activeTo, scene.path.length());
        addPlan(mActivePlan, scene.path, activeFrom, activeTo);
    }

    mFixes.clearVertex();
    for (const PathFix& fix : scene.path.fixes()) {
        if (fix.distanceMetres < mBegin || fix.distanceMetres > mEnd) {
            continue;
        }
        const float x = toX(fix.distanceMetres);
        const float y = hasHeights ? toY(scene.path.altitudeMetres(fix.distanceMetres)) : 0.0f;
        mFixes.addVertex(Pixel(x, hasHeights ? y - 9.0f : 0.0f));
        mFixes.addVertex(Pixel(x, hasHeights ? y + 9.0f : static_cast<float>(mArea.height)));
    }
    applyPen(mPlan, {scene.colors.otherLeg, 2.2f});
    applyPen(mActivePlan, {scene.colors.activeLeg, 2.6f});
    applyPen(mFixes, {scene.colors.otherLeg, 1.8f});
}

/// A pointer at the planned height, or a line upright where no height is planned.
void ProfileChart::buildAircraft(const Scene& scene)
{
    mAircraft.clearVertex();
    mAircraftPlace.clearVertex();
    const float x = toX(scene.distanceMetres);
    if (std::isnan(scene.altitudeMetres)) {
        mAircraftPlace.addVertex(Pixel(x, 0.0f));
        mAircraftPlace.addVertex(Pixel(x, static_cast<float>(mArea.height)));
        applyPen(mAircraftPlace, {scene.colors.aircraft, 2.2f});
    } else {
        const Pixel place(x, toY(scene.altitudeMetres));
        mAircraft.addLineLoop(Symbols::pointer(place + Pixel(8.0f, 0.0f), {1.0f, 0.0f}, 16.0f));
    }
}

} // namespace MovingMap
