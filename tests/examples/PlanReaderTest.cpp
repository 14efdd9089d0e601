#include <moving_map/BuiltInPlan.h>
#include <moving_map/PlanReader.h>
#include <moving_map/Route.h>
#include <support/TemporaryDirectory.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

using namespace MovingMap;

TEST(PlanReader, ReadsEveryKindOfLegAndOption)
{
    FlightPlan plan;
    std::string error;
    ASSERT_TRUE(readPlan("\xEF\xBB\xBF# comment\n"
                         "speed 180   # knots\n"
                         "\r\n"
                         "station VOR 45.5 -31.25\n"
                         "start A 45 -31.5 altitude 1000\n"
                         "to B 45.25 -31.5 flyover left radius 2.5\n"
                         "\tcross C A 020 VOR 350.5 right\r\n"
                         "arc D VOR 12 counterclockwise 270 course 90 altitude 5000\n"
                         "turn E 360 radius 1\n",
                         "test.plan", plan, error))
        << error;
    EXPECT_EQ(plan.source, "test.plan");
    EXPECT_DOUBLE_EQ(plan.speedMetresPerSecond, 92.6);
    ASSERT_EQ(plan.stations.size(), 1u);
    EXPECT_EQ(plan.stations[0].position.lonDegrees, -31.25);
    ASSERT_EQ(plan.legs.size(), 5u);

    EXPECT_EQ(std::get<DirectLeg>(plan.legs[0].kind).to.latDegrees, 45.0);
    EXPECT_DOUBLE_EQ(plan.legs[0].altitudeMetres.value_or(0.0), 304.8);
    EXPECT_FALSE(plan.legs[0].radiusMetres.has_value());

    EXPECT_TRUE(std::get<DirectLeg>(plan.legs[1].kind).flyOver);
    EXPECT_EQ(plan.legs[1].turn, TurnDirection::Left);
    EXPECT_DOUBLE_EQ(plan.legs[1].radiusMetres.value_or(0.0), 4630.0);
    EXPECT_EQ(plan.legs[1].line, 6);

    const auto& crossing = std::get<CrossingLeg>(plan.legs[2].kind);
    EXPECT_EQ(crossing.firstFix + crossing.secondFix, "AVOR");
    EXPECT_EQ(crossing.secondCourseDegrees, 350.5);
    EXPECT_EQ(plan.legs[2].turn, TurnDirection::Right);

    const auto& arc = std::get<ArcLeg>(plan.legs[3].kind);
    EXPECT_DOUBLE_EQ(arc.distanceMetres, 12 * 1852.0);
    EXPECT_FALSE(arc.clockwise);
    EXPECT_EQ(arc.radialDegrees, 270.0);
    EXPECT_EQ(arc.courseDegrees.value_or(0.0), 90.0);

    EXPECT_EQ(std::get<TurnLeg>(plan.legs[4].kind).courseDegrees, 360.0);
}

TEST(PlanReader, ReadsAirspacesAndKinds)
{
    FlightPlan plan;
    std::string error;
    ASSERT_TRUE(readPlan("station S 45 -31\n"
                         "station N 45 -31 ndb\n"
                         "airspace ZONE D ground 2500\n"
                         "circle 45 -31 12 # around the field\n"
                         "airspace HOT restricted FL95 unlimited\n"
                         "corner 45.5 -31\n"
                         "\n"
                         "curve 45 -31 12 counterclockwise 20 340\n"
                         "start A 45 -31 airport\n"
                         "to B 46 -31\n"
                         "cross C A 20 B 100\n"
                         "airspace LAST G -100 0\n"
                         "corner 1 1\ncorner 1 2\ncorner 2 2",
                         "p", plan, error))
        << error;
    EXPECT_EQ(plan.stations[0].kind, FixKind::Vortac);
    EXPECT_EQ(plan.stations[1].kind, FixKind::Ndb);
    EXPECT_EQ(plan.legs[0].fix, FixKind::Airport);
    EXPECT_EQ(plan.legs[1].fix, FixKind::Waypoint);
    EXPECT_EQ(plan.legs[2].fix, FixKind::Intersection);

    ASSERT_EQ(plan.airspaces.size(), 3u);
    const Airspace& zone = plan.airspaces[0];
    EXPECT_EQ(zone.name + zone.floor.text + zone.ceiling.text, "ZONEGND2500");
    EXPECT_EQ(zone.outline.size(), 180u);
    for (const Position& point : zone.outline) {
        EXPECT_NEAR(planeDistance({45.0, -31.0}, point), 12 * 1852.0, 1e-3);
    }
    const Airspace& hot = plan.airspaces[1];
    EXPECT_EQ(hot.airspaceClass, AirspaceClass::Restricted);
    EXPECT_DOUBLE_EQ(hot.floor.metres, 9500 * 0.3048);
    EXPECT_EQ(hot.floor.text + hot.ceiling.text, "FL95UNL");
    ASSERT_EQ(hot.outline.size(), 1u + 21u); // 40 degrees to the left, over north
    EXPECT_NEAR(planeCourse({45.0, -31.0}, hot.outline[1]), 20.0, 1e-6);
    EXPECT_NEAR(planeCourse({45.0, -31.0}, hot.outline[2]), 18.0, 1e-6);
    EXPECT_NEAR(planeCourse({45.0, -31.0}, hot.outline.back()), 340.0, 1e-6);
    EXPECT_EQ(plan.airspaces[2].outline.size(), 3u);
}

