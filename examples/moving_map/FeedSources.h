#pragma once

#include <moving_map/FeedData.h>

#include <optional>
#include <string>

namespace MovingMap {

constexpr int LargestPort = 65535;

/// Where the feeds come from, as the user writes it. Without any, the simulation flies.
struct FeedSources
{
    int ownShipPort = 0; ///< UDP port for traffic_feed's positions of the own ship, 0 for none
    int nmeaPort = 0;    ///< UDP port for NMEA 0183 sentences, 0 for none
    std::string traffic; ///< "HOST" or "HOST:PORT" of traffic_feed's server of other aircraft; empty for none
    std::string sbs;     ///< the same of a receiver for transponders
};

/// Where a server listens.
struct Endpoint
{
    unsigned long address = 0; ///< IPv4 in host byte order
    int port = 0;
};

/// Which feeds there are, and how they are read.
struct FeedSettings
{
    std::optional<int> ownShipPort;  ///< UDP; 0 for one that the system chooses
    std::optional<int> nmeaPort;     ///< UDP, likewise
    std::optional<Endpoint> traffic; ///< TCP
    std::optional<Endpoint> sbs;     ///< TCP
    double retrySeconds = 1.0;       ///< between two attempts to connect
    PerFeed<double> silenceSeconds = UsualSilenceSeconds;
};

/// Whether a text may be a server: "HOST", "HOST:PORT" with a port of 1 to 65535, or empty.
bool isServer(const std::string& text);

/// Finds the addresses of the servers, which may take seconds where a name has to be looked up.
/// @param error  receives one sentence when a server is not written as told or its host is not known
bool findFeeds(const FeedSources& sources, FeedSettings& settings, std::string& error);

} // namespace MovingMap
