#include <moving_map/FeedSources.h>

#include <moving_map/Numbers.h>
#include <tavik/network/Network.h>

namespace MovingMap {

namespace {

/// @param port  changed where the text has one
bool splitServer(const std::string& text, std::string& host, int& port)
{
    const std::size_t colon = text.find(':');
    host = text.substr(0, colon);
    return !host.empty() && (colon == std::string::npos || parseNumber(text.substr(colon + 1), 1, LargestPort, port));
}

bool parseEndpoint(const std::string& text, int usualPort, Endpoint& endpoint, std::string& error)
{
    std::string host;
    endpoint.port = usualPort;
    if (!splitServer(text, host, endpoint.port)) {
        error = "'" + text + "' is no host, or host:port";
        return false;
    }
    endpoint.address = Tavik::Network::Network().getAddressFromName(host);
    if (endpoint.address == 0) {
        error = "the host '" + host + "' is not known";
        return false;
    }
    return true;
}

} // namespace

bool isServer(const std::string& text)
{
    std::string host;
    int port = 0;
    return text.empty() || splitServer(text, host, port);
}

bool findFeeds(const FeedSources& sources, FeedSettings& settings, std::string& error)
{
    if (sources.ownShipPort > 0) {
        settings.ownShipPort = sources.ownShipPort;
    }
    if (sources.nmeaPort > 0) {
        settings.nmeaPort = sources.nmeaPort;
    }
    const auto find = [&error](const std::string& text, int usualPort, std::optional<Endpoint>& endpoint) {
        return text.empty() || parseEndpoint(text, usualPort, endpoint.emplace(), error);
    };
    return find(sources.traffic, Feeds::TrafficPort, settings.traffic) &&
           find(sources.sbs, Feeds::SbsPort, settings.sbs);
}

} // namespace MovingMap
