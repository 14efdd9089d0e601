#include <moving_map/BuiltInPlan.h>
#include <moving_map/PlanReader.h>
#include <moving_map/RoutePath.h>
#include <moving_map/Simulation.h>
#include <tavik/geodetic/EarthModel.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace MovingMap;

namespace {

constexpr double Mile = 1852.0;

/// Turns of 2 miles; A lies south of the station S.
const std::string Head = "speed 250\nstation S 46 -31\n";

Route routeOf(const std::string& text)
{
    FlightPlan plan;
    Route route;
    std::string error;
    EXPECT_TRUE(readPlan(text, "test", plan, error) && resolveRoute(plan, route, error)) << error;
    return route;
}

const PathFix& fixOf(const RoutePath& path, const std::string& name)
{
    const auto found =
        std::find_if(path.fixes().begin(), path.fixes().end(), [&](const PathFix& fix) { return fix.name == name; });
    EXPECT_NE(found, path.fixes().end()) << name;
    return *found;
}

struct Case
{
    const char* name;
    std::string legs;
};

const Case SmoothPlans[] = {
    {"fly-by right", "start A 45.4 -31\nto B 45.7 -31 radius 2\nto C 45.7 -30.5\n"},
    {"fly-by left", "start A 45.4 -31\nto B 45.7 -31 radius 2\nto C 45.7 -31.5\n"},
    {"fly-by back sharply", "start A 45.4 -31\nto B 45.7 -31 radius 2\nto C 45.4 -30.9\n"},
    {"legs too short for their turns",
     "start A 45.4 -31\nto B 45.5 -31 radius 5\nto C 45.5 -30.9 radius 5\nto D 45.6 -30.9\n"},
    {"fly-over right", "start A 45.4 -31\nto B 45.7 -31 flyover radius 2\nto C 45.7 -30.5\n"},
    {"fly-over the long way", "start A 45.4 -31\nto B 45.7 -31 flyover left radius 2\nto C 45.7 -30.5\n"},
    {"arc from outside, left turn", "start A 45.4 -31\narc B S 15 clockwise 270 radius 2\n"},
    {"arc from outside, right turn", "start A 45.4 -31\narc B S 15 counterclockwise 90 radius 2\n"},
    {"arc from inside", "start A 45.95 -31\narc B S 15 clockwise 70 course 10 radius 2\n"},
    {"arc aslant", "start A 45.4 -31\narc B S 15 clockwise 270 course 340 radius 2\n"},
    {"arc and inbound", "start A 45.4 -31\narc B S 15 clockwise 270 radius 2\nto C 46 -31\n"},
    {"arc and outbound", "start A 45.4 -31\narc B S 15 counterclockwise 90 radius 2\nto C 46 -30\n"},
    {"reversal", "start A 45.4 -31\nto B 45.7 -31\nturn C 180 right radius 2\nto D 45.3 -30.905\n"},
    {"back on the same line", "start A 45.4 -31\nto B 45.7 -31 radius 2\nto C 45.4 -31\n"},
    {"fly-by the long way", "start A 45.4 -31\nto B 45.7 -31 left radius 2\nto C 45.7 -30.5\n"},
    {"arc and back", "start A 45.4 -31\narc B S 15 clockwise 270 radius 2\nto C 45.6 -31.4\n"},
    {"arc and through its circle", "start A 45.4 -31\narc B S 15 clockwise 270 radius 2\nto C 45.9 -30\n"},
};

} // namespace

TEST(RoutePath, HasNoCornersAndFollowsItsFixesInOrder)
{
    std::vector<Case> cases(std::begin(SmoothPlans), std::end(SmoothPlans));
    for (Case& c : cases) {
        c.legs = Head + c.legs;
    }
    cases.push_back({"built-in", BuiltInPlan});
    for (const Case& c : cases) {
        const Route route = routeOf(c.legs);
        const RoutePath path(route);
        const std::vector<PathPoint>& points = path.points();
        for (std::size_t i = 2; i < points.size(); ++i) {
            const double before = planeCourse(points[i - 2].position, points[i - 1].position);
            const double behind = planeCourse(points[i - 1].position, points[i].position);
            const bool tiny = points[i].distanceMetres - points[i - 1].distanceMetres < 1.0 ||
                              points[i - 1].distanceMetres - points[i - 2].distanceMetres < 1.0;
            // One degree for each point of an arc, a little more where it begins and ends between whole degrees.
            if (!tiny) {
                EXPECT_LT(std::abs(Tavik::Geodetic::getHeadingDifference(before, behind)), 2.1)
                    << c.name << " at point " << i << " of " << points.size();
            }
            EXPECT_GE(points[i].leg, points[i - 1].leg) << c.name;
        }
        for (int i = 0; i * 300.0 < path.length(); ++i) {
            const double before = path.at(i * 300.0 - 600.0).trackDegrees;
            const double behind = path.at(i * 300.0 + 600.0).trackDegrees;
            // 1200 m of the tightest turn, 3.3 km, are 21 degrees.
            EXPECT_LT(std::abs(Tavik::Geodetic::getHeadingDifference(before, behind)), 30.0)
                << c.name << " at " << i * 300;
        }
        for (std::size_t i = 1; i < path.fixes().size(); ++i) {
            EXPECT_GT(path.fixes()[i].distanceMetres, path.fixes()[i - 1].distanceMetres) << c.name;
        }
        EXPECT_EQ(points.back().leg + 1, route.legs.size()) << c.name;
    }
}

