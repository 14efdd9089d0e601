#include <moving_map/MapLabels.h>

#include <moving_map/AircraftLayer.h>
#include <moving_map/AirspaceStyle.h>
#include <moving_map/CompassLayer.h>
#include <moving_map/SymbolLayer.h>
#include <moving_map/Units.h>

#include <algorithm>
#include <cstdio>

namespace MovingMap {

namespace {

using Pixel = MapView::Pixel;

constexpr int NameSize = 16;
constexpr int AirspaceSize = 13;
constexpr int RangeSize = 12;
constexpr int NumberSize = 15;
constexpr float LineStep = 1.25f; // of the size, from baseline to baseline

constexpr int NumberPriority = 60;
constexpr int NextPriority = 50;
constexpr int FixPriority = 40;
constexpr int StationPriority = 30;
constexpr int RangePriority = 20;
constexpr int AirspacePriority = 10;

constexpr float EdgeMargin = 4.0f; // of the map
constexpr float OutlinePixels = 2.0f;
constexpr float Clearance = SymbolLayer::SymbolRadius + 6.0f;
constexpr double SmallestRoom = 0.45; // for half of an airspace's label, between its middle and the edge
constexpr double OutsideCost = 2.0;   // of an airspace's label on its edge, all of it as good as outside
constexpr double FartherCost = 0.02f;
constexpr int RimChords = 36;

// What a pilot can read at once; keeps the cost of a frame bounded for routes of thousands of legs.
constexpr std::size_t MostPoints = 200;
constexpr std::size_t MostLines = 2000;

/// Such as "20 NM" or "2.5 NM".
std::string milesText(double metres)
{
    char text[24];
    std::snprintf(text, sizeof(text), "%.3g NM", metres / MetresPerNauticalMile);
    return text;
}

} // namespace

MapLabels::MapLabels(const Route& route, const RoutePath& path, const MapColors& colors)
    : mFixText(colors.otherLeg), mActiveText(colors.activeLeg), mStationText(colors.station),
      mObstacleText(colors.obstacle), mRangeText(Palette::RangeText), mNumberText(Palette::Text)
{
    for (std::size_t i = 0; i < AirspaceClassCount; ++i) {
        mAirspaceTexts.emplace_back(airspaceStyle(static_cast<AirspaceClass>(i)).edge.color);
    }
    for (const PathFix& fix : path.fixes()) {
        add({Layer::Symbols, {fix.name}, NameSize, &mFixText, fix.position, {}, 0.0, 0.0, {}}, FixPriority);
    }
    for (const Station& station : route.stations) {
        TextBatch* batch = station.kind == FixKind::Obstacle ? &mObstacleText : &mStationText;
        add({Layer::Symbols, {station.name}, NameSize, batch, station.position, {}, 0.0, 0.0, {}}, StationPriority);
    }
    for (const double part : {0.5, 1.0}) {
        add({Layer::Compass, {""}, RangeSize, &mRangeText, {}, {}, 0.0, part, {}}, RangePriority);
    }
    for (const CompassLayer::Number& number : CompassLayer::Numbers) {
        add({Layer::Compass, {number.text}, NumberSize, &mNumberText, {}, {}, 0.0, 0.0, number.bearing},
            NumberPriority);
    }
    for (const Airspace& airspace : route.airspaces) {
        addAirspace(airspace);
    }
}

void MapLabels::add(Entry entry, int priority)
{
    mEntries.push_back(std::move(entry));
    mLabels.emplace_back();
    mLabels.back().priority = priority;
    measure(mEntries.size() - 1);
}

void MapLabels::addAirspace(const Airspace& airspace)
{
    Entry entry;
    entry.layer = Layer::Airspaces;
    entry.lines = {airspace.name + "  " + airspaceClassName(airspace.airspaceClass),
                   airspace.floor.text + " - " + airspace.ceiling.text};
    entry.textSize = AirspaceSize;
    entry.batch = &mAirspaceTexts[static_cast<std::size_t>(airspace.airspaceClass)];
    entry.points = interiorPoints(airspace.outline);
    if (!entry.points.empty()) { // one without room for a point has none for a label
        entry.acrossMetres = 2.0 * entry.points.front().clearanceMetres;
        add(std::move(entry), AirspacePriority);
    }
}

void MapLabels::measure(std::size_t index)
{
    const Entry& entry = mEntries[index];
    Pixel size(0.0f, 0.0f);
    for (const std::string& line : entry.lines) {
        size.x = std::max(size.x, TextBatch::width(line, entry.textSize));
        size.y += size.y == 0.0f ? TextBatch::height(entry.textSize) : LineStep * static_cast<float>(entry.textSize);
    }
    mLabels[index].size = size + Pixel(2.0f, 2.0f) * OutlinePixels;
}

void MapLabels::update(const Scene& scene, const std::vector<Box>& covered)
{
    if (isUpToDate(scene, covered)) {
        return;
    }
    const bool rangeChanged = !mState || mState->rangeMetres != scene.rangeMetres ||
                              !(mState->layers == scene.layers); // the rings may have been hidden meanwhile
    mState = State{scene.view, scene.aircraft.position, scene.nextFix, scene.rangeMetres, scene.layers, covered};
    addObstacles(scene, covered);
    const GeoBounds visible = scene.view.bounds(Clearance);
    std::size_t pointCount = 0;
    for (std::size_t n = 0; n < mEntries.size(); ++n) {
        const std::size_t i = (n + scene.nextFix) % mEntries.size();
        Entry& entry = mEntries[i];
        PlacedLabel& label = mLabels[i];
        label.places.clear();
        if (!isWanted(scene.layers, entry)) {
            continue;
        }
        if (entry.ringPart > 0.0) {
            if (rangeChanged) {
                entry.lines.front() = milesText(entry.ringPart * scene.rangeMetres);
                measure(i);
            }
            setPlacesOnRing(scene, entry, label);
        } else if (entry.bearing) {
            if (CompassLayer::showsNumber(scene, *entry.bearing)) {
                label.places.push_back({CompassLayer::numberPlace(scene, *entry.bearing), 0.0f});
            }
        } else if (!entry.points.empty()) {
            setPlacesInside(scene, entry, label);
        } else if (visible.mayTouch(entry.position, entry.position) && pointCount < MostPoints) {
            ++pointCount;
            const Pixel place = scene.view.toPixel(entry.position);
            label.priority = entry.batch != &mFixText ? StationPriority
                             : i == scene.nextFix     ? NextPriority
                                                      : FixPriority;
            setPlacesAround(label, place, Clearance);
            mPlacement.addObstacle(Box::about(place, Pixel(2.0f, 2.0f) * SymbolLayer::SymbolRadius));
        }
    }
    mPlacement.place(mLabels);
    fillBatches(scene);
}

/// What is written at the compass rose are no names.
bool MapLabels::isWanted(const Layers& layers, const Entry& entry)
{
    return layers.shows(entry.layer) && (entry.layer == Layer::Compass || layers.shows(Layer::Names));
}

bool MapLabels::isUpToDate(const Scene& scene, const std::vector<Box>& covered) const
{
    return mState && mState->view == scene.view && mState->aircraft == scene.aircraft.position &&
           mState->nextFix == scene.nextFix && mState->rangeMetres == scene.rangeMetres &&
           mState->layers == scene.layers && mState->covered == covered;
}

void MapLabels::addObstacles(const Scene& scene, const std::vector<Box>& covered)
{
    const MapView& view = scene.view;
    const Pixel size(static_cast<float>(view.width()), static_cast<float>(view.height()));
    mPlacement.begin(Box{{0.0f, 0.0f}, size}.grownBy(-EdgeMargin));
    for (const Box& box : covered) {
        mPlacement.addObstacle(box);
    }
    const Pixel aircraft = view.toPixel(scene.aircraft.position);
    mPlacement.addObstacle(Box::about(aircraft, Pixel(2.0f, 2.0f) * AircraftLayer::SymbolSize));
    const GeoBounds visible = view.bounds(0.0f);
    const std::vector<PathPoint>& points = scene.path.points();
    std::size_t lineCount = 0;
    for (std::size_t i = 1; i < points.size() && lineCount < MostLines; ++i) {
        if (visible.mayTouch(points[i - 1].position, points[i].position)) {
            ++lineCount;
            mPlacement.addLine(view.toPixel(points[i - 1].position), view.toPixel(points[i].position));
        }
    }
    mPlacement.addLine(aircraft, aircraft + view.direction(scene.aircraft.trackDegrees) * CompassLayer::radius(scene));
    const float radius = CompassLayer::radius(scene);
    for (int i = 0; i < RimChords; ++i) {
        mPlacement.addLine(aircraft + view.direction(360.0 * i / RimChords) * radius,
                           aircraft + view.direction(360.0 * (i + 1) / RimChords) * radius);
    }
}

/// First below to the left, where a turning map and the track leave most room.
void MapLabels::setPlacesOnRing(const Scene& scene, const Entry& entry, PlacedLabel& label)
{
    const Pixel centre = scene.view.toPixel(scene.aircraft.position);
    const auto radius = static_cast<float>(entry.ringPart) * CompassLayer::radius(scene);
    for (const double angle : {225.0, 135.0, 315.0, 45.0, 255.0, 105.0, 285.0, 75.0, 195.0, 165.0, 345.0, 15.0}) {
        const Pixel outwards = scene.view.direction(scene.view.up() + angle);
        label.places.push_back(
            {centre + outwards * radius, static_cast<float>(FartherCost * static_cast<double>(label.places.size()))});
    }
}

void MapLabels::setPlacesInside(const Scene& scene, const Entry& entry, PlacedLabel& label)
{
    const double metresPerPixel = scene.view.metresPerPixel();
    if (entry.acrossMetres / metresPerPixel < label.size.y) {
        return; // an airspace smaller than its label
    }
    for (const InteriorPoint& point : entry.points) {
        const double room = point.clearanceMetres / metresPerPixel / (0.5 * label.size.x);
        if (room < SmallestRoom) {
            continue;
        }
        const double cost =
            OutsideCost * std::max(1.0 - room, 0.0) + FartherCost * static_cast<double>(label.places.size());
        label.places.push_back({scene.view.toPixel(point.position), static_cast<float>(cost)});
    }
}

void MapLabels::fillBatches(const Scene& scene)
{
    for (TextBatch* batch : {&mFixText, &mActiveText, &mStationText, &mObstacleText, &mRangeText, &mNumberText}) {
        batch->clear();
    }
    for (TextBatch& batch : mAirspaceTexts) {
        batch.clear();
    }
    for (std::size_t i = 0; i < mEntries.size(); ++i) {
        if (!mLabels[i].isShown()) {
            continue;
        }
        const Entry& entry = mEntries[i];
        const bool isActive = i == scene.nextFix;
        const float step = LineStep * static_cast<float>(entry.textSize);
        Pixel place = mLabels[i].centre() + Pixel(0.0f, 0.5f * step * static_cast<float>(entry.lines.size() - 1));
        for (const std::string& line : entry.lines) {
            (isActive ? mActiveText : *entry.batch).add(line, place, entry.textSize, TextAlign::Centre);
            place.y -= step;
        }
    }
}

void MapLabels::render()
{
    for (TextBatch& batch : mAirspaceTexts) {
        batch.render();
    }
    for (TextBatch* batch : {&mRangeText, &mNumberText, &mObstacleText, &mStationText, &mFixText, &mActiveText}) {
        batch->render();
    }
}

} // namespace MovingMap
