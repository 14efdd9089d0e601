#include "RawPeer.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>
#include <vector>

using namespace Tavik::Network;

namespace {

constexpr int Capacity = 1'048'576;

/// Reads until something other than "nothing yet" comes back.
int readWaiting(SocketTcp& socket, std::string& payload, MsgHeader& header, unsigned int capacity = Capacity)
{
    payload.assign(Capacity, '\xAA');
    for (int i = 0; i < 2000; ++i) {
        const int result = socket.readPackage(payload.data(), header, capacity);
        if (result != -1) {
            payload.resize(header.dataLength <= Capacity ? header.dataLength : 0);
            return result;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return -1;
}

} // namespace

TEST(SocketTcpTest, deliversMessagesHoweverTheStreamIsCut)
{
    const std::string first = message(headerOf(7, 5), "hello");
    const std::string second = message(headerOf(8, 0), "");
    const std::string third = message(headerOf(9, 3000), std::string(3000, 'x'));
    const std::string all = first + second + third;
    for (const std::size_t piece : {std::size_t{1}, std::size_t{23}, std::size_t{29}, std::size_t{54}, all.size()}) {
        RawPeer peer;
        std::thread sender([&] {
            for (std::size_t i = 0; i < all.size(); i += piece) {
                peer.send(all.substr(i, piece));
                if (i < 100) {
                    std::this_thread::sleep_for(std::chrono::microseconds(200));
                }
            }
        });
        std::string payload;
        MsgHeader header;
        header.reserved = 0x5555;
        EXPECT_EQ(readWaiting(peer.socket, payload, header), 7) << piece;
        EXPECT_EQ(payload, "hello") << piece;
        EXPECT_EQ(header.channel, 0x01020304u);
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(header.userData), 8), "userdata");
        EXPECT_EQ(header.reserved, 0x5555) << "not the sender's";
        EXPECT_EQ(readWaiting(peer.socket, payload, header), 8) << piece;
        EXPECT_EQ(readWaiting(peer.socket, payload, header), 9) << piece;
        EXPECT_EQ(payload, std::string(3000, 'x')) << piece;
        sender.join();
        EXPECT_EQ(peer.socket.readPackage(payload.data(), header), -1);
        peer.raw.reset();
        testing::internal::CaptureStderr();
        EXPECT_EQ(readWaiting(peer.socket, payload, header), -2);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "read: " + std::string(std::strerror(ENOTCONN)) + "\n");
        EXPECT_EQ(peer.socket.sd(), -1);
        EXPECT_EQ(peer.socket.readPackage(payload.data(), header), -2);
    }
}

