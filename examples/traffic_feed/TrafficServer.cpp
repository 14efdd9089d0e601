#include <traffic_feed/TrafficServer.h>

#include <array>

namespace TrafficFeed {

namespace {

using Tavik::Network::MsgHeader;
using Tavik::Network::SocketTcp;

/// Whether a client is still there. What it sends is not asked for, and ends its connection when there is much of it.
bool isThere(SocketTcp& client)
{
    std::array<unsigned char, 64> ignored;
    MsgHeader header;
    return client.readPackage(ignored.data(), header, static_cast<unsigned int>(ignored.size())) >= -1;
}

} // namespace

TrafficServer::~TrafficServer()
{
    mServer.closeConnection();
    for (SocketTcp& client : mClients) {
        client.closeConnection();
    }
}

void TrafficServer::update()
{
    if (mClients.size() < MostClients) {
        mClients.emplace_back();
        if (!mServer.acceptConnectionNonBlock(mClients.back())) {
            mClients.pop_back();
        }
    }
    mClients.remove_if([](SocketTcp& client) {
        client.sendPendingMessages();
        if (isThere(client)) {
            return false;
        }
        client.closeConnection();
        return true;
    });
}

void TrafficServer::send(const Feeds::Traffic& traffic)
{
    const auto payload = Feeds::encode(traffic);
    MsgHeader header;
    header.msgType = Feeds::TrafficMessage;
    header.dataLength = static_cast<std::uint32_t>(payload.size());
    send(payload.data(), header);
}

void TrafficServer::sendHeartbeat()
{
    MsgHeader header;
    header.msgType = Feeds::HeartbeatMessage;
    send(nullptr, header);
}

void TrafficServer::send(const void* payload, const MsgHeader& header)
{
    for (SocketTcp& client : mClients) {
        client.writePackage(payload, header, 0);
    }
}

} // namespace TrafficFeed
