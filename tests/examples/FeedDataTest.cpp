#include <moving_map/FeedData.h>
#include <moving_map/PlanReader.h>
#include <moving_map/RouteProgress.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

using namespace MovingMap;

namespace {

constexpr PerFeed<bool> All = {{{true, true, true, true}}};

Feeds::Traffic trafficAt(std::uint32_t address, double lat, double lon)
{
    return {address, "T" + std::to_string(address), {lat, lon, 1000.0f, 100.0f, 0.0f, 0.0f}};
}

Feeds::OwnShip ownShipAt(std::uint32_t sequence, double lat)
{
    return {sequence, {lat, 0.0, 500.0f, 0.0f, 90.0f, 0.0f}};
}

Feeds::NmeaRmc rmcAt(double lat, bool isValid = true)
{
    Feeds::NmeaRmc rmc;
    rmc.isValid = isValid;
    rmc.latDegrees = lat;
    rmc.lonDegrees = 0.0;
    return rmc;
}

bool holds(const TrafficTable& table, std::uint32_t address)
{
    return std::any_of(table.targets().begin(), table.targets().end(),
                       [address](const Target& target) { return target.address == address; });
}

} // namespace

TEST(FeedDataTest, AFullTableKeepsTheNearest)
{
    TrafficTable table;
    table.setCentre({60.0, 179.9});
    constexpr auto Most = static_cast<std::uint32_t>(TrafficTable::MostTargets);
    for (std::uint32_t i = 0; i < Most - 1; ++i) {
        table.take(trafficAt(i, 61.0 + 0.01 * i, 179.9), 0.0);
    }
    Feeds::SbsMessage unplaced;
    unplaced.address = 7000;
    table.take(unplaced, 0.0);
    ASSERT_TRUE(holds(table, 7000));

    struct Case
    {
        const char* name;
        double lat;
        double lon;
        std::uint32_t victim; // whose place is taken; the newcomer's own address if none is
    };
    const std::uint32_t first = 8000;
    const Case cases[] = {
        {"takes the place of one without a position", 63.0, 179.9, 7000},
        {"is farther than all", 50.0, 179.9, first + 1},
        {"is nearer, across the antimeridian", 60.0, -179.8, first},
        {"is nearer by longitude: a degree of it is half as long here", 60.0, 176.5, Most - 2},
    };
    std::uint32_t address = first;
    for (const Case& c : cases) {
        table.take(trafficAt(address, c.lat, c.lon), 0.0);
        EXPECT_EQ(table.targets().size(), Most) << c.name;
        EXPECT_EQ(holds(table, address), c.victim != address) << c.name;
        EXPECT_FALSE(holds(table, c.victim)) << c.name;
        ++address;
    }
    for (std::uint32_t i = 0; i < 20000; ++i) {
        table.take(trafficAt(100000 + i, 60.0, 179.9), 0.0);
    }
    EXPECT_EQ(table.targets().size(), Most);
}

TEST(FeedDataTest, PiecesOfATransponderMakeOneAircraft)
{
    FeedData data(All);
    FeedPicture picture;
    Feeds::SbsMessage callsign;
    callsign.address = 1;
    callsign.callsign = "ABC1";
    Feeds::SbsMessage velocity;
    velocity.address = 1;
    velocity.speedKnots = 360.0;
    velocity.trackDegrees = 0.0;
    velocity.climbFeetPerMinute = -600.0;
    Feeds::SbsMessage position;
    position.address = 1;
    position.latDegrees = 50.0;
    position.lonDegrees = 10.0;
    position.altitudeFeet = 10000.0;
    data.take(FeedKind::Sbs, callsign, 100.0);
    data.take(FeedKind::Sbs, velocity, 100.0);
    data.show(100.0, picture);
    EXPECT_TRUE(picture.traffic.empty()) << "its place is not known";

    data.take(FeedKind::Sbs, position, 101.0);
    data.show(111.0, picture);
    ASSERT_EQ(picture.traffic.size(), 1u);
    const FeedPicture::Aircraft& aircraft = picture.traffic[0];
    EXPECT_EQ(aircraft.callsign, "ABC1");
    EXPECT_NEAR(aircraft.motion.position.latDegrees, 50.0 + 1852.0 / 111319.49, 1e-6) << "a mile in ten seconds";
    EXPECT_NEAR(aircraft.motion.altitudeMetres.value(), 3048.0, 1e-9);
    EXPECT_NEAR(aircraft.motion.climbMetresPerSecond.value(), -3.048, 1e-9);
    EXPECT_TRUE(aircraft.isOld);

    position.isOnGround = true;
    data.take(FeedKind::Sbs, position, 112.0);
    data.show(112.0, picture);
    EXPECT_TRUE(picture.traffic.empty()) << "on ground";
    position.isOnGround = false;
    data.take(FeedKind::Sbs, position, 113.0);
    data.show(113.0, picture);
    EXPECT_EQ(picture.traffic.size(), 1u);
    EXPECT_FALSE(picture.traffic[0].isOld);
    data.take(FeedKind::Sbs, velocity, 120.0);
    data.show(128.1, picture);
    EXPECT_TRUE(picture.traffic.empty()) << "only its velocity is fresh";
}