TEST(Airspace, InteriorPointsLieInside)
{
    // An L whose arms are 10 miles wide and 30 long: its middle, in the corner between the arms, is outside.
    const double mile = 1.0 / 60.0;
    const std::vector<Position> corner = {
        {0, 0}, {30 * mile, 0}, {30 * mile, 10 * mile}, {10 * mile, 10 * mile}, {10 * mile, 30 * mile}, {0, 30 * mile}};
    for (const double sign : {1.0, -1.0}) { // both ways round, in two quarters of the earth
        std::vector<Position> outline = corner;
        for (Position& position : outline) {
            position.latDegrees *= sign;
        }
        const std::vector<InteriorPoint> points = interiorPoints(outline);
        EXPECT_GE(points.size(), 20u);
        for (const InteriorPoint& point : points) {
            const double north = point.position.latDegrees * sign / mile;
            const double east = point.position.lonDegrees / mile;
            EXPECT_TRUE(north > 0.0 && east > 0.0 && (north < 10.0 || east < 10.0)) << north << " " << east;
            const double toEdges = std::min({north, east,
                                             north < 10.0 && east > 10.0   ? 10.0 - north
                                             : east < 10.0 && north > 10.0 ? 10.0 - east
                                                                           : 1e9});
            EXPECT_LT(point.clearanceMetres, toEdges * 1857.0) << north << " " << east;
        }
        EXPECT_GT(points.front().clearanceMetres, 4.5 * 1852.0);
    }
    EXPECT_TRUE(interiorPoints({{1, 1}, {1, 1}, {1, 1}}).empty());
}

