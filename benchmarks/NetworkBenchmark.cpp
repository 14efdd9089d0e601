#include <tavik/network/MsgHeader.h>
#include <tavik/network/SocketTcp.h>
#include <tavik/network/SocketTcpServer.h>
#include <tavik/network/SocketUdp.h>

#include <benchmark/benchmark.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#ifdef TAVIK_PEER_ASIO
#include <asio.hpp>
#endif

// Bursts of messages and of datagrams over loopback: all out, then all in, on one thread. A ping-pong of two threads
// would measure the scheduler.

namespace {

using Tavik::Network::MsgHeader;
using Tavik::Network::SocketTcp;
using Tavik::Network::SocketTcpServer;
using Tavik::Network::SocketUdp;

constexpr unsigned long Loopback = 0x7F000001;
constexpr unsigned int ConnectMs = 5000;
constexpr std::size_t BurstBytes = 262'144; // what the kernel takes without a reader, with its default limits
constexpr std::size_t MostMessages = 256;
constexpr int MostTries = 1'000'000; // to receive a message
constexpr std::size_t BufferBytes = 1'048'576;
constexpr std::size_t SmallBytes = 4096; // up to which a message is copied together rather than sent in two pieces

/// Both ends of a connection, set up as the library does it.
class Connection
{
public:
    Connection()
    {
        SocketTcpServer server;
        isGood = server.init(0) && sender.createTcpClientSocketNonBlock(Loopback, server.port(), ConnectMs) &&
                 server.acceptConnection(receiver);
        server.closeConnection();
    }
    ~Connection()
    {
        sender.closeConnection();
        receiver.closeConnection();
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    SocketTcp sender;
    SocketTcp receiver;
    bool isGood = false;
};

/// The messages of a stream that comes in pieces, for those that have only bytes.
class Inbox
{
public:
    unsigned char* room() { return mBytes.get() + mEnd; }
    std::size_t roomBytes() const { return BufferBytes - mEnd; }
    void add(std::size_t bytes) { mEnd += bytes; }

    bool take(unsigned char* payload, MsgHeader& header)
    {
        if (mEnd - mBegin < sizeof header) {
            return false;
        }
        std::memcpy(&header, mBytes.get() + mBegin, sizeof header);
        if (header.version != MsgHeader::Version || mEnd - mBegin < sizeof header + header.dataLength) {
            return false;
        }
        std::memcpy(payload, mBytes.get() + mBegin + sizeof header, header.dataLength);
        mBegin += sizeof header + header.dataLength;
        return true;
    }

    /// Moves what is left to the front, before more is received.
    void pack()
    {
        std::memmove(mBytes.get(), mBytes.get() + mBegin, mEnd - mBegin);
        mEnd -= mBegin;
        mBegin = 0;
    }

private:
    std::unique_ptr<unsigned char[]> mBytes{new unsigned char[BufferBytes]()};
    std::size_t mBegin = 0;
    std::size_t mEnd = 0;
};

struct Ours
{
    explicit Ours(Connection& connection) : sockets(connection) {}

    bool write(const unsigned char* payload, const MsgHeader& header)
    {
        return sockets.sender.writePackage(payload, header, 0) == 0 && sockets.sender.bufferSize() == 0;
    }

    bool read(unsigned char* payload, MsgHeader& header)
    {
        return sockets.receiver.readPackage(payload, header, BufferBytes) >= 0;
    }

    Connection& sockets;
};

bool isWritable(int fd)
{
    pollfd entry{fd, POLLOUT, 0};
    return poll(&entry, 1, 0) == 1;
}

/// Copies a message together, where it is small.
std::size_t assemble(unsigned char* buffer, const unsigned char* payload, const MsgHeader& header)
{
    std::memcpy(buffer, &header, sizeof header);
    std::memcpy(buffer + sizeof header, payload, header.dataLength);
    return sizeof header + header.dataLength;
}

/// The system's own calls: a look whether the socket takes a message, one call to send it, and receiving as much as is
/// there without a wait. Without the look, as a program can do it that has nowhere to put what a full socket refuses.
template <bool LooksBeforeSending>
struct BareCalls
{
    explicit BareCalls(Connection& connection) : out(connection.sender.sd()), in(connection.receiver.sd()) {}

    bool write(const unsigned char* payload, const MsgHeader& header)
    {
        if (LooksBeforeSending && !isWritable(out)) {
            return false;
        }
        const std::size_t total = sizeof header + header.dataLength;
        if (total <= SmallBytes) {
            return send(out, small.data(), assemble(small.data(), payload, header), Flags) == static_cast<long>(total);
        }
        std::array<iovec, 2> pieces = {{{const_cast<MsgHeader*>(&header), sizeof header},
                                        {const_cast<unsigned char*>(payload), header.dataLength}}};
        msghdr message{};
        message.msg_iov = pieces.data();
        message.msg_iovlen = pieces.size();
        return sendmsg(out, &message, Flags) == static_cast<long>(total);
    }

    bool read(unsigned char* payload, MsgHeader& header)
    {
        if (inbox.take(payload, header)) {
            return true;
        }
        inbox.pack();
        const long count = recv(in, inbox.room(), inbox.roomBytes(), MSG_DONTWAIT);
        inbox.add(static_cast<std::size_t>(std::max(count, 0L)));
        return inbox.take(payload, header);
    }

    static constexpr int Flags = LooksBeforeSending ? 0 : MSG_DONTWAIT;
    int out;
    int in;
    std::array<unsigned char, SmallBytes> small{};
    Inbox inbox;
};

#ifdef TAVIK_PEER_ASIO
/// Synchronous and non-blocking.
struct Asio
{
    explicit Asio(Connection& connection)
        : out(context, asio::ip::tcp::v4(), dup(connection.sender.sd())),
          in(context, asio::ip::tcp::v4(), dup(connection.receiver.sd()))
    {
        out.non_blocking(true);
        in.non_blocking(true);
    }