TEST(SocketTcpTest, dropsWhatHasAnotherVersionAndGoesOn)
{
    RawPeer peer;
    MsgHeader wrong = headerOf(1, 4);
    wrong.version = 0x9204;
    peer.send(message(wrong, "drop") + message(headerOf(2, 0), ""));
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    std::string payload(100, '\0');
    MsgHeader header;
    testing::internal::CaptureStdout();
    EXPECT_EQ(peer.socket.readPackage(payload.data(), header), -1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Wrong VOXA version data received --> 0xffff9204, should be 0x1203\n");
    peer.send(message(headerOf(3, 2), "ok"));
    EXPECT_EQ(readWaiting(peer.socket, payload, header), 3);
    EXPECT_EQ(payload, "ok");
}

TEST(SocketTcpTest, keepsAMessageThatDoesNotFit)
{
    RawPeer peer;
    peer.send(message(headerOf(5, 100), std::string(100, 'p')));
    std::string payload;
    MsgHeader header;
    EXPECT_EQ(readWaiting(peer.socket, payload, header, 99), -3);
    EXPECT_EQ(header.dataLength, 100u);
    EXPECT_EQ(payload, std::string(100, '\xAA')) << "nothing may be written";
    EXPECT_EQ(readWaiting(peer.socket, payload, header, 100), 5);
    EXPECT_EQ(payload, std::string(100, 'p'));
}

TEST(SocketTcpTest, endsAConnectionWhoseMessageCannotFit)
{
    for (const std::uint32_t length : {1'048'552u, 0xFFFFFFE8u, 0xFFFFFFFFu}) {
        RawPeer peer;
        std::thread sender([&] { // sends until nobody listens
            const std::string bytes = message(headerOf(1, 0), "");
            MsgHeader header = headerOf(1, 0);
            header.dataLength = length;
            ::send(peer.raw.get(), &header, sizeof header, MSG_NOSIGNAL);
            const std::string zeros(65536, '\0');
            while (::send(peer.raw.get(), zeros.data(), zeros.size(), MSG_NOSIGNAL) > 0) {
            }
        });
        std::string payload;
        MsgHeader header;
        testing::internal::CaptureStderr();
        EXPECT_EQ(readWaiting(peer.socket, payload, header), -2) << length;
        testing::internal::GetCapturedStderr();
        sender.join();
    }
    RawPeer peer; // the largest that fits
    std::thread sender([&] { peer.send(message(headerOf(4, 1'048'551), std::string(1'048'551, 'z'))); });
    std::string payload;
    MsgHeader header;
    EXPECT_EQ(readWaiting(peer.socket, payload, header), 4);
    EXPECT_EQ(payload, std::string(1'048'551, 'z'));
    sender.join();
}

TEST(SocketTcpTest, sendsHeadersAsTheyAreAndRefusesWhatDoesNotFit)
{
    RawPeer peer;
    MsgHeader header = headerOf(11, 3);
    header.version = 0x4711;
    header.reserved = 0x0815;
    EXPECT_EQ(peer.socket.writePackage("abc", header, 99), 0);
    const MsgHeader large = headerOf(12, 9000);
    EXPECT_EQ(peer.socket.writePackage(std::string(9000, 'l').data(), large, 0), 0);
    EXPECT_EQ(peer.receive(), message(header, "abc") + message(large, std::string(9000, 'l')));

    const std::string payload(1, 'x');
    for (const std::uint32_t length : {1'048'553u, 0xFFFFFFF0u}) {
        testing::internal::CaptureStdout();
        header.dataLength = length;
        EXPECT_EQ(peer.socket.writePackage(payload.data(), header, 0), 0);
        EXPECT_NE(testing::internal::GetCapturedStdout(), "") << length;
    }
    EXPECT_EQ(peer.receive(), "");
    EXPECT_EQ(peer.socket.bufferSize(), 0);
}

/// Small messages and large ones go different ways.
class FullSocketTest : public testing::TestWithParam<unsigned int>
{
};

INSTANTIATE_TEST_SUITE_P(Sizes, FullSocketTest, testing::Values(300u, 50'000u));

TEST_P(FullSocketTest, queuesWhatTheSocketDoesNotTakeAndKeepsTheStreamWhole)
{
    RawPeer peer;
    const std::size_t size = GetParam();
    unsigned int written = 0;
    while (peer.socket.queueOverflow() < 5 && written < 100'000) { // nobody reads
        const std::string payload(size, static_cast<char>('a' + written % 26));
        peer.socket.writePackage(payload.data(), headerOf(written, size), 0);
        ++written;
    }
    ASSERT_EQ(peer.socket.queueOverflow(), 5u);
    EXPECT_EQ(peer.socket.bufferSize(), 200);

    std::string received;
    for (int i = 0; i < 2000 && peer.socket.bufferSize() > 0; ++i) {
        received += peer.receive(1);
        peer.socket.sendPendingMessages();
    }
    received += peer.receive();
    ASSERT_EQ(received.size() % (size + 24), 0u) << "the begin of a message without its rest";
    const std::size_t count = received.size() / (size + 24);
    EXPECT_EQ(count, written - 5u);
    unsigned int lost = 0;
    for (std::size_t i = 0; i < count; ++i) {
        MsgHeader header;
        std::memcpy(&header, received.data() + i * (size + 24), sizeof header);
        ASSERT_EQ(header.version, MsgHeader::Version) << i;
        lost = header.msgType - static_cast<unsigned int>(i);
        ASSERT_TRUE(lost == 0 || lost == 5) << "the oldest five that were still whole, at message " << i;
        ASSERT_EQ(received[i * (size + 24) + 24 + size - 1], static_cast<char>('a' + header.msgType % 26));
    }
    EXPECT_EQ(lost, 5u);
}

/// The kernel has room left when it stops calling a socket writable.
TEST(SocketTcpTest, queuesAsSoonAsTheSocketIsNotWritable)
{
    RawPeer peer;
    const std::string bytes(65536, 'f');
    while (peer.socket.sendSocket(peer.socket.sd(), bytes.data(), bytes.size(), 0) > 0) {
    }
    EXPECT_EQ(peer.socket.writePackage("tiny", headerOf(1, 4), 0), 0);
    EXPECT_EQ(peer.socket.bufferSize(), 1);
}

TEST(SocketTcpTest, countsDropsOfTheQueue)
{
    RawPeer peer;
    SocketTcp& socket = peer.socket;
    for (int i = 0; i < 200; ++i) {
        const char entry = static_cast<char>(i);
        socket.putDataToQueue(&entry, 1);
    }
    EXPECT_EQ(socket.queueOverflow(), 0u);
    socket.putDataToQueue("\xC8", 1);
    socket.putDataToQueue("", 0); // has nothing to wait for, and must not be waited for
    EXPECT_EQ(socket.queueOverflow(), 2u);
    EXPECT_EQ(socket.bufferSize(), 200);
    socket.sendPendingMessages();
    EXPECT_EQ(socket.bufferSize(), 0);
    const std::string sent = peer.receive();
    ASSERT_EQ(sent.size(), 199u);
    EXPECT_EQ(sent.front(), 2);
    EXPECT_EQ(sent.back(), '\xC8');
    socket.putDataToQueue("a", 1);
    EXPECT_EQ(socket.queueOverflow(), 0u);
    socket.clearQueue();
    EXPECT_EQ(socket.bufferSize(), 0);
}

TEST(SocketTcpTest, failsToConnectAndStaysHarmless)
{
    SocketTcpServer server;
    ASSERT_TRUE(server.init(0));
    const int freePort = server.port();
    server.closeConnection();

    SocketTcp socket;
    EXPECT_FALSE(socket.createTcpClientSocket(0, freePort));
    EXPECT_EQ(socket.sd(), -1);
    EXPECT_FALSE(socket.createTcpClientSocket(Loopback, 65536 + 22));
    for (const bool bounded : {false, true}) {
        EXPECT_FALSE(bounded ? socket.createTcpClientSocketNonBlock(Loopback, freePort, 1000)
                             : socket.createTcpClientSocket(Loopback, freePort));
        // The number stays; whoever gets it next must not be touched.
        int pair[2] = {-1, -1};
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, pair), 0);
        const Descriptor one(pair[0]);
        const Descriptor two(pair[1]);
        EXPECT_EQ(socket.sd(), pair[0]);
        ASSERT_EQ(::send(two.get(), "x", 1, 0), 1);
        char byte = 0;
        MsgHeader header = headerOf(1, 0);
        EXPECT_EQ(socket.read(&byte, 1, 0), 0);
        EXPECT_EQ(socket.readPackage(&byte, header), -2);
        EXPECT_EQ(socket.writePackage(nullptr, header, 0), 0);
        socket.putDataToQueue("y", 1);
        socket.sendPendingMessages();
        EXPECT_EQ(recv(two.get(), &byte, 1, MSG_DONTWAIT), -1) << "something was sent";
        EXPECT_EQ(recv(one.get(), &byte, 1, MSG_DONTWAIT), 1) << "something was read";
    }
}

TEST(SocketTcpTest, copiesShareTheDescriptorAndNothingElse)
{
    RawPeer peer;
    peer.socket.setClientName("left");
    peer.socket.putDataToQueue("q", 1);
    const SocketTcp copy(peer.socket);
    SocketTcp assigned;
    assigned.putDataToQueue("r", 1);
    assigned = peer.socket;
    for (const SocketTcp* one : {&copy, static_cast<const SocketTcp*>(&assigned)}) {
        EXPECT_EQ(one->sd(), peer.socket.sd());
        EXPECT_TRUE(one->isConnected());
        EXPECT_EQ(one->name(), "127.0.0.1");
        EXPECT_EQ(one->clientName(), "");
        EXPECT_EQ(one->bufferSize(), 0);
    }
    peer.send(message(headerOf(6, 2), "ab"));
    std::string payload;
    MsgHeader header;
    EXPECT_EQ(readWaiting(assigned, payload, header), 6);
    EXPECT_EQ(payload, "ab");
}

TEST(SocketTcpTest, waitsOnThroughSignals)
{
    RawPeer peer;
    struct sigaction action = {};
    action.sa_handler = [](int) {};
    struct sigaction old = {};
    ASSERT_EQ(sigaction(SIGUSR1, &action, &old), 0);
    const pthread_t reader = pthread_self();
    std::thread sender([&] {
        for (int i = 0; i < 20; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            pthread_kill(reader, SIGUSR1);
        }
        peer.send("z");
    });
    char byte = 0;
    EXPECT_EQ(peer.socket.read(&byte, 1, 10'000), 1);
    sender.join();
    sigaction(SIGUSR1, &old, nullptr);
    EXPECT_EQ(peer.socket.selectWrite(-1, 10'000), -1);
    EXPECT_EQ(peer.socket.sendSocket(4000, "x", 1, 0), 0) << "a number that is not open";
}

TEST(SocketTcpServerTest, acceptsWhoConnects)
{
    SocketTcpServer server;
    SocketTcp client;
    EXPECT_FALSE(server.acceptConnectionNonBlock(client)) << "not listening yet";
    ASSERT_TRUE(server.init(0));
    EXPECT_FALSE(server.acceptConnectionNonBlock(client)) << "nobody there";
    SocketTcp near;
    ASSERT_TRUE(near.createTcpClientSocket(Loopback, server.port()));
    client.setAddress(42);
    ASSERT_TRUE(server.acceptConnectionNonBlock(client));
    EXPECT_EQ(client.address(), 42u);
    EXPECT_EQ(client.name(), "127.0.0.1");
    EXPECT_TRUE(client.isConnected());

    SocketTcp other;
    ASSERT_TRUE(other.createTcpClientSocketNonBlock(Loopback, server.port(), 1000));
    SocketTcp second;
    ASSERT_TRUE(server.acceptConnection(second));
    EXPECT_EQ(second.address(), 0x0100007Fu) << "network byte order";

    SocketTcpServer late;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(late.init(server.port()));
    EXPECT_EQ(testing::internal::GetCapturedStderr().rfind("bind: ", 0), 0u);
    EXPECT_FALSE(late.init(-1));
    for (SocketTcp* socket : {&near, &client, &other, &second}) {
        EXPECT_EQ(socket->closeConnection(), 0);
    }
    EXPECT_TRUE(server.closeConnection());
    EXPECT_EQ(server.port(), -1);
}
