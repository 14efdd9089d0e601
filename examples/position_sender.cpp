// Sends an aircraft's position ten times a second: to every display that has connected over TCP, and as datagrams.

#include "PositionMessage.h"

#include <tavik/geodetic/EarthModel.h>
#include <tavik/misc/CmdLine.h>
#include <tavik/misc/Sleep.h>
#include <tavik/network/SocketTcp.h>
#include <tavik/network/SocketTcpServer.h>
#include <tavik/network/SocketUdp.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

using namespace Tavik;

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN); // a display that goes away must not end this program

    Misc::CmdLine& options = Misc::CmdLine::instance();
    options.addParameter("--port", "TCP port to listen on, and UDP port to send to; 0 for any", "5000");
    options.addParameter("--to", "address that datagrams go to; a broadcast address reaches a whole network",
                         "127.0.0.1");
    options.addParameter("--count", "messages to send; 0 for no end", "0");
    if (!options.parse(argc, argv)) {
        options.printUsage();
        return EXIT_FAILURE;
    }
    std::string port, to, count;
    options.getParameter("--port", port);
    options.getParameter("--to", to);
    options.getParameter("--count", count);

    Network::SocketTcpServer server;
    Network::SocketUdp datagrams;
    if (!server.init(std::atoi(port.c_str())) ||
        !datagrams.openSendSocket(datagrams.getAddressFromName(to), server.port(), 1)) {
        return EXIT_FAILURE;
    }
    std::printf("port %d\n", server.port());
    std::fflush(stdout);

    std::vector<std::unique_ptr<Network::SocketTcp>> displays;
    PositionMessage message;
    double lat = 47.0, lon = 8.0;
    const std::uint32_t last = static_cast<std::uint32_t>(std::atoi(count.c_str()));
    while (last == 0 || message.number < last) {
        auto display = std::make_unique<Network::SocketTcp>();
        if (server.acceptConnectionNonBlock(*display)) {
            displays.push_back(std::move(display));
        }

        Geodetic::calcPointFromBrgDistance(lat, lon, 71.0, 13.0, lat, lon); // 130 m/s
        message.number += 1;
        message.latitude = static_cast<std::int32_t>(lat * 1e7);
        message.longitude = static_cast<std::int32_t>(lon * 1e7);
        message.centimetres = 259080; // 8500 ft
        unsigned char bytes[PositionMessage::Size];
        message.write(bytes);

        Network::MsgHeader header;
        header.msgType = PositionMessage::Type;
        header.dataLength = PositionMessage::Size;
        for (const auto& socket : displays) {
            socket->writePackage(bytes, header, 0); // what the socket does not take now waits in its queue
            socket->sendPendingMessages();
        }
        datagrams.write(bytes, sizeof bytes);
        Misc::sleepMs(100);
    }
    for (const auto& socket : displays) {
        socket->closeConnection(); // destructors do not
    }
    server.closeConnection();
    return EXIT_SUCCESS;
}
