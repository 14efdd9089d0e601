#include <feeds/Messages.h>
#include <moving_map/BuiltInPlan.h>
#include <moving_map/PlanReader.h>
#include <moving_map/Route.h>
#include <tavik/network/Network.h>
#include <tavik/network/SocketUdp.h>
#include <traffic_feed/Flights.h>
#include <traffic_feed/Options.h>
#include <traffic_feed/TrafficServer.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace TrafficFeed {

namespace {

constexpr int ExitUsage = 2;
constexpr double StepSeconds = 0.1; // between two positions of the own ship
constexpr int StepsPerTraffic = 5;
constexpr int StepsPerHeartbeat = 10;

volatile std::sig_atomic_t isInterrupted = 0;

int fail(const std::string& what)
{
    std::fprintf(stderr, "traffic_feed: %s\n", what.c_str());
    return EXIT_FAILURE;
}

bool findRoute(const Options& options, MovingMap::Route& route, std::string& error)
{
    MovingMap::FlightPlan plan;
    const bool isRead = options.plan.empty() ? MovingMap::readPlan(MovingMap::BuiltInPlan, "built-in plan", plan, error)
                                             : MovingMap::readPlanFile(options.plan, plan, error);
    return isRead && MovingMap::resolveRoute(plan, route, error);
}

/// Sends until the time is over or the user interrupts.
void serve(const Options& options, const Flights& flights, Tavik::Network::SocketUdp& ownShip, TrafficServer& server)
{
    const auto begin = std::chrono::steady_clock::now();
    for (unsigned int step = 0; isInterrupted == 0; ++step) {
        const double sinceBegin = step * StepSeconds;
        if (options.durationSeconds > 0.0 && sinceBegin >= options.durationSeconds) {
            return;
        }
        std::this_thread::sleep_until(begin + std::chrono::duration<double>(sinceBegin));
        const double seconds = options.startSeconds + sinceBegin;
        const auto position = Feeds::encode(Feeds::OwnShip{step, flights.ownShip(seconds)});
        ownShip.write(position.data(), static_cast<unsigned int>(position.size())); // fails while nobody listens
        server.update();
        if (step % StepsPerTraffic == 0) {
            for (const Feeds::Traffic& traffic : flights.traffic(seconds)) {
                server.send(traffic);
            }
        }
        if (step % StepsPerHeartbeat == 0) {
            server.sendHeartbeat();
        }
    }
}

int run(const Options& options)
{
    std::string error;
    MovingMap::Route route;
    if (!findRoute(options, route, error)) {
        return fail(error);
    }
    const unsigned long address = Tavik::Network::Network().getAddressFromName(options.host);
    Tavik::Network::SocketUdp ownShip;
    if (address == 0 || !ownShip.openSendSocket(address, options.ownShipPort, 1)) {
        return fail("cannot send to the host '" + options.host + "'");
    }
    TrafficServer server;
    if (!server.open(options.trafficPort)) {
        return fail("cannot listen on port " + std::to_string(options.trafficPort));
    }
    std::printf("own ship to %s:%d, other aircraft on port %d\n", options.host.c_str(), options.ownShipPort,
                server.port());
    std::fflush(stdout);
    const MovingMap::RoutePath path(route);
    serve(options, Flights(path, route.speedMetresPerSecond, options.aircraft), ownShip, server);
    return EXIT_SUCCESS;
}

} // namespace

} // namespace TrafficFeed

int main(int argc, char** argv)
{
    // A client that has gone must not end the program.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGINT, [](int) { TrafficFeed::isInterrupted = 1; });
    std::signal(SIGTERM, [](int) { TrafficFeed::isInterrupted = 1; });

    TrafficFeed::Options options;
    std::string error;
    if (!TrafficFeed::readOptions(argc, argv, options, error)) {
        std::fprintf(stderr, "traffic_feed: %s\n", error.c_str());
        return TrafficFeed::ExitUsage;
    }
    if (options.help) {
        TrafficFeed::printHelp();
        return EXIT_SUCCESS;
    }
    return TrafficFeed::run(options);
}
