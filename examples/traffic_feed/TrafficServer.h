#pragma once

#include <feeds/Messages.h>
#include <tavik/network/SocketTcp.h>
#include <tavik/network/SocketTcpServer.h>

#include <cstddef>
#include <list>
#include <vector>

namespace TrafficFeed {

/// Tells every client that connects where aircraft are. A client that does not read loses the oldest messages; it holds
/// up neither the others nor the caller.
class TrafficServer
{
public:
    static constexpr std::size_t MostClients = 16;

    TrafficServer() = default;
    ~TrafficServer();

    TrafficServer(const TrafficServer&) = delete;
    TrafficServer& operator=(const TrafficServer&) = delete;

    /// @param port  0 for one that the system chooses
    /// @return false when the port is taken, for example
    bool open(int port) { return mServer.init(port); }
    int port() const { return mServer.port(); }

    /// Lets a client in, and forgets those that have gone. A few times a second.
    void update();

    void send(const Feeds::Traffic& traffic);
    void sendHeartbeat();

private:
    void send(const void* payload, const Tavik::Network::MsgHeader& header);

    Tavik::Network::SocketTcpServer mServer;
    std::list<Tavik::Network::SocketTcp> mClients;
};

} // namespace TrafficFeed
