// Flight plans of the moving map: reads the plan and lays out its route, path and airspaces.

#include <fuzz/Require.h>
#include <moving_map/PlanReader.h>
#include <moving_map/RoutePath.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

using namespace MovingMap;
using Tavik::Fuzz::require;

namespace {

bool isOnEarth(Position position)
{
    return std::abs(position.latDegrees) <= 90.0 && std::abs(position.lonDegrees) <= 360.0;
}

void checkPath(const RoutePath& path)
{
    const auto& points = path.points();
    require(points.size() >= 2 && std::isfinite(path.length()));
    for (std::size_t i = 1; i < points.size(); ++i) {
        require(isOnEarth(points[i].position));
        require(points[i].distanceMetres >= points[i - 1].distanceMetres);
        require(points[i].leg >= points[i - 1].leg);
    }
    const double distances[] = {-1.0, 0.0, path.length() / 3.0, path.length(), 2.0 * path.length() + 1.0};
    for (const double distance : distances) {
        const RoutePath::State state = path.at(distance);
        require(isOnEarth(state.position) && state.trackDegrees >= 0.0 && state.trackDegrees <= 360.0);
        require(path.nextFix(distance) < path.fixes().size());
        path.altitudeMetres(distance);
    }
}

void checkAirspace(const Airspace& airspace)
{
    require(airspace.outline.size() >= 3 && std::all_of(airspace.outline.begin(), airspace.outline.end(), isOnEarth));
    for (const InteriorPoint& point : interiorPoints(airspace.outline)) {
        require(isOnEarth(point.position) && point.clearanceMetres >= 0.0);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FlightPlan plan;
    std::string error;
    if (!readPlan(std::string(data, data + size), "fuzz.plan", plan, error)) {
        require(error.rfind("fuzz.plan:", 0) == 0);
        return 0;
    }
    require(error.empty());
    std::for_each(plan.airspaces.begin(), plan.airspaces.end(), checkAirspace);
    Route route;
    if (!resolveRoute(plan, route, error)) {
        require(!error.empty());
        return 0;
    }
    checkPath(RoutePath(route));
    return 0;
}
