#include <moving_map/ProfileLabels.h>

#include <moving_map/Units.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

namespace MovingMap {

namespace {

using Pixel = Box::Pixel;

constexpr int ScaleSize = 12;
constexpr int NameSize = 14;
constexpr float Margin = 8.0f;         // to the edges of the area
constexpr float LowestY = 24.0f;       // of a height, above the row of distances
constexpr float DistanceY = 8.0f;      // of that row
constexpr float NameClearance = 18.0f; // from the plan to a name's middle
constexpr float AircraftRadius = 12.0f;
constexpr float Gap = 10.0f;           // between values of a scale
constexpr std::size_t MostNames = 100; // a bound for routes of thousands of legs

constexpr double ReferenceMetres = 1000.0; // any height tells the scale

/// Each how many-th line of a grid is named, so that the names keep apart.
int strideFor(float linePixels, float namePixels)
{
    return std::max(static_cast<int>(std::ceil(namePixels / std::max(linePixels, 1.0f))), 1);
}

/// Above and below a fix, then beside that. Without planned heights a line stands upright there: only beside it.
void setPlaces(PlacedLabel& label, Pixel fix, float clearance)
{
    const Pixel up(0.0f, clearance);
    const Pixel aside(0.5f * label.size.x + 5.0f, 0.0f);
    if (clearance > 0.0f) {
        label.places.push_back({fix + up, 0.0f});
        label.places.push_back({fix - up, 0.1f});
    }
    label.places.push_back({fix + up + aside, 0.2f});
    label.places.push_back({fix + up - aside, 0.2f});
    label.places.push_back({fix - up + aside, 0.3f});
    label.places.push_back({fix - up - aside, 0.3f});
}

} // namespace

ProfileLabels::ProfileLabels(const RoutePath& path, const MapColors& colors)
    : mScale(Palette::Caption), mNames(colors.otherLeg), mActiveName(colors.activeLeg)
{
    for (const PathFix& fix : path.fixes()) {
        mFixes.emplace_back();
        mFixes.back().size = {TextBatch::width(fix.name, NameSize), TextBatch::height(NameSize)};
    }
}

void ProfileLabels::render(const Scene& scene, const ProfileChart& chart, const Area& area)
{
    const Shown shown(scene.distanceMetres, scene.nextFix, chart.toY(0.0), chart.toY(ReferenceMetres), area.width,
                      area.height);
    if (mShown != shown) {
        write(scene, chart, area);
        mShown = shown;
    }
    mScale.render();
    mNames.render();
    mActiveName.render();
}

void ProfileLabels::write(const Scene& scene, const ProfileChart& chart, const Area& area)
{
    for (TextBatch* batch : {&mScale, &mNames, &mActiveName}) {
        batch->clear();
    }
    const Box whole = {{0.0f, 0.0f}, {static_cast<float>(area.width), static_cast<float>(area.height)}};
    mPlacement.begin(whole.grownBy(-0.5f * Margin));
    writeScale(chart, area);
    writeDistances(scene, chart, area);
    writeFixes(scene, chart, area);
}

void ProfileLabels::writeScale(const ProfileChart& chart, const Area& area)
{
    const double step = chart.heightStepMetres();
    const int stride = strideFor(chart.toY(step) - chart.toY(0.0), TextBatch::height(ScaleSize) + 0.4f * Gap);
    for (int i = stride; chart.toY(i * step) < static_cast<float>(area.height) - Margin; i += stride) {
        const Pixel place(Margin, chart.toY(i * step));
        if (place.y > LowestY) {
            const std::string text = std::to_string(std::lround(i * step / MetresPerFoot));
            mScale.add(text, place, ScaleSize, TextAlign::Left);
            const Pixel size(TextBatch::width(text, ScaleSize), TextBatch::height(ScaleSize));
            mPlacement.addObstacle({place - Pixel(0.0f, size.y), place + size});
        }
    }
}

void ProfileLabels::writeDistances(const Scene& scene, const ProfileChart& chart, const Area& area)
{
    const double step = chart.distanceStepMetres();
    const int stride = strideFor(chart.toX(step) - chart.toX(0.0), TextBatch::width("0.00 NM", ScaleSize) + Gap);
    for (int i = stride; chart.toX(scene.distanceMetres + i * step) < static_cast<float>(area.width); i += stride) {
        char text[24];
        std::snprintf(text, sizeof(text), "%.3g NM", i * step / MetresPerNauticalMile);
        const float x = chart.toX(scene.distanceMetres + i * step);
        if (x + 0.5f * TextBatch::width(text, ScaleSize) < static_cast<float>(area.width) - Margin) {
            mScale.add(text, {x, DistanceY}, ScaleSize, TextAlign::Centre);
        }
    }
}

/// Above the plan if there is room, else below; the names nearest ahead first.
void ProfileLabels::writeFixes(const Scene& scene, const ProfileChart& chart, const Area& area)
{
    const std::vector<PathFix>& fixes = scene.path.fixes();
    const bool hasHeights = scene.path.hasAltitudes();
    const auto placeOf = [&](double distance) {
        return Pixel(chart.toX(distance), hasHeights ? chart.toY(scene.path.altitudeMetres(distance)) : LowestY);
    };
    const bool hasPlace = !std::isnan(scene.altitudeMetres);
    const Pixel aircraft(chart.toX(scene.distanceMetres), hasPlace ? chart.toY(scene.altitudeMetres) : LowestY);
    mPlacement.addObstacle(Box::about(aircraft, Pixel(2.0f, 2.0f) * AircraftRadius));
    std::size_t shown = 0;
    for (std::size_t i = 0; i < fixes.size(); ++i) {
        mFixes[i].places.clear();
        const float x = chart.toX(fixes[i].distanceMetres);
        if (x < 0.0f || x > static_cast<float>(area.width) || shown == MostNames) {
            continue;
        }
        ++shown;
        const Pixel place = placeOf(fixes[i].distanceMetres);
        for (const std::size_t neighbour : {i == 0 ? i : i - 1, std::min(i + 1, fixes.size() - 1)}) {
            mPlacement.addLine(place, placeOf(fixes[neighbour].distanceMetres));
        }
        setPlaces(mFixes[i], place, hasHeights ? NameClearance : 0.0f);
        mFixes[i].priority =
            fixes[i].distanceMetres < scene.distanceMetres ? -static_cast<int>(fixes.size()) : -static_cast<int>(i);
    }
    mPlacement.place(mFixes);
    for (std::size_t i = 0; i < fixes.size(); ++i) {
        if (mFixes[i].isShown()) {
            (i == scene.nextFix ? mActiveName : mNames)
                .add(fixes[i].name, mFixes[i].centre(), NameSize, TextAlign::Centre);
        }
    }
}

} // namespace MovingMap
