#include <tavik/network/SocketOptions.h>

#include <fcntl.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <cstdio>

namespace Tavik::Network {

namespace {

constexpr int BufferBytes = 1'048'576;
constexpr int SendTimeoutMicroseconds = 10'000;

void setIntOption(int fd, int level, int option, int value)
{
    setsockopt(fd, level, option, &value, sizeof value);
}

int openSocket(int type, const char* failureText)
{
    const int fd = socket(AF_INET, type, 0);
    if (fd < 0) {
        std::perror(failureText);
    }
    return fd;
}

} // namespace

int openDatagramSocket(const char* failureText)
{
    return openSocket(SOCK_DGRAM, failureText);
}

int openStreamSocket()
{
    return openSocket(SOCK_STREAM, "socket");
}

void setCloseOnExec(int fd, const char* failureText)
{
    const int flags = fcntl(fd, F_GETFD);
    if (flags < 0) {
        std::perror(failureText);
        return;
    }
    fcntl(fd, F_SETFD, flags | FD_CLOEXEC);
}

void setNoDelay(int fd)
{
    setIntOption(fd, IPPROTO_TCP, TCP_NODELAY, 1);
}

void setBufferSizes(int fd)
{
    setIntOption(fd, SOL_SOCKET, SO_RCVBUF, BufferBytes);
    setIntOption(fd, SOL_SOCKET, SO_SNDBUF, BufferBytes);
}

void setSendTimeout(int fd)
{
    timeval timeout{};
    timeout.tv_usec = SendTimeoutMicroseconds;
    if (setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &timeout, sizeof timeout) < 0) {
        // One text for every socket, whichever function made it.
        std::perror("SocketTcp::createTcpClientSocketNonBlock setsockopt SO_SNDTIMEO");
    }
}

sockaddr_in socketAddress(unsigned long address, int port)
{
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_addr.s_addr = htonl(static_cast<std::uint32_t>(address));
    result.sin_port = htons(static_cast<std::uint16_t>(port));
    return result;
}

int boundPort(int fd)
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    if (getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) < 0 || address.sin_family != AF_INET) {
        return -1;
    }
    return ntohs(address.sin_port);
}

} // namespace Tavik::Network
