#include <moving_map/PlanLayout.h>

#include <moving_map/MapView.h>
#include <moving_map/Route.h>
#include <moving_map/RoutePath.h>
#include <moving_map/Units.h>
#include <tavik/filesystem/Directory.h>
#include <tavik/geodetic/TerrainTile.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

namespace MovingMap {

namespace {

constexpr std::size_t MostCellsProbed = 24; // each costs the reading of a tile
constexpr int ProbesPerEdge = 24;
constexpr double SpeedKnots = 240.0;

// Parts of the area's smaller edge.
constexpr double StationMargin = 0.32;
constexpr double FixMargin = 0.10;
constexpr double ArcRadius = 0.17;
constexpr double Detour = 0.14;
constexpr double FreeDistance = 0.3;
constexpr double ZoneRadius = 0.08;
constexpr double TerminalRadius = 0.24;
constexpr double SummitRadius = 0.11;

constexpr double HighestGround = 9000.0; // metres

constexpr double ClearanceMetres = 2000.0 * MetresPerFoot;
constexpr double AltitudeStepMetres = 500.0 * MetresPerFoot;
constexpr double AltitudeProbeMetres = 300.0;

struct Place
{
    Position position;
    double height = 0.0;
};

using Cells = std::set<std::pair<int, int>>; // whole degrees: latitude, longitude

bool endsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// Heights on a lattice inside an area; without those that are unknown.
std::vector<Place> probe(const GeoBounds& area, const HeightSource& source)
{
    std::vector<Place> places;
    for (int i = 0; i < ProbesPerEdge; ++i) {
        for (int j = 0; j < ProbesPerEdge; ++j) {
            Place place;
            place.position.latDegrees = area.south + (area.north - area.south) * (i + 0.5) / ProbesPerEdge;
            place.position.lonDegrees = area.west + (area.east - area.west) * (j + 0.5) / ProbesPerEdge;
            place.height = source(place.position.latDegrees, place.position.lonDegrees);
            if (!std::isnan(place.height)) {
                places.push_back(place);
            }
        }
    }
    return places;
}

bool isLower(const Place& a, const Place& b)
{
    return a.height < b.height;
}

GeoBounds boundsOf(Position cell)
{
    return {cell.latDegrees, cell.lonDegrees, cell.latDegrees + 1.0, cell.lonDegrees + 1.0};
}

Position mostVariedCell(const TerrainCells& terrain, const HeightSource& source)
{
    const std::vector<Position>& cells = terrain.corners;
    const std::size_t step = terrain.areOverview ? 1 : (cells.size() + MostCellsProbed - 1) / MostCellsProbed;
    Position best = cells.front();
    double greatest = -1.0;
    for (std::size_t i = 0; i < cells.size(); i += step) {
        const std::vector<Place> places = probe(boundsOf(cells[i]), source);
        if (places.empty()) {
            continue;
        }
        const auto [low, high] = std::minmax_element(places.begin(), places.end(), isLower);
        if (high->height - low->height > greatest) {
            greatest = high->height - low->height;
            best = cells[i];
        }
    }
    return best;
}

/// A cell, doubled to the side and upwards or downwards where there are tiles.
GeoBounds areaAround(Position cell, const TerrainCells& terrain)
{
    Cells known;
    for (const Position& position : terrain.corners) {
        known.emplace(std::lround(position.latDegrees), std::lround(position.lonDegrees));
    }
    GeoBounds area = boundsOf(cell);
    const int lat = static_cast<int>(std::lround(cell.latDegrees));
    const int lon = static_cast<int>(std::lround(cell.lonDegrees));
    int side = 0;
    for (const int step : {1, -1}) {
        if (side == 0 && known.count({lat, lon + step}) != 0) {
            side = step;
        }
    }
    area.west += std::min(side, 0);
    area.east += std::max(side, 0);
    for (const int step : {1, -1}) {
        if (known.count({lat + step, lon}) != 0 && known.count({lat + step, lon + side}) != 0) {
            area.south += std::min(step, 0);
            area.north += std::max(step, 0);
            break;
        }
    }
    return area;
}

/// Finds places for a plan in one area.
class Layout
{
public:
    Layout(const GeoBounds& area, const HeightSource& source) : mArea(area), mPlaces(probe(area, source))
    {
        if (mPlaces.empty()) { // tiles that cannot be read
            mPlaces = probe(area, [](double, double) { return 0.0; });
        }
        const Position corner = {area.south, area.west};
        mEdgeMetres =
            std::min(planeDistance(corner, {area.north, area.west}), planeDistance(corner, {area.south, area.east}));
    }

    double edgeMetres() const { return mEdgeMetres; }

    Position summit() const { return std::max_element(mPlaces.begin(), mPlaces.end(), isLower)->position; }