TEST(FeedDataTest, FollowsTheFeedThatIsAlive)
{
    FeedData data(All);
    FeedPicture picture;
    const auto latitudeAt = [&](double now) {
        data.show(now, picture);
        return picture.ownShip ? picture.ownShip->position.latDegrees : NAN;
    };
    EXPECT_TRUE(std::isnan(latitudeAt(0.0)));
    EXPECT_TRUE(picture.isOwnShipLost && picture.isLost[FeedKind::OwnShip] && picture.isLost[FeedKind::Nmea]);

    data.take(FeedKind::Nmea, rmcAt(99.0, false), 0.0);
    EXPECT_TRUE(std::isnan(latitudeAt(0.0))) << "the receiver has no position";
    data.take(FeedKind::Nmea, rmcAt(40.0), 1.0);
    Feeds::NmeaGga gga;
    gga.quality = 1;
    gga.latDegrees = 40.0;
    gga.lonDegrees = 0.0;
    gga.altitudeMetres = 300.0;
    data.take(FeedKind::Nmea, gga, 1.0);
    EXPECT_EQ(latitudeAt(1.0), 40.0);
    EXPECT_EQ(picture.ownShip->altitudeMetres, 300.0);
    EXPECT_FALSE(picture.isOwnShipLost || picture.isLost[FeedKind::Nmea]);

    data.take(FeedKind::OwnShip, ownShipAt(0xFFFFFFFF, 50.0), 2.0);
    EXPECT_EQ(latitudeAt(2.0), 50.0) << "the better feed";
    data.take(FeedKind::OwnShip, ownShipAt(1, 51.0), 2.1);
    data.take(FeedKind::OwnShip, ownShipAt(0, 49.0), 2.2);
    EXPECT_EQ(latitudeAt(2.2), 51.0) << "a late datagram, in spite of the number's turn";

    data.take(FeedKind::Nmea, rmcAt(41.0), 4.0);
    EXPECT_EQ(latitudeAt(4.2), 41.0) << "the other one is alive";
    EXPECT_TRUE(picture.isLost[FeedKind::OwnShip] && !picture.isOwnShipLost);
    data.take(FeedKind::OwnShip, ownShipAt(0, 52.0), 5.0);
    EXPECT_EQ(latitudeAt(5.0), 52.0) << "the sender has begun anew";
    EXPECT_EQ(latitudeAt(50.0), 52.0) << "stays where it was";
    EXPECT_TRUE(picture.isOwnShipLost);
    data.take(FeedKind::Nmea, rmcAt(42.0), 51.0);
    EXPECT_EQ(latitudeAt(51.0), 42.0);
    EXPECT_FALSE(picture.ownShip->altitudeMetres) << "it is of long ago";
}

TEST(FeedDataTest, AFeedIsLostWithoutItsReports)
{
    for (std::size_t i = 0; i < FeedCount; ++i) {
        const auto kind = static_cast<FeedKind>(i);
        PerFeed<bool> isOn = {};
        isOn[kind] = true;
        FeedData data(isOn);
        FeedPicture picture;
        const auto lost = [&](double now) {
            data.show(now, picture);
            EXPECT_LE(std::count(picture.isLost.begin(), picture.isLost.end(), true), 1) << "one that is off";
            return picture.isLost[kind];
        };
        EXPECT_TRUE(lost(10.0)) << i;
        data.take(kind, {}, 10.0);
        EXPECT_FALSE(lost(10.0 + 0.9 * UsualSilenceSeconds[kind])) << i;
        EXPECT_TRUE(lost(10.0 + 1.1 * UsualSilenceSeconds[kind])) << i;
        data.take(kind, {}, 100.0);
        data.disconnect(kind);
        EXPECT_TRUE(lost(100.0)) << i;
    }
}

TEST(FeedDataTest, AnAircraftGoesAlongItsRouteOnce)
{
    FlightPlan plan;
    Route route;
    std::string error;
    const char* const thereAndBack = "speed 200\nstart A 45 -31\nto B 45.5 -31\nto C 45 -31.001\nto D 45 -30.5\n"
                                     "to E 45.3 -31.3\n"; // crosses its first leg
    ASSERT_TRUE(readPlan(thereAndBack, "test", plan, error) && resolveRoute(plan, route, error)) << error;
    const RoutePath path(route);
    RouteProgress progress(path);
    for (double metres = 0.0; metres < path.length(); metres += 500.0) {
        Position aside = path.at(metres).position;
        aside.latDegrees += 0.0001;
        ASSERT_NEAR(progress.update(aside), metres, 150.0);
    }
    EXPECT_NEAR(progress.update({45.0, -30.9}), path.fixes()[2].distanceMetres + 8000.0, 2000.0) << "after a jump";
}
