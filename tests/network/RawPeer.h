#pragma once

#include <tavik/network/MsgHeader.h>
#include <tavik/network/SocketTcp.h>
#include <tavik/network/SocketTcpServer.h>

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <utility>

constexpr unsigned long Loopback = 0x7F000001;

/// A descriptor that is closed at the end.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : mFd(fd) {}
    ~Descriptor() { reset(); }
    Descriptor(Descriptor&& other) noexcept : mFd(std::exchange(other.mFd, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(mFd, other.mFd);
        return *this;
    }

    int get() const { return mFd; }

    void reset()
    {
        if (mFd >= 0) {
            close(mFd);
        }
        mFd = -1;
    }

private:
    int mFd = -1;
};

/// A SocketTcp that is connected over loopback to a bare socket.
struct RawPeer
{
    RawPeer()
    {
        Tavik::Network::SocketTcpServer server;
        EXPECT_TRUE(server.init(0));
        EXPECT_TRUE(socket.createTcpClientSocketNonBlock(Loopback, server.port(), 5000));
        Tavik::Network::SocketTcp accepted;
        EXPECT_TRUE(server.acceptConnection(accepted));
        raw = Descriptor(accepted.sd());
        server.closeConnection();
    }

    ~RawPeer() { socket.closeConnection(); }

    void send(const std::string& bytes) const
    {
        ASSERT_EQ(::send(raw.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL), static_cast<long>(bytes.size()));
    }

    /// What arrives at the bare end until it has been silent for a while.
    std::string receive(int silenceMs = 100) const
    {
        std::string bytes;
        std::string piece(1 << 20, '\0');
        pollfd entry{raw.get(), POLLIN, 0};
        while (poll(&entry, 1, silenceMs) == 1) {
            const long count = recv(raw.get(), piece.data(), piece.size(), 0);
            if (count <= 0) {
                break;
            }
            bytes.append(piece, 0, static_cast<std::size_t>(count));
        }
        return bytes;
    }

    Tavik::Network::SocketTcp socket;
    Descriptor raw;
};

/// A message as it stands on the wire.
inline std::string message(const Tavik::Network::MsgHeader& header, const std::string& payload)
{
    std::string bytes(sizeof header, '\0');
    std::memcpy(bytes.data(), &header, sizeof header);
    return bytes + payload;
}

inline Tavik::Network::MsgHeader headerOf(unsigned int type, std::size_t length)
{
    Tavik::Network::MsgHeader header;
    header.channel = 0x01020304;
    header.msgType = type;
    header.dataLength = static_cast<unsigned int>(length);
    std::memcpy(header.userData, "userdata", 8);
    return header;
}