    /// The lowest ground; of several equally low places, as at sea, the one farthest from another.
    Position lowland(Position other) const
    {
        const auto best = std::min_element(mPlaces.begin(), mPlaces.end(), [&](const Place& a, const Place& b) {
            const double heightA = std::max(a.height, 0.0); // a little below the sea is radar noise
            const double heightB = std::max(b.height, 0.0);
            return heightA != heightB ? heightA < heightB
                                      : planeDistance(other, a.position) > planeDistance(other, b.position);
        });
        return inside(best->position, FixMargin);
    }

    /// The corner with the highest ground of those that are well away from two places, else the farthest one.
    Position freeCorner(Position a, Position b, const HeightSource& source) const
    {
        Position best;
        double greatest = -1.0;
        for (const double lat : {mArea.south, mArea.north}) {
            for (const double lon : {mArea.west, mArea.east}) {
                const Position corner = inside({lat, lon}, 1.5 * FixMargin);
                const double distance = std::min(planeDistance(a, corner), planeDistance(b, corner)) / mEdgeMetres;
                const double height = source(corner.latDegrees, corner.lonDegrees) / HighestGround;
                const double worth = distance < FreeDistance ? distance : std::fmax(distance, 1.0 + height);
                if (worth > greatest) {
                    greatest = worth;
                    best = corner;
                }
            }
        }
        return best;
    }

    /// The place moved inwards until it keeps a margin, a part of the area's edges.
    Position inside(Position place, double margin) const
    {
        const double lat = margin * (mArea.north - mArea.south);
        const double lon = margin * (mArea.east - mArea.west);
        return {std::clamp(place.latDegrees, mArea.south + lat, mArea.north - lat),
                std::clamp(place.lonDegrees, mArea.west + lon, mArea.east - lon)};
    }

