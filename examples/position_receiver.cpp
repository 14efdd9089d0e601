// Prints the positions that position_sender tells, over TCP or from datagrams, until the sender goes.

#include "PositionMessage.h"

#include <tavik/misc/CmdLine.h>
#include <tavik/misc/Sleep.h>
#include <tavik/network/Network.h>
#include <tavik/network/SocketTcp.h>
#include <tavik/network/SocketUdp.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

using namespace Tavik;

constexpr int SilenceMs = 2000; // without datagrams for so long, the sender has gone
constexpr unsigned int FrameMs = 16;

void print(const PositionMessage& message)
{
    std::printf("%4u  %.7f %.7f  %.2f m\n", message.number, message.latitude * 1e-7, message.longitude * 1e-7,
                message.centimetres * 1e-2);
}

bool receiveMessages(unsigned long address, int port)
{
    Network::SocketTcp socket;
    if (!socket.createTcpClientSocketNonBlock(address, port, 1000)) {
        return false;
    }
    // A display does the inner loop once in each frame: it takes what has arrived, and never waits.
    for (int type = 0; type != -2; Misc::sleepMs(FrameMs)) {
        unsigned char bytes[256];
        Network::MsgHeader header;
        while ((type = socket.readPackage(bytes, header, sizeof bytes)) >= 0) {
            PositionMessage message;
            if (type == static_cast<int>(PositionMessage::Type) && message.read(bytes, header.dataLength)) {
                print(message);
            }
        }
        if (type == -3) {
            break; // a message that is longer than any that is known here
        }
    }
    socket.closeConnection();
    return true;
}

bool receiveDatagrams(int port)
{
    Network::SocketUdp socket;
    if (!socket.openReceiveSocket(0, port, 0)) {
        return false;
    }
    for (unsigned int silence = 0; silence < SilenceMs; silence += FrameMs) {
        unsigned char bytes[256];
        for (int size; (size = socket.read(bytes, sizeof bytes)) >= 0; silence = 0) {
            PositionMessage message;
            if (message.read(bytes, static_cast<std::uint32_t>(size))) {
                print(message);
            }
        }
        Misc::sleepMs(FrameMs);
    }
    return true;
}

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN);

    Misc::CmdLine& options = Misc::CmdLine::instance();
    options.addSwitch("--udp", "receive datagrams instead of a TCP connection");
    options.addParameter("--from", "host of the sender, for TCP", "127.0.0.1");
    options.addParameter("--port", "the sender's port", "5000");
    if (!options.parse(argc, argv)) {
        options.printUsage();
        return EXIT_FAILURE;
    }
    std::string from, port;
    options.getParameter("--from", from);
    options.getParameter("--port", port);
    const int number = std::atoi(port.c_str());
    const bool received = options.getSwitch("--udp")
                              ? receiveDatagrams(number)
                              : receiveMessages(Network::Network().getAddressFromName(from), number);
    return received ? EXIT_SUCCESS : EXIT_FAILURE;
}