TEST(PlanReader, NamesSourceLineAndFault)
{
    const std::string start = "start A 45 -31\n";
    const std::string zone = "airspace Z D ground 2500\n";
    std::string manyCurves;
    for (int i = 0; i < 12; ++i) {
        manyCurves += "curve 1 1 3 clockwise 0 358\n"; // 180 points each
    }
    std::string manyAirspaces;
    for (int i = 0; i < 28; ++i) {
        manyAirspaces += zone;
        for (int curve = 0; curve < 10; ++curve) {
            manyAirspaces += "curve 1 1 3 clockwise 0 358\n";
        }
    }
    struct Case
    {
        std::string text;
        const char* complaint;
    };
    const Case cases[] = {
        {"", "p:0: the plan needs a 'start'"},
        {start, "p:1: the plan needs a 'start' and at least one leg"},
        {"to B 45 -31\n", "p:1: the first leg must be a 'start'"},
        {"strat A 45 -31\n", "p:1: unknown entry 'strat'"},
        {start + start, "p:2: a second 'start'"},
        {start + "fly B 46 -31\n", "p:2: unknown entry 'fly'"},
        {start + "to\n", "p:2: name is missing"},
        {start + "to B 46\n", "p:2: longitude is missing"},
        {start + "to B 46n -31\n", "p:2: latitude '46n' is no number from -85 to 85"},
        {start + "to B 86 -31\n", "latitude '86'"},
        {start + "to B nan -31\n", "latitude 'nan'"},
        {start + "to B 1e999 -31\n", "latitude '1e999'"},
        {start + "to B 46 -181\n", "longitude '-181'"},
        {start + "to A 46 -31\n", "p:2: 'A' is named twice"},
        {start + "to B 46 -31 altitude\n", "altitude in feet is missing"},
        {start + "to B 46 -31 altitude 70000\n", "altitude in feet '70000'"},
        {start + "to B 46 -31 radius 0\n", "radius in miles '0'"},
        {start + "to B 46 -31 course 90\n", "'course' does not belong here"},
        {start + "turn B 90 flyover\n", "'flyover' does not belong here"},
        {start + "cross B A 90 C 0\n", "no fix or station 'C' above this line"},
        {start + "cross B A 90 B 0\n", "no fix or station 'B' above this line"},
        {start + "arc B A 10 clockwise 90\n", "no station 'A' above this line"},
        {"station S 45 -31\n" + start + "arc B S 10 right 90\n", "p:3: direction 'right' is neither"},
        {"station S 45 -31 46\n", "p:1: '46' does not belong here"},
        {"station S 45 -31 tacan\n", "p:1: 'tacan' does not belong here"},
        {start + "to B 46 -31 vor airport heliport\n", "p:2: 'heliport' does not belong here"},
        {start + "corner 45 -31\n", "p:2: 'corner' belongs below an 'airspace'"},
        {start + zone + "to B 46 -31\ncorner 45 -31\n", "p:2: the boundary of 'Z' has fewer than three corners"},
        {zone + "corner 1 1\ncorner 1 2\n" + start, "p:1: the boundary of 'Z' has fewer than three corners"},
        {zone + "corner 1 1\ncorner 1 2\n", "p:1: the boundary of 'Z'"},
        {zone + "circle 1 1 3\ncorner 1 2\n", "p:3: a 'circle' is the whole boundary"},
        {zone + "corner 1 1\ncircle 1 2 3\n", "p:3: a 'circle' is the whole boundary"},
        {zone + "circle 1 1 201\n", "p:2: radius in miles '201'"},
        {zone + "curve 1 1 3 left 0 90\n", "p:2: direction 'left'"},
        {zone + "curve 1 1 3 clockwise 0\n", "p:2: second radial is missing"},
        {zone + "corner 1 1 1\n", "p:2: '1' does not belong here"},
        {zone + manyCurves, "p:13: the boundary of 'Z' has too many corners"},
        {manyAirspaces, "p:306: the boundaries of the airspaces have too many corners in all"},
        {"airspace Z H ground 2500\n", "p:1: class 'H' is neither"},
        {"airspace Z A 2500 2500\n", "p:1: the ceiling of 'Z' is not above its floor"},
        {"airspace Z A FL20 FL601\n", "p:1: ceiling 'FL601' is neither feet"},
        {"airspace Z A FL FL60\n", "p:1: floor 'FL' is neither feet"},
        {"airspace Z A 0 2500 feet\n", "p:1: 'feet' does not belong here"},
        {"speed fast\n", "p:1: speed in knots 'fast'"},
        {std::string("start A\0 45 -31\n", 16), "p:1:"},
    };
    for (const Case& c : cases) {
        FlightPlan plan;
        plan.source = "untouched";
        std::string error;
        EXPECT_FALSE(readPlan(c.text, "p", plan, error)) << c.text;
        EXPECT_THAT(error, testing::HasSubstr(c.complaint)) << c.text;
        EXPECT_EQ(plan.source, "untouched") << c.text;
    }
}

TEST(PlanReader, FilesThatAreNoPlansAreNamed)
{
    const Tavik::Support::TemporaryDirectory directory;
    const std::string large = directory.path() + "/large";
    std::ofstream(large) << std::string(1'000'001, '\n');
    for (const std::string& path : {directory.path() + "/missing", directory.path(), large}) {
        FlightPlan plan;
        std::string error;
        EXPECT_FALSE(readPlanFile(path, plan, error)) << path;
        EXPECT_THAT(error, testing::StartsWith(path + ": ")) << path;
    }
    const std::string good = directory.path() + "/good";
    std::ofstream(good) << BuiltInPlan;
    FlightPlan plan;
    std::string error;
    EXPECT_TRUE(readPlanFile(good, plan, error)) << error;
}

TEST(Route, LegsThatCannotBeFlownAreNamed)
{
    const std::string start = "station S 45.5 -31\nstart A 45 -31\n";
    struct Case
    {
        const char* name;
        std::string legs;
        const char* complaint;
    };
    const Case cases[] = {
        {"parallel courses", "to B 45 -30\ncross C A 0 B 0\n", "p:4: the courses from 'A' and 'B' do not cross ahead"},
        {"crossing behind", "to B 45 -30\ncross C A 200 B 160\n", "do not cross ahead"},
        {"circle missed", "arc B S 10 clockwise 90 course 90\n", "p:3: the course to the arc of 'B'"},
        {"circle behind", "arc B S 10 clockwise 90 course 180\n", "does not reach its circle ahead"},
        {"no length", "to B 45 -31\n", "p:3: the leg to 'B' has no length"},
        {"too long", "to B 45 10\n", "p:3: the leg to 'B' is longer than 600 miles"},
        {"turn without a leg", "turn B 90\n", "p:3: 'B' turns where no leg has been flown"},
    };
    for (const Case& c : cases) {
        FlightPlan plan;
        Route route;
        std::string error;
        ASSERT_TRUE(readPlan(start + c.legs, "p", plan, error)) << error;
        EXPECT_FALSE(resolveRoute(plan, route, error)) << c.name;
        EXPECT_THAT(error, testing::HasSubstr(c.complaint)) << c.name;
    }
}
