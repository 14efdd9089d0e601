#include <moving_map/FeedLinks.h>

#include <array>
#include <utility>

namespace MovingMap {

namespace {

using Tavik::Network::MsgHeader;
using Tavik::Network::SocketTcp;

constexpr unsigned int ConnectMs = 500;

// One call's share. At 50 calls a second these are 3200 datagrams, 51200 messages and 1.6 MB of lines: far more than
// honest feeds send, and a few percent of a processor core.
constexpr int MostDatagrams = 64;
constexpr unsigned int MostLineBytes = 32 * 1024;

constexpr std::size_t LargestDatagram = 2048;

} // namespace

bool UdpLink::poll(double /*now*/, std::vector<FeedReport>& reports)
{
    std::array<char, LargestDatagram> datagram;
    for (int i = 0; i < MostDatagrams; ++i) {
        const int length = mSocket.read(datagram.data(), static_cast<unsigned int>(datagram.size()));
        if (length < 0) {
            break;
        }
        decode({datagram.data(), static_cast<std::size_t>(length)}, reports);
    }
    return true;
}

void OwnShipLink::decode(std::string_view datagram, std::vector<FeedReport>& reports)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(datagram.data());
    if (const auto ownShip = Feeds::decodeOwnShip(bytes, datagram.size())) {
        reports.emplace_back(*ownShip);
    }
}

void NmeaLink::decode(std::string_view datagram, std::vector<FeedReport>& reports)
{
    mStream.add(datagram, [&reports](const Feeds::NmeaSentence& sentence) {
        if (reports.size() < MostReports) {
            std::visit([&reports](const auto& told) { reports.emplace_back(told); }, sentence);
        }
    });
}

TcpLink::~TcpLink()
{
    disconnect(0.0);
}

bool TcpLink::poll(double now, std::vector<FeedReport>& reports)
{
    if (mSocket == nullptr && !connect(now)) {
        return false;
    }
    const std::size_t before = reports.size();
    const bool stands = receive(*mSocket, reports);
    if (reports.size() > before) {
        mLastSeconds = now;
    }
    if (!stands || now - mLastSeconds > mSilenceSeconds) {
        disconnect(now);
        return false;
    }
    return true;
}

bool TcpLink::connect(double now)
{
    if (now < mNextAttempt) {
        return false;
    }
    mNextAttempt = now + mRetrySeconds;
    // A new one each time: a socket keeps bytes that had come from an earlier peer.
    auto socket = std::make_unique<SocketTcp>();
    if (!socket->createTcpClientSocketNonBlock(mServer.address, mServer.port, ConnectMs)) {
        return false;
    }
    mSocket = std::move(socket);
    mLastSeconds = now;
    begin();
    return true;
}

void TcpLink::disconnect(double now)
{
    if (mSocket != nullptr) {
        mSocket->closeConnection();
        mSocket.reset();
        mNextAttempt = now + mRetrySeconds;
    }
}

bool TrafficLink::receive(SocketTcp& socket, std::vector<FeedReport>& reports)
{
    std::array<unsigned char, 1024> payload;
    MsgHeader header;
    for (std::size_t i = 0; i < MostReports; ++i) {
        const int type = socket.readPackage(payload.data(), header, static_cast<unsigned int>(payload.size()));
        if (type < 0) {
            // Nothing now; or the connection is over, or the message is none of ours and no other one will pass it.
            return type == -1;
        }
        if (header.msgType == Feeds::HeartbeatMessage) {
            reports.emplace_back();
        } else if (header.msgType == Feeds::TrafficMessage) {
            if (const auto traffic = Feeds::decodeTraffic(payload.data(), header.dataLength)) {
                reports.emplace_back(*traffic);
            }
        }
    }
    return true;
}

bool SbsLink::receive(SocketTcp& socket, std::vector<FeedReport>& reports)
{
    std::array<char, 4096> piece;
    for (std::size_t total = 0; total + piece.size() <= MostLineBytes; total += piece.size()) {
        const int count = socket.read(piece.data(), static_cast<unsigned int>(piece.size()), 0);
        if (count <= 0) {
            return count == 0;
        }
        const std::string_view bytes(piece.data(), static_cast<std::size_t>(count));
        if (mLines.begun().empty() && bytes.find_first_not_of("\r\n") == std::string_view::npos) {
            reports.emplace_back(); // a heartbeat; eight of them at most come on top
        }
        mLines.add(bytes, [&reports](std::string_view line) {
            const auto message = Feeds::decodeSbs(line);
            if (message && reports.size() < MostReports) {
                reports.emplace_back(*message);
            }
        });
    }
    return true;
}

} // namespace MovingMap