    Position middle() const { return {0.5 * (mArea.south + mArea.north), 0.5 * (mArea.west + mArea.east)}; }

private:
    GeoBounds mArea;
    std::vector<Place> mPlaces;
    double mEdgeMetres = 0.0;
};

/// A place beside the middle of a line, on the side of another place.
Position besideMiddle(Position from, Position to, Position sidePlace, double distance)
{
    const LocalPlane plane(from);
    const LocalPlane::Point line = plane.toPoint(to);
    LocalPlane::Point aside(line.y, -line.x);
    if (aside.dot(plane.toPoint(sidePlace)) < 0.0) {
        aside = aside * -1.0;
    }
    return plane.toPosition(line * 0.5 + aside * (distance / std::max(line.length(), 1.0)));
}

PlanLeg leg(const char* name, std::variant<DirectLeg, CrossingLeg, ArcLeg, TurnLeg> kind)
{
    PlanLeg result;
    result.name = name;
    result.kind = std::move(kind);
    return result;
}

HeightLimit feetAbove(double groundMetres, double feet)
{
    const double rounded = std::ceil((groundMetres / MetresPerFoot + feet) / 500.0) * 500.0;
    HeightLimit limit;
    parseHeightLimit(std::to_string(std::lround(rounded)), limit);
    return limit;
}

/// A control zone about the departure, an area of controlled airspace above it that lets the far side free, and a
/// restricted area about the highest ground.
std::vector<Airspace> layOutAirspaces(const Layout& layout, Position departure, Position summit,
                                      const HeightSource& source)
{
    const double ground = std::fmax(source(departure.latDegrees, departure.lonDegrees), 0.0);
    const double edge = layout.edgeMetres();
    HeightLimit surface;
    HeightLimit upper;
    HeightLimit top;
    parseHeightLimit("ground", surface);
    parseHeightLimit("FL195", upper);
    parseHeightLimit("unlimited", top);

    const double inwards = planeCourse(departure, layout.middle());
    std::vector<Position> area = arcPoints(departure, TerminalRadius * edge, true, inwards - 120.0, inwards + 120.0);
    area.push_back(departure);
    std::vector<Position> hexagon;
    for (int corner = 0; corner < 6; ++corner) {
        const double radius = SummitRadius * edge * (corner % 2 == 0 ? 1.0 : 0.8);
        hexagon.push_back(LocalPlane(summit).toPosition(directionOf(60.0 * corner + 15.0) * radius));
    }
    return {
        {"CONTROL", AirspaceClass::D, surface, feetAbove(ground, 2500.0), circlePoints(departure, ZoneRadius * edge)},
        {"TERMINAL", AirspaceClass::C, feetAbove(ground, 2500.0), upper, std::move(area)},
        {"SUMMITS", AirspaceClass::Restricted, surface, top, std::move(hexagon)}};
}

/// Plans each fix as high as the ground along the legs before and behind it demands.
void planAltitudes(FlightPlan& plan, const HeightSource& source)
{
    Route route;
    std::string error;
    if (!resolveRoute(plan, route, error)) {
        return;
    }
    const RoutePath path(route);
    std::vector<double> highest(path.fixes().size(), 0.0);
    for (int probe = 0; probe * AltitudeProbeMetres < path.length(); ++probe) {
        const double distance = probe * AltitudeProbeMetres;
        const Position place = path.at(distance).position;
        const double height = source(place.latDegrees, place.lonDegrees);
        for (std::size_t i = 0; i + 1 < highest.size(); ++i) {
            if (path.fixes()[i].distanceMetres <= distance && distance <= path.fixes()[i + 1].distanceMetres) {
                highest[i] = std::fmax(highest[i], height);
                highest[i + 1] = std::fmax(highest[i + 1], height);
            }
        }
    }
    for (std::size_t i = 0; i < highest.size(); ++i) {
        const auto planned = std::find_if(plan.legs.begin(), plan.legs.end(),
                                          [&](const PlanLeg& l) { return l.name == path.fixes()[i].name; });
        planned->altitudeMetres = std::ceil((highest[i] + ClearanceMetres) / AltitudeStepMetres) * AltitudeStepMetres;
    }
}

} // namespace

TerrainCells terrainCells(const std::string& folder)
{
    Cells cells;
    Cells overview;
    for (const std::string& path : Tavik::FileSystem::Directory(folder).entryList(true)) {
        Tavik::Geodetic::TerrainTile tile;
        if (!(endsWith(path, ".DT1") && tile.loadTile(path)) && !(endsWith(path, ".zip") && tile.loadTileHGT(path))) {
            continue;
        }
        const int lat = static_cast<int>(tile.latitudeIndex()) - 90;
        const int lon = static_cast<int>(tile.longitudeIndex()) - 180;
        if (!tile.isLowRes()) {
            cells.emplace(lat, lon);
            continue;
        }
        for (int i = 0; i < 50; ++i) {
            for (int j = 0; j < 40; ++j) {
                overview.emplace(lat + i, lon + j);
            }
        }
    }
    TerrainCells terrain;
    terrain.areOverview = cells.empty();
    for (const auto& [lat, lon] : cells.empty() ? overview : cells) {
        if (std::abs(lat) < 84 && std::abs(lon) < 179) {
            terrain.corners.push_back({static_cast<double>(lat), static_cast<double>(lon)});
        }
    }
    return terrain;
}

FlightPlan layOutPlan(const TerrainCells& cells, const HeightSource& source)
{
    const Layout layout(areaAround(mostVariedCell(cells, source), cells), source);
    const Position summit = layout.inside(layout.summit(), FixMargin);
    const Position departure = layout.lowland(summit);
    const Position station = layout.inside(summit, StationMargin);
    const Position first =
        layout.inside(besideMiddle(departure, station, layout.middle(), Detour * layout.edgeMetres()), FixMargin);
    const Position corner = layout.freeCorner(summit, departure, source);

    // The arc leads on in the direction in which the aircraft comes, by a third of a circle.
    ArcLeg arc;
    arc.station = "STATION";
    arc.distanceMetres = ArcRadius * layout.edgeMetres();
    arc.radialDegrees = std::fmod(planeCourse(station, first) + 120.0, 360.0);

    CrossingLeg crossing;
    crossing.firstFix = "SUMMIT";
    crossing.firstCourseDegrees = planeCourse(summit, corner);
    crossing.secondFix = "DEPARTURE";
    crossing.secondCourseDegrees = planeCourse(departure, corner);

    FlightPlan plan;
    plan.source = "plan laid out for the terrain";
    plan.speedMetresPerSecond = SpeedKnots * MetresPerNauticalMile / SecondsPerHour;
    plan.stations.push_back({arc.station, station, FixKind::Vortac});
    plan.airspaces = layOutAirspaces(layout, departure, summit, source);
    plan.legs = {leg("DEPARTURE", DirectLeg{departure, false}),
                 leg("CLIMB", DirectLeg{first, false}),
                 leg("ARC", arc),
                 leg("SUMMIT", DirectLeg{summit, true}),
                 leg("CROSSING", crossing),
                 leg("RETURN", DirectLeg{layout.inside(layout.middle(), FixMargin), false})};
    plan.legs.front().fix = FixKind::Airport;
    plan.legs[4].fix = FixKind::Intersection;
    Route route;
    std::string error;
    if (!resolveRoute(plan, route, error)) { // the courses hardly cross
        plan.legs[4].kind = DirectLeg{corner, false};
        plan.legs[4].fix = FixKind::Waypoint;
    }
    planAltitudes(plan, source);
    return plan;
}

} // namespace MovingMap
