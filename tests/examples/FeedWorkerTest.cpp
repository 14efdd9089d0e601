#include <moving_map/FeedWorker.h>
#include <tavik/network/SocketTcpServer.h>
#include <traffic_feed/Flights.h>
#include <traffic_feed/TrafficServer.h>

#include "../network/RawPeer.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <thread>

using namespace MovingMap;
using Tavik::Network::SocketTcp;
using Tavik::Network::SocketTcpServer;
using Tavik::Network::SocketUdp;

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto LongestWait = std::chrono::seconds(60);

const std::string Sentence = "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A\r\n";
const std::string Line = "MSG,3,1,1,4CA2D6,1,,,,,,37000,,,48.2,11.6,,,,,,0\r\n";

std::string framed(std::uint32_t type, const std::string& payload)
{
    return message(headerOf(type, payload.size()), payload);
}

std::string trafficMessage(std::uint32_t address)
{
    const auto bytes = Feeds::encode(Feeds::Traffic{address, "T", {48.0, 11.5, 0.0f, 0.0f, 0.0f, 0.0f}});
    return framed(Feeds::TrafficMessage, std::string(bytes.begin(), bytes.end()));
}

/// A server of bare sockets, of which the newest is connected to the map.
class RawServer
{
public:
    RawServer() { EXPECT_TRUE(mServer.init(0)); }
    ~RawServer() { mServer.closeConnection(); }

    Endpoint endpoint() const { return {Loopback, mServer.port()}; }

    /// Takes a new connection, if there is one; the old one is closed.
    void accept()
    {
        SocketTcp client;
        if (mServer.acceptConnectionNonBlock(client)) {
            mPeer = Descriptor(client.sd());
        }
    }
    void close() { mPeer.reset(); }

    /// Sends as much as the connection takes now.
    bool send(const std::string& bytes) const
    {
        return ::send(mPeer.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT) > 0;
    }

private:
    SocketTcpServer mServer;
    Descriptor mPeer;
};

/// The feeds of a map, and what is at their other ends.
class FeedWorkerTest : public testing::Test
{
protected:
    FeedWorkerTest() : feeds(settings())
    {
        EXPECT_EQ(feeds.error(), "");
        EXPECT_TRUE(ownShip.openSendSocket(Loopback, feeds.ownShipPort(), 1));
        EXPECT_TRUE(nmea.openSendSocket(Loopback, feeds.nmeaPort(), 1));
    }

    FeedSettings settings() const
    {
        FeedSettings result;
        result.ownShipPort = 0;
        result.nmeaPort = 0;
        result.traffic = traffic.endpoint();
        result.sbs = sbs.endpoint();
        result.retrySeconds = 0.02;
        result.silenceSeconds = {{{20.0, 0.3, 0.3, 0.3}}}; // the own ship must not be lost on a slow machine
        return result;
    }

    void sendOwnShip()
    {
        const auto bytes = Feeds::encode(Feeds::OwnShip{++sequence, {48.0, 11.5, 0.0f, 0.0f, 0.0f, 0.0f}});
        ownShip.write(bytes.data(), static_cast<unsigned int>(bytes.size()));
    }

    /// Does something again and again until the map shows what it should.
    bool await(const std::function<void()>& step, const std::function<bool()>& isReached)
    {
        const auto end = Clock::now() + LongestWait;
        while (Clock::now() < end) {
            step();
            sendOwnShip();
            feeds.show(picture);
            if (isReached()) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return false;
    }

    RawServer traffic;
    RawServer sbs;
    FeedWorker feeds;
    SocketUdp ownShip;
    SocketUdp nmea;
    std::uint32_t sequence = 0;
    FeedPicture picture;
};

} // namespace

TEST_F(FeedWorkerTest, SaysWhichFeedIsLostAndFindsItAgain)
{
    struct Fault
    {
        const char* name;
        std::function<void()> step;
    };
    const std::string garbage(5000, '#');
    const std::string half = trafficMessage(1).substr(0, 40);
    const Fault trafficFaults[] = {
        {"dies", [&] { traffic.close(); }},
        {"stalls", [&] { traffic.accept(); }},
        {"stalls in a message", [&] { traffic.accept(), traffic.send(half); }},
        {"sends garbage", [&] { traffic.accept(), traffic.send(garbage); }},
        {"sends messages of another kind", [&] { traffic.accept(), traffic.send(framed(77, "what?")); }},
        {"announces more than fits",
         [&] { traffic.accept(), traffic.send(message(headerOf(1, 0xFFFFFF00), garbage)); }},
    };
    for (const Fault& fault : trafficFaults) {
        const auto isAlive = [&] { return !picture.isLost[FeedKind::Traffic] && !picture.traffic.empty(); };
        EXPECT_TRUE(await([&] { traffic.accept(), traffic.send(trafficMessage(1)); }, isAlive)) << fault.name;
        EXPECT_TRUE(await(fault.step, [&] { return picture.isLost[FeedKind::Traffic]; })) << fault.name;
        EXPECT_FALSE(picture.isLost[FeedKind::OwnShip]) << fault.name << ": another feed suffers";
    }
    const Fault sbsFaults[] = {
        {"dies", [&] { sbs.close(); }},
        {"stalls", [&] { sbs.accept(); }},
        {"sends garbage", [&] { sbs.accept(), sbs.send(garbage + "\n"); }},
    };
    for (const Fault& fault : sbsFaults) {
        for (const std::string& life : {Line, std::string("\r\n")}) { // a heartbeat is a sign of life
            EXPECT_TRUE(await([&] { sbs.accept(), sbs.send(life); }, [&] { return !picture.isLost[FeedKind::Sbs]; }));
        }
        EXPECT_TRUE(await(fault.step, [&] { return picture.isLost[FeedKind::Sbs]; })) << fault.name;
    }
    const auto sendSentence = [&](const std::string& text) {
        nmea.write(text.data(), static_cast<unsigned int>(text.size()));
    };
    EXPECT_TRUE(await([&] { sendSentence(Sentence); }, [&] { return !picture.isLost[FeedKind::Nmea]; }));
    EXPECT_TRUE(await([&] { sendSentence(garbage); }, [&] { return picture.isLost[FeedKind::Nmea]; }));
    EXPECT_FALSE(picture.isOwnShipLost);
}

