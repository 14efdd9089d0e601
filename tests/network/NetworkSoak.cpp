// Messages and datagrams over loopback in great numbers: network_soak [messages [largest growth in KiB]]
//
// Sends messages of mixed sizes from one thread to another, and then a tenth as many datagrams. Fails where one is
// lost, altered or out of order, and where the process has grown since the first hundredth.

#include <tavik/network/SocketTcp.h>
#include <tavik/network/SocketTcpServer.h>
#include <tavik/network/SocketUdp.h>

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <thread>
#include <vector>

using namespace Tavik::Network;

namespace {

constexpr unsigned long Loopback = 0x7F000001;
constexpr int SilenceMs = 30'000; // after which something is taken for lost
constexpr int MostQueued = 100;   // half of what the queue takes
constexpr std::uint32_t LargestDatagramBytes = 65'507;
constexpr std::uint32_t WindowBytes = 65'536;    // of datagrams that wait to be read
constexpr std::uint32_t KernelShareBytes = 4096; // of its memory for each of them, at most

void require(bool holds, const char* what, std::uint64_t number)
{
    if (!holds) {
        std::printf("Number %llu: %s\n", static_cast<unsigned long long>(number), what);
        std::fflush(stdout);
        std::_Exit(EXIT_FAILURE); // whatever the other thread does
    }
}

/// What each number carries: a piece of random bytes, different from its neighbours'.
class Contents
{
public:
    Contents() : mBytes(std::size_t{2} * SocketTcp::LargestPayloadBytes)
    {
        std::mt19937 random(1);
        std::generate(mBytes.begin(), mBytes.end(), [&] { return static_cast<unsigned char>(random()); });
    }

    /// Mostly small, and one in a thousand as large as they come.
    static std::uint32_t length(std::uint64_t number, std::uint32_t largest)
    {
        const std::uint64_t random = scatter(number);
        const std::uint64_t kind = random % 1000;
        const std::uint32_t most = kind < 700 ? 256 : kind < 950 ? 4096 : kind < 999 ? 65'536 : largest;
        return static_cast<std::uint32_t>(random / 1000 % (std::min(most, largest) + 1));
    }

    const unsigned char* bytes(std::uint64_t number) const
    {
        return mBytes.data() + scatter(~number) % SocketTcp::LargestPayloadBytes;
    }

private:
    static std::uint64_t scatter(std::uint64_t number)
    {
        number = (number + 1) * 0x9E3779B97F4A7C15;
        number = (number ^ number >> 32) * 0x9E3779B97F4A7C15;
        return number ^ number >> 29;
    }

    std::vector<unsigned char> mBytes;
};

MsgHeader headerOf(std::uint64_t number)
{
    MsgHeader header;
    header.channel = static_cast<std::uint32_t>(~number);
    header.msgType = static_cast<std::uint32_t>(number % 0x7FFFFFFF);
    header.dataLength = Contents::length(number, SocketTcp::LargestPayloadBytes);
    std::memcpy(header.userData, &number, sizeof header.userData);
    return header;
}

void sendMessages(SocketTcp& socket, const Contents& contents, std::uint64_t count)
{
    const auto drain = [&](int most, std::uint64_t number) {
        for (socket.sendPendingMessages(); socket.bufferSize() > most; socket.sendPendingMessages()) {
            require(socket.selectWrite(socket.sd(), SilenceMs) == 1, "nobody reads", number);
        }
    };
    for (std::uint64_t number = 0; number < count; ++number) {
        drain(MostQueued, number);
        socket.writePackage(contents.bytes(number), headerOf(number), 0);
        require(socket.isConnected() && socket.queueOverflow() == 0, "not sent", number);
    }
    drain(0, count);
}

/// Waits for something to read.
void await(int fd, std::uint64_t number)
{
    pollfd entry{fd, POLLIN, 0};
    require(poll(&entry, 1, SilenceMs) == 1, "lost", number);
}

class Receiver
{
public:
    Receiver(SocketTcp& socket, const Contents& contents) : mSocket(socket), mContents(contents) {}

