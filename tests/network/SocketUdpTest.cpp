#include "RawPeer.h"

#include <tavik/network/SocketUdp.h>

#include <netinet/in.h>

#include <array>

using namespace Tavik::Network;

namespace {

/// Time to live of what a socket sends.
int timeToLive(const SocketUdp& receiver, int ttl)
{
    const int before = dup(0); // the next free number is the sender's
    close(before);
    SocketUdp sender;
    EXPECT_TRUE(sender.openSendSocket(Loopback, receiver.localPort(), ttl));
    int value = 0;
    socklen_t length = sizeof value;
    EXPECT_EQ(getsockopt(before, IPPROTO_IP, IP_TTL, &value, &length), 0);
    return value;
}

} // namespace

TEST(SocketUdpTest, carriesDatagrams)
{
    SocketUdp receiver;
    ASSERT_TRUE(receiver.openReceiveSocket(0, 0, 0));
    EXPECT_FALSE(receiver.openReceiveSocket(0, 0, 0)) << "open already";
    SocketUdp sender;
    ASSERT_TRUE(sender.openSendSocket(Loopback, receiver.localPort(), 1));
    std::array<char, 16> buffer{};
    EXPECT_EQ(receiver.read(buffer.data(), 16), -1) << "nothing there, and no waiting";
    EXPECT_EQ(sender.write("one", 3), 3);
    EXPECT_EQ(sender.write(77, "four", 4), 4);
    EXPECT_EQ(receiver.read(buffer.data(), 16), 3);
    EXPECT_EQ(receiver.read(buffer.data(), 2), 2);
    EXPECT_EQ(std::string(buffer.data(), 3), "foe");

    EXPECT_EQ(timeToLive(receiver, 0), 1);
    EXPECT_EQ(timeToLive(receiver, 17), 17);
    EXPECT_EQ(timeToLive(receiver, 300), 255);
}

TEST(SocketUdpTest, isHarmlessWhenClosed)
{
    SocketUdp socket;
    char byte = 0;
    EXPECT_EQ(socket.read(&byte, 1), -1);
    EXPECT_EQ(socket.write(&byte, 1), -1);
    EXPECT_FALSE(socket.openReceiveSocket(0, 70'000, 0));
    EXPECT_EQ(socket.closeConnection(), -1);
    EXPECT_EQ(socket.closeConnection(), 0);
    ASSERT_TRUE(socket.openReceiveSocket(Loopback, 0, 1));
    EXPECT_EQ(socket.closeConnection(), 0);
    EXPECT_EQ(socket.closeConnection(), 0);
    EXPECT_GE(dup(0), 0) << "standard input was closed";
    ASSERT_TRUE(socket.openSendSocket(Loopback, 9, 1)) << "opens again";
    testing::internal::CaptureStderr();
    SocketUdp taken;
    EXPECT_FALSE(taken.openReceiveSocket(0x01020304, 0, 0)) << "not an address of this host";
    EXPECT_EQ(testing::internal::GetCapturedStderr().rfind("bind recv socket: ", 0), 0u);
}

TEST(SocketUdpTest, findsAddresses)
{
    SocketUdp socket;
    EXPECT_EQ(socket.getAddressFromName("127.0.0.1"), Loopback);
    EXPECT_EQ(socket.getAddressFromName("localhost"), Loopback);
    EXPECT_EQ(socket.getAddressFromName("no such name"), 0u);
}
