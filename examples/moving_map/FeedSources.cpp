#include <moving_map/FeedSources.h>

#include <moving_map/Numbers.h>
#include <tavik/network/Network.h>

namespace MovingMap {

namespace {

bool parseEndpoint(const std::string& text, int usualPort, Endpoint& endpoint, std::string& error)
{
    const std::size_t colon = text.find(':');
    const std::string host = text.substr(0, colon);
    endpoint.port = usualPort;
    if (host.empty() ||
        (colon != std::string::npos && !parseNumber(text.substr(colon + 1), 1, LargestPort, endpoint.port))) {
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
