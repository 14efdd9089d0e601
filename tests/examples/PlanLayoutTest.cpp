#include <moving_map/PlanLayout.h>
#include <moving_map/Route.h>
#include <moving_map/RoutePath.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace MovingMap;

namespace {

struct Case
{
    const char* name;
    std::vector<Position> cells;
    HeightSource source;
    double south, west, north, east; // that the plan must keep to
};

double mountain(double lat, double lon, double peakLat, double peakLon)
{
    return std::round(3000.0 *
                      std::exp(-40.0 * ((lat - peakLat) * (lat - peakLat) + (lon - peakLon) * (lon - peakLon))));
}

} // namespace

TEST(PlanLayout, EveryPlanCanBeFlownOverItsTilesAndClearOfTheGround)
{
    const Case cases[] = {
        {"peak in the middle", {{43, 7}}, [](double a, double o) { return mountain(a, o, 43.5, 7.5); }, 43, 7, 44, 8},
        {"peak at the edge", {{43, 7}}, [](double a, double o) { return mountain(a, o, 43.99, 7.4); }, 43, 7, 44, 8},
        {"peak in a corner",
         {{-4, -72}},
         [](double a, double o) { return mountain(a, o, -4.0, -71.0); },
         -4,
         -72,
         -3,
         -71},
        {"four tiles",
         {{45, -32}, {45, -31}, {46, -32}, {46, -31}},
         [](double a, double o) { return mountain(a, o, 46.7, -31.2); },
         45,
         -32,
         47,
         -30},
        {"the flat one is left aside",
         {{10, 10}, {20, 20}},
         [](double a, double o) { return mountain(a, o, 20.4, 20.6); },
         20,
         20,
         21,
         21},
        {"sea alone", {{0, 0}}, [](double, double) { return 0.0; }, 0, 0, 1, 1},
        {"unreadable",
         {{60, 5}},
         [](double, double) { return std::numeric_limits<double>::quiet_NaN(); },
         60,
         5,
         61,
         6},
    };
    for (const Case& c : cases) {
        const FlightPlan plan = layOutPlan({c.cells, false}, c.source);
        Route route;
        std::string error;
        ASSERT_TRUE(resolveRoute(plan, route, error)) << c.name << ": " << error;
        const RoutePath path(route);
        EXPECT_GT(path.length(), 50000.0) << c.name;
        EXPECT_EQ(route.airspaces.size(), 3u) << c.name;
        for (const Airspace& airspace : route.airspaces) {
            EXPECT_LT(airspace.floor.metres, airspace.ceiling.metres) << c.name << " " << airspace.name;
            EXPECT_GE(airspace.outline.size(), 3u) << c.name << " " << airspace.name;
        }
        for (int probe = 0; probe * 500.0 < path.length(); ++probe) {
            const double distance = probe * 500.0;
            const Position place = path.at(distance).position;
            EXPECT_TRUE(place.latDegrees > c.south && place.latDegrees < c.north) << c.name << " " << place.latDegrees;
            EXPECT_TRUE(place.lonDegrees > c.west && place.lonDegrees < c.east) << c.name << " " << place.lonDegrees;
            const double height = c.source(place.latDegrees, place.lonDegrees);
            EXPECT_FALSE(path.altitudeMetres(distance) < height + 300.0) << c.name << " at " << distance;
        }
    }
}
