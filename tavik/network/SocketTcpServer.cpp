#include <tavik/network/SocketTcpServer.h>

#include <tavik/network/AddressText.h>
#include <tavik/network/SocketOptions.h>
#include <tavik/network/SocketTcp.h>
#include <tavik/network/SocketWait.h>

#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace Tavik::Network {

namespace {

constexpr int WaitingConnections = 5;
constexpr std::int64_t AcceptWaitMicroseconds = 1000;

bool closeAndFail(int fd, const char* failureText)
{
    std::perror(failureText);
    close(fd);
    return false;
}

} // namespace

bool SocketTcpServer::closeConnection()
{
    if (mSd >= 0) {
        close(mSd);
    }
    mSd = -1;
    return true;
}

bool SocketTcpServer::init(int port)
{
    if (!isPort(port)) {
        return false;
    }
    const int fd = openStreamSocket();
    if (fd < 0) {
        return false;
    }
    setCloseOnExec(fd, "fcntl");
    const int on = 1;
    if (setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) < 0) {
        std::perror("setsockopt"); // and the descriptor stays open, as the header tells
        return false;
    }
    const sockaddr_in address = socketAddress(INADDR_ANY, port);
    if (bind(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) < 0) {
        return closeAndFail(fd, "bind");
    }
    setBufferSizes(fd); // before listening: connections take them over
    if (listen(fd, WaitingConnections) < 0) {
        return closeAndFail(fd, "listen");
    }
    setNoDelay(fd);
    mSd = fd;
    return true;
}

int SocketTcpServer::port() const
{
    return mSd < 0 ? -1 : boundPort(mSd);
}

bool SocketTcpServer::acceptConnection(SocketTcp& client)
{
    return mSd >= 0 && accept(client, true, "fcntl");
}

bool SocketTcpServer::acceptConnectionNonBlock(SocketTcp& client)
{
    return mSd >= 0 && waitFor(mSd, Readiness::Readable, AcceptWaitMicroseconds) == 1 &&
           accept(client, false, "acceptConnectionNonBlock fcntl");
}

bool SocketTcpServer::accept(SocketTcp& client, bool setsAddress, const char* failureText)
{
    sockaddr_in peer{};
    socklen_t length = sizeof peer;
    int fd = -1;
    do {
        fd = ::accept(mSd, reinterpret_cast<sockaddr*>(&peer), &length);
    } while (fd < 0 && errno == EINTR);
    if (fd < 0) {
        std::perror("accept");
        return false;
    }
    client.setDescriptor(fd);
    client.setName(addressText(ntohl(peer.sin_addr.s_addr)));
    if (setsAddress) {
        client.setAddress(peer.sin_addr.s_addr);
    }
    setBufferSizes(fd);
    setSendTimeout(fd);
    setCloseOnExec(fd, failureText);
    return true;
}

} // namespace Tavik::Network