    void receive(std::uint64_t number)
    {
        MsgHeader header;
        int result = 0;
        while ((result = mSocket.readPackage(mPayload.data(), header, SocketTcp::LargestPayloadBytes)) == -1) {
            await(mSocket.sd(), number);
        }
        const MsgHeader expected = headerOf(number);
        require(result == static_cast<int>(expected.msgType), "out of order", number);
        require(std::memcmp(&header, &expected, sizeof header) == 0, "another header", number);
        require(std::memcmp(mPayload.data(), mContents.bytes(number), header.dataLength) == 0, "altered", number);
    }

private:
    SocketTcp& mSocket;
    const Contents& mContents;
    std::vector<unsigned char> mPayload = std::vector<unsigned char>(SocketTcp::LargestPayloadBytes);
};

/// As many at a time as the kernel surely holds, since it drops what it has no room for.
void exchangeDatagrams(SocketUdp& sender, SocketUdp& receiver, int receivingFd, const Contents& contents,
                       std::uint64_t count)
{
    std::vector<unsigned char> received(LargestDatagramBytes + 1);
    for (std::uint64_t first = 0; first < count;) {
        std::uint64_t end = first;
        std::uint32_t window = 0;
        std::uint32_t length = Contents::length(end, LargestDatagramBytes);
        do {
            require(sender.write(contents.bytes(end), length) == static_cast<int>(length), "not sent", end);
            window += length + KernelShareBytes;
            length = Contents::length(++end, LargestDatagramBytes);
        } while (end < count && window + length <= WindowBytes);
        for (; first < end; ++first) {
            await(receivingFd, first);
            length = Contents::length(first, LargestDatagramBytes);
            const int result = receiver.read(received.data(), LargestDatagramBytes + 1);
            require(result == static_cast<int>(length), "out of order", first);
            require(std::memcmp(received.data(), contents.bytes(first), length) == 0, "altered", first);
        }
    }
}

std::uint64_t residentKiB()
{
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)) / 1024;
}

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main(int argc, char** argv)
{
    const std::uint64_t messages = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 10'000'000;
    const std::uint64_t datagrams = messages / 10;
    const std::uint64_t largestGrowthKiB = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 4096;
    const Contents contents;
    const auto start = std::chrono::steady_clock::now();

    SocketTcpServer server;
    SocketTcp near;
    SocketTcp far;
    require(server.init(0) && near.createTcpClientSocketNonBlock(Loopback, server.port(), SilenceMs) &&
                server.acceptConnection(far),
            "no connection", 0);
    std::thread sender([&] { sendMessages(near, contents, messages); });
    Receiver receiver(far, contents);
    std::uint64_t startKiB = 0;
    for (std::uint64_t number = 0; number < messages; ++number) {
        receiver.receive(number);
        startKiB = number == messages / 100 ? residentKiB() : startKiB;
    }
    sender.join();
    near.closeConnection();
    far.closeConnection();
    server.closeConnection();
    std::printf("%llu messages in %.1f s\n", static_cast<unsigned long long>(messages), secondsSince(start));

    const auto datagramStart = std::chrono::steady_clock::now();
    const int receivingFd = dup(STDIN_FILENO); // the next free number is the receiver's
    close(receivingFd);
    SocketUdp in;
    SocketUdp out;
    require(in.openReceiveSocket(Loopback, 0, 0) && out.openSendSocket(Loopback, in.localPort(), 1), "no sockets", 0);
    exchangeDatagrams(out, in, receivingFd, contents, datagrams);
    std::printf("%llu datagrams in %.1f s\n", static_cast<unsigned long long>(datagrams), secondsSince(datagramStart));

    const std::uint64_t endKiB = residentKiB();
    std::printf("Resident: %llu KiB after the first hundredth, %llu KiB at the end\n",
                static_cast<unsigned long long>(startKiB), static_cast<unsigned long long>(endKiB));
    return endKiB <= startKiB + largestGrowthKiB ? EXIT_SUCCESS : EXIT_FAILURE;
}