TEST(RoutePath, FlyByPassesInsideTheCornerAndFlyOverCrossesIt)
{
    const RoutePath flyBy(routeOf(Head + SmoothPlans[0].legs));
    const PathFix& by = fixOf(flyBy, "B");
    const RoutePath::State abeam = flyBy.at(by.distanceMetres);
    EXPECT_NEAR(planeDistance(by.position, abeam.position), 2 * Mile * (std::sqrt(2.0) - 1.0), 10.0);
    EXPECT_NEAR(abeam.trackDegrees, 45.0, 1.0);
    EXPECT_EQ(flyBy.at(by.distanceMetres - 500.0).leg, 0u);
    EXPECT_EQ(flyBy.at(by.distanceMetres + 500.0).leg, 1u);

    const RoutePath flyOver(routeOf(Head + SmoothPlans[4].legs));
    const PathFix& over = fixOf(flyOver, "B");
    EXPECT_NEAR(planeDistance(over.position, flyOver.at(over.distanceMetres).position), 0.0, 1.0);
    EXPECT_EQ(flyOver.at(over.distanceMetres - 1.0).leg, 0u);
    EXPECT_EQ(flyOver.at(over.distanceMetres + 100.0).leg, 1u);
    EXPECT_NEAR(flyOver.at(over.distanceMetres - 1000.0).trackDegrees, 0.0, 0.01);
}

TEST(RoutePath, SharpTurnsAndThoseTheLongWayBeginOverTheirFix)
{
    for (const Case& c : SmoothPlans) {
        const std::string name = c.name;
        if (name.find("back") == std::string::npos && name.find("long way") == std::string::npos) {
            continue;
        }
        const RoutePath path(routeOf(Head + c.legs));
        const PathFix& fix = fixOf(path, "B");
        EXPECT_NEAR(planeDistance(fix.position, path.at(fix.distanceMetres).position), 0.0, 1.0) << name;
    }
}

TEST(RoutePath, ArcKeepsItsDistanceAndEndsOnItsRadial)
{
    for (const bool clockwise : {true, false}) {
        const RoutePath path(routeOf(Head + (clockwise ? SmoothPlans[6] : SmoothPlans[7]).legs));
        const Position station = {46.0, -31.0};
        const double end = path.length();
        const double arc = 15 * Mile * 3.14159265 / 2.0; // a quarter of the circle
        for (int km = 0; km * 1000.0 < arc - 4 * Mile; ++km) {
            EXPECT_NEAR(planeDistance(station, path.at(end - km * 1000.0).position), 15 * Mile, 10.0);
        }
        EXPECT_NEAR(planeCourse(station, path.at(end).position), clockwise ? 270.0 : 90.0, 0.01);
        EXPECT_NEAR(path.at(end - 1000.0).trackDegrees, clockwise ? 358.0 : 2.0, 1.0);
    }
}

TEST(RoutePath, ArcTooShortForItsTurnsIsNotFlownAllTheWayRound)
{
    for (const char* radial : {"181", "184", "188"}) {
        const RoutePath path(
            routeOf(Head + "start A 45.4 -31\narc B S 15 clockwise " + radial + " radius 2\nto C 45.3 -31.2\n"));
        EXPECT_LT(path.length(), 70 * Mile) << radial; // once round is 94 miles
    }
}

TEST(RoutePath, CrossingLiesOnBothCourses)
{
    const Route route = routeOf(Head + "start A 45.4 -31\ncross B A 030 S 120\n");
    const Position crossing = route.legs.back().to;
    EXPECT_NEAR(planeCourse({45.4, -31.0}, crossing), 30.0, 0.01);
    EXPECT_NEAR(planeCourse({46.0, -31.0}, crossing), 120.0, 0.3); // computed in the plane about A
}

TEST(RoutePath, AltitudesAreLinearBetweenTheFixesThatHaveOne)
{
    const RoutePath path(routeOf(Head + "start A 45 -31 altitude 1000\nto B 45.2 -31\nto C 45.4 -31 altitude 5000\n"
                                        "to D 45.8 -31\n"));
    const double half = fixOf(path, "B").distanceMetres;
    const double feet = 0.3048;
    EXPECT_NEAR(path.altitudeMetres(-5.0), 1000 * feet, 1e-6);
    EXPECT_NEAR(path.altitudeMetres(half), 3000 * feet, 0.5);
    EXPECT_NEAR(path.altitudeMetres(path.length()), 5000 * feet, 1e-6);
    EXPECT_TRUE(std::isnan(RoutePath(routeOf(Head + "start A 45 -31\nto B 46 -31\n")).altitudeMetres(500.0)));
}

TEST(Simulation, FliesOnStopsAndBeginsAgain)
{
    const RoutePath path(routeOf(Head + "start A 45 -31\nto B 46 -31\n"));
    Simulation simulation(path, 100.0, 10.0);
    EXPECT_DOUBLE_EQ(simulation.distanceMetres(), 1000.0);
    simulation.setSpeedFactor(4.0);
    simulation.advance(2.0);
    EXPECT_DOUBLE_EQ(simulation.distanceMetres(), 1800.0);
    simulation.setPaused(true);
    simulation.advance(2.0);
    EXPECT_DOUBLE_EQ(simulation.distanceMetres(), 1800.0);
    simulation.setPaused(false);
    simulation.advance(path.length() / 400.0);
    EXPECT_NEAR(simulation.distanceMetres(), 1800.0, 1e-6);
}
