// Messages over TCP: a stream of arbitrary bytes in arbitrary pieces, read in both ways beside a simple model.
//
// The input is a list of pieces, each a count of bytes and the bytes; the count 0 stands for a large piece of zeros.

#include <fuzz/Require.h>
#include <tavik/network/SocketTcp.h>

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

using Tavik::Fuzz::require;
using Tavik::Network::MsgHeader;
using Tavik::Network::SocketTcp;

namespace {

constexpr std::size_t ZerosBytes = 65'536;
constexpr int MostZeros = 24; // enough to fill the buffer of 1 MiB
constexpr unsigned int SmallCapacity = 16;
constexpr std::size_t MostReceivedBytes = 1'048'575;
constexpr std::uint16_t Reserved = 0x5555; // which reading leaves as it is
constexpr unsigned char Untouched = 0xAA;
constexpr int NoMessage = -1;
constexpr int ConnectionOver = -2;
constexpr int NoRoom = -3;

/// One stream, read by a SocketTcp.
class Stream
{
public:
    Stream()
    {
        int ends[2] = {-1, -1};
        require(socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0);
        socket.setDescriptor(ends[0]);
        mFar = ends[1];
    }
    ~Stream()
    {
        socket.closeConnection();
        close(mFar);
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    void send(const std::string& bytes) const
    {
        require(::send(mFar, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT) ==
                static_cast<ssize_t>(bytes.size()));
    }

    SocketTcp socket;

private:
    int mFar = -1;
};

/// What a reader should do with the bytes that have arrived.
class Model
{
public:
    enum class Answer
    {
        Message,
        NoMessage,
        Over
    };

    Answer read()
    {
        if (isWhole()) {
            return deliver();
        }
        if (arrived.empty()) {
            return Answer::NoMessage;
        }
        if (mBuffered.size() == MostReceivedBytes) {
            return Answer::Over;
        }
        const std::size_t count = std::min(arrived.size(), MostReceivedBytes - mBuffered.size());
        mBuffered.append(arrived, 0, count);
        arrived.erase(0, count);
        return isWhole() ? deliver() : Answer::NoMessage;
    }

    std::string arrived;
    MsgHeader header; // of the message delivered last
    std::string payload;

private:
    bool isWhole()
    {
        if (mBuffered.size() < sizeof header) {
            return false;
        }
        std::memcpy(&header, mBuffered.data(), sizeof header);
        if (header.version != MsgHeader::Version) {
            mBuffered.clear();
            return false;
        }
        return mBuffered.size() - sizeof header >= header.dataLength;
    }

    Answer deliver()
    {
        payload = mBuffered.substr(sizeof header, header.dataLength);
        mBuffered.erase(0, sizeof header + header.dataLength);
        return Answer::Message;
    }

    std::string mBuffered;
};

/// What a call has returned, and what it has written.
struct Result
{
    int code = 0;
    MsgHeader header;
    const unsigned char* payload = nullptr;
};

Result readTrusting(SocketTcp& socket)
{
    static std::vector<unsigned char> payload(SocketTcp::LargestPayloadBytes);
    Result result;
    result.header.reserved = Reserved;
    result.code = socket.readPackage(payload.data(), result.header);
    result.payload = payload.data();
    return result;
}

/// First with little room, where a message that does not fit has to wait.
Result readBounded(SocketTcp& socket, bool isLarge)
{
    static std::vector<unsigned char> payload(SocketTcp::LargestPayloadBytes);
    std::vector<unsigned char> little(SmallCapacity, Untouched); // for the address sanitizer
    Result result;
    result.header.reserved = Reserved;
    result.code = socket.readPackage(little.data(), result.header, SmallCapacity);
    if (isLarge) {
        require(result.code == NoRoom && little == std::vector<unsigned char>(SmallCapacity, Untouched));
        result.code = socket.readPackage(payload.data(), result.header, SocketTcp::LargestPayloadBytes);
    } else {
        std::copy(little.begin(), little.end(), payload.begin());
    }
    result.payload = payload.data();
    return result;
}

void check(const Result& result, const Model& model)
{
    MsgHeader expected = model.header;
    expected.reserved = Reserved;
    require(result.code == static_cast<int>(expected.msgType));
    require(std::memcmp(&result.header, &expected, sizeof expected) == 0);
    require(std::memcmp(result.payload, model.payload.data(), model.payload.size()) == 0);
}

/// Takes the next piece off the input.
std::string nextPiece(const std::uint8_t*& data, const std::uint8_t* end)
{
    const std::size_t count = *data++;
    if (count == 0) {
        return std::string(ZerosBytes, '\0');
    }
    const auto* const begin = reinterpret_cast<const char*>(data);
    data += std::min(count, static_cast<std::size_t>(end - data));
    return {begin, reinterpret_cast<const char*>(data)};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Stream trusting;
    Stream bounded;
    Model model;
    int zeros = 0;
    for (const std::uint8_t* const end = data + size; data < end && zeros <= MostZeros;) {
        const std::string piece = nextPiece(data, end);
        zeros += piece.size() == ZerosBytes ? 1 : 0;
        trusting.send(piece);
        bounded.send(piece);
        model.arrived += piece;
        Model::Answer answer = model.read();
        for (; answer == Model::Answer::Message; answer = model.read()) {
            check(readTrusting(trusting.socket), model);
            check(readBounded(bounded.socket, model.payload.size() > SmallCapacity), model);
        }
        const int code = answer == Model::Answer::Over ? ConnectionOver : NoMessage;
        require(readTrusting(trusting.socket).code == code);
        require(readBounded(bounded.socket, false).code == code);
        if (answer == Model::Answer::Over) {
            break;
        }
    }
    return 0;
}