    bool write(const unsigned char* payload, const MsgHeader& header)
    {
        asio::error_code error;
        const std::size_t total = sizeof header + header.dataLength;
        if (total <= SmallBytes) {
            return asio::write(out, asio::buffer(small.data(), assemble(small.data(), payload, header)), error) ==
                   total;
        }
        const std::array<asio::const_buffer, 2> pieces = {asio::buffer(&header, sizeof header),
                                                          asio::buffer(payload, header.dataLength)};
        return asio::write(out, pieces, error) == total;
    }

    bool read(unsigned char* payload, MsgHeader& header)
    {
        if (inbox.take(payload, header)) {
            return true;
        }
        inbox.pack();
        asio::error_code error;
        inbox.add(in.read_some(asio::buffer(inbox.room(), inbox.roomBytes()), error));
        return inbox.take(payload, header);
    }

    asio::io_context context;
    asio::ip::tcp::socket out;
    asio::ip::tcp::socket in;
    std::array<unsigned char, SmallBytes> small{};
    Inbox inbox;
};
#endif

/// @tparam Link  has write() and read(), which tell whether the message went or was there
template <typename Link>
void messages(benchmark::State& state)
{
    const auto length = static_cast<std::uint32_t>(state.range(0));
    const std::size_t count = std::min(BurstBytes / length, MostMessages);
    std::vector<unsigned char> sent(length, 0x5A);
    std::vector<unsigned char> received(BufferBytes);
    Connection connection;
    Link link(connection);
    MsgHeader header;
    header.dataLength = length;
    bool good = connection.isGood;
    for (auto _ : state) {
        for (std::size_t i = 0; i < count && good; ++i) {
            header.msgType = static_cast<std::uint32_t>(i);
            sent.back() = static_cast<unsigned char>(i);
            good = link.write(sent.data(), header);
        }
        MsgHeader next;
        for (std::size_t i = 0; i < count && good; ++i) {
            int tries = 1; // on loopback it has arrived already, nearly always
            while (!link.read(received.data(), next) && tries < MostTries) {
                ++tries;
            }
            good = next.msgType == i && received[length - 1] == static_cast<unsigned char>(i);
            benchmark::DoNotOptimize(received.data());
        }
        if (!good) {
            state.SkipWithError("a message was lost");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(count * length));
}

constexpr int Datagrams = 32;

template <typename Write, typename Read>
void datagrams(benchmark::State& state, Write write, Read read)
{
    const int length = static_cast<int>(state.range(0));
    const std::vector<char> sent(static_cast<std::size_t>(length), 0x5A);
    std::vector<char> received(2048);
    for (auto _ : state) {
        bool good = true;
        for (int i = 0; i < Datagrams; ++i) {
            good = write(sent.data(), sent.size()) == length && good;
        }
        for (int i = 0; i < Datagrams; ++i) {
            good = read(received.data(), received.size()) == length && good;
            benchmark::DoNotOptimize(received.data());
        }
        if (!good) {
            state.SkipWithError("a datagram was lost");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * Datagrams);
}

void datagramsOurs(benchmark::State& state)
{
    SocketUdp receiver;
    SocketUdp sender;
    if (!receiver.openReceiveSocket(Loopback, 0, 0) || !sender.openSendSocket(Loopback, receiver.localPort(), 1)) {
        state.SkipWithError("no sockets");
        return;
    }
    datagrams(
        state, [&](const char* data, std::size_t length) { return sender.write(data, static_cast<unsigned>(length)); },
        [&](char* data, std::size_t length) { return receiver.read(data, static_cast<unsigned>(length)); });
}

/// On descriptors that the library has opened, so that the kernel has the same to do.
void datagramsLimit(benchmark::State& state)
{
    const int in = dup(0); // the next free numbers are those of the sockets
    const int out = dup(0);
    close(in);
    close(out);
    SocketUdp receiver;
    SocketUdp sender;
    if (!receiver.openReceiveSocket(Loopback, 0, 0) || !sender.openSendSocket(Loopback, receiver.localPort(), 1)) {
        state.SkipWithError("no sockets");
        return;
    }
    datagrams(
        state, [&](const char* data, std::size_t length) { return send(out, data, length, MSG_DONTWAIT); },
        [&](char* data, std::size_t length) { return recv(in, data, length, 0); });
}

constexpr std::int64_t Small = 64;
constexpr std::int64_t Medium = 1024;
constexpr std::int64_t Large = 65536;

BENCHMARK_TEMPLATE(messages, Ours)->Name("messages/ours")->Arg(Small)->Arg(Medium)->Arg(Large);
BENCHMARK_TEMPLATE(messages, BareCalls<true>)->Name("messages/limit")->Arg(Small)->Arg(Medium)->Arg(Large);
BENCHMARK_TEMPLATE(messages, BareCalls<false>)->Name("messages/limit_blind")->Arg(Small)->Arg(Medium)->Arg(Large);
#ifdef TAVIK_PEER_ASIO
BENCHMARK_TEMPLATE(messages, Asio)->Name("messages/peer_asio")->Arg(Small)->Arg(Medium)->Arg(Large);
#endif
BENCHMARK(datagramsOurs)->Name("datagrams/ours")->Arg(Small)->Arg(Medium);
BENCHMARK(datagramsLimit)->Name("datagrams/limit")->Arg(Small)->Arg(Medium);

} // namespace