TEST_F(FeedWorkerTest, AFloodCostsABoundedShare)
{
    std::string messages;
    std::string lines;
    for (std::uint32_t i = 0; i < 4000; ++i) {
        messages += trafficMessage(i);
        char line[80];
        std::snprintf(line, sizeof(line), "MSG,3,1,1,%06X,1,,,,,,37000,,,48.2,11.6,,,,,,0\r\n", i);
        lines += line;
    }
    const auto begin = Clock::now();
    const auto flood = [&] {
        for (int i = 0; i < 300; ++i) {
            sendOwnShip();
            nmea.write(Sentence.data(), static_cast<unsigned int>(Sentence.size()));
        }
        // What breaks a message or a line in two is garbage as well.
        for (const auto& [server, bytes] : {std::pair(&traffic, &messages), std::pair(&sbs, &lines)}) {
            server->accept();
            server->send(*bytes);
        }
    };
    EXPECT_TRUE(await(flood, [&] { return feeds.reportCount() > 30000; }));
    const std::chrono::duration<double> seconds = Clock::now() - begin;
    // Each of the four links rests for 20 ms after each share.
    EXPECT_LT(static_cast<double>(feeds.reportCount()), 4.0 * FeedLink::MostReports * (seconds.count() / 0.02 + 2.0));
    EXPECT_LE(picture.traffic.size(), TrafficTable::MostTargets);
    EXPECT_FALSE(picture.isOwnShipLost);
}

TEST_F(FeedWorkerTest, ShowsWhatTrafficFeedFlies)
{
    Route route;
    route.start = {45.0, 11.0};
    route.legs.emplace_back();
    route.legs[0].from = route.start;
    route.legs[0].to = {46.0, 11.0};
    const RoutePath path(route);
    const TrafficFeed::Flights flights(path, 100.0, 5);
    TrafficFeed::TrafficServer server;
    ASSERT_TRUE(server.open(0));
    FeedSettings others;
    others.traffic = Endpoint{Loopback, server.port()};
    FeedWorker worker(others);
    FeedPicture shown;
    const auto step = [&] {
        server.update();
        server.sendHeartbeat();
        for (const Feeds::Traffic& aircraft : flights.traffic(300.0)) {
            server.send(aircraft);
        }
        worker.show(shown);
    };
    EXPECT_TRUE(await(step, [&] { return shown.traffic.size() == 5; }));
    const Feeds::Movement own = flights.ownShip(300.0);
    EXPECT_NEAR(own.latDegrees, 45.0 + 30000.0 / 111319.49, 1e-6);
    EXPECT_NEAR(own.speedMetresPerSecond, 100.0, 0.01);
    EXPECT_NEAR(own.trackDegrees, 0.0, 0.01);
    const Motion ahead = shown.traffic[0].motion;
    EXPECT_NEAR(ahead.altitudeMetres.value() - own.altitudeMetres, 304.8, 0.1) << "a thousand feet above";
    EXPECT_NEAR(planeDistance({own.latDegrees, own.lonDegrees}, ahead.position), 4.0 * 1852.0, 1600.0);
    EXPECT_NEAR(shown.traffic[1].motion.trackDegrees.value(), 180.0, 0.01) << "comes the other way";
}

TEST(FeedSourcesTest, TellHostAndPort)
{
    struct Case
    {
        const char* text;
        unsigned long address; // 0 for a complaint
        int port;
    };
    const Case cases[] = {
        {"127.0.0.1", Loopback, 30003},
        {"127.0.0.1:1", Loopback, 1},
        {"127.0.0.1:65535", Loopback, 65535},
        {"127.0.0.1:65536", 0, 0},
        {"127.0.0.1:0", 0, 0},
        {"127.0.0.1:", 0, 0},
        {":30003", 0, 0},
        {"127.0.0.1:x", 0, 0},
        {"127.0.0.1:1:2", 0, 0},
    };
    for (const Case& c : cases) {
        FeedSources sources;
        sources.sbs = c.text;
        FeedSettings settings;
        std::string error;
        EXPECT_EQ(findFeeds(sources, settings, error), c.address != 0) << c.text;
        EXPECT_EQ(error.empty(), c.address != 0) << c.text;
        if (c.address != 0) {
            EXPECT_EQ(settings.sbs->address, c.address) << c.text;
            EXPECT_EQ(settings.sbs->port, c.port) << c.text;
        }
    }
}
