#pragma once

#include <feeds/LineSplitter.h>
#include <moving_map/FeedData.h>
#include <moving_map/FeedSources.h>
#include <tavik/network/SocketTcp.h>
#include <tavik/network/SocketUdp.h>

#include <memory>
#include <vector>

namespace MovingMap {

/// The socket of one feed, and its decoder.
class FeedLink
{
public:
    virtual ~FeedLink() = default;

    /// Reads what has come, connecting first where that is needed, and decodes it. The work is bounded: what is more
    /// than a link's share waits for the next call, or is lost where the system can't hold it.
    ///
    /// May wait for half a second for a connection, and for nothing else.
    /// @param now  seconds of a steady clock
    /// @param reports  what has been told is appended
    /// @return whether the connection stands; without one, always
    virtual bool poll(double now, std::vector<FeedReport>& reports) = 0;

    /// No more reports than this come from one call.
    static constexpr std::size_t MostReports = 1024;
};

/// Receives datagrams.
class UdpLink : public FeedLink
{
public:
    /// @param port  0 for one that the system chooses
    explicit UdpLink(int port) { mSocket.openReceiveSocket(0, port, 0); }

    /// The port, −1 where it could not be had.
    int port() const { return mSocket.localPort(); }

    bool poll(double now, std::vector<FeedReport>& reports) override;

private:
    virtual void decode(std::string_view datagram, std::vector<FeedReport>& reports) = 0;

    Tavik::Network::SocketUdp mSocket;
};

/// Positions of traffic_feed.
class OwnShipLink : public UdpLink
{
public:
    using UdpLink::UdpLink;

private:
    void decode(std::string_view datagram, std::vector<FeedReport>& reports) override;
};

/// Sentences of a satellite receiver.
class NmeaLink : public UdpLink
{
public:
    using UdpLink::UdpLink;

private:
    void decode(std::string_view datagram, std::vector<FeedReport>& reports) override;

    Feeds::NmeaStream mStream;
};

/// Reads from a server, and connects anew whenever the connection is over or the server has been silent for too long.
class TcpLink : public FeedLink
{
public:
    /// @param silenceSeconds  after which a connection is taken for dead: its peer may have vanished without a word
    /// @param retrySeconds  between two attempts
    TcpLink(Endpoint server, double silenceSeconds, double retrySeconds)
        : mServer(server), mSilenceSeconds(silenceSeconds), mRetrySeconds(retrySeconds)
    {}
    ~TcpLink() override;

    TcpLink(const TcpLink&) = delete;
    TcpLink& operator=(const TcpLink&) = delete;

    bool poll(double now, std::vector<FeedReport>& reports) override;

private:
    /// Forgets what is left of an earlier connection.
    virtual void begin() = 0;

    /// @return false when the connection is over, or of no use
    virtual bool receive(Tavik::Network::SocketTcp& socket, std::vector<FeedReport>& reports) = 0;

    bool connect(double now);
    void disconnect(double now);

    Endpoint mServer;
    double mSilenceSeconds;
    double mRetrySeconds;
    std::unique_ptr<Tavik::Network::SocketTcp> mSocket; // null while there is no connection
    double mNextAttempt = 0.0;
    double mLastSeconds = 0.0; // when something useful came, or the connection was made
};

/// Other aircraft of traffic_feed.
class TrafficLink : public TcpLink
{
public:
    using TcpLink::TcpLink;

private:
    void begin() override {}
    bool receive(Tavik::Network::SocketTcp& socket, std::vector<FeedReport>& reports) override;
};

/// Lines of a receiver for transponders.
class SbsLink : public TcpLink
{
public:
    using TcpLink::TcpLink;

private:
    void begin() override { mLines.clear(); }
    bool receive(Tavik::Network::SocketTcp& socket, std::vector<FeedReport>& reports) override;

    Feeds::LineSplitter mLines;
};

} // namespace MovingMap
