#include <tavik/network/SocketUdp.h>

#include <tavik/network/HostLookup.h>
#include <tavik/network/Interfaces.h>
#include <tavik/network/SocketOptions.h>

#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace Tavik::Network {

namespace {

/// @param failureText  for perror; null to say nothing
bool closeAndFail(int fd, const char* failureText)
{
    if (failureText != nullptr) {
        std::perror(failureText);
    }
    close(fd);
    return false;
}

bool setOption(int fd, int level, int option, int value)
{
    return setsockopt(fd, level, option, &value, sizeof value) == 0;
}

bool startsWith(const std::string& text, const char* begin)
{
    return text.rfind(begin, 0) == 0;
}

/// Neither loopback nor dummy nor an alias.
bool isForBroadcasts(const NetworkAdapter& adapter)
{
    return !startsWith(adapter.name, "lo") && !startsWith(adapter.name, "dummy") &&
           adapter.name.find(':') == std::string::npos;
}

} // namespace

SocketUdp::~SocketUdp()
{
    closeConnection();
}

int SocketUdp::closeConnection()
{
    // Not by the descriptor alone: the 0 that a close leaves is no socket.
    const int result = mOpen ? close(mSd) : mSd;
    mSd = 0;
    mMode = Mode::Closed;
    mOpen = false;
    return result;
}

bool SocketUdp::opened(int fd, Mode mode)
{
    mSd = fd;
    mOpen = true;
    mMode = mode;
    return true;
}

bool SocketUdp::openSendSocket(unsigned long address, int port, int ttl)
{
    if (mOpen || !isPort(port)) {
        return false;
    }
    mPort = port;
    const int fd = openDatagramSocket("Opening send socket");
    if (fd < 0) {
        return false;
    }
    setCloseOnExec(fd, "fcntl");
    if (!setOption(fd, SOL_SOCKET, SO_BROADCAST, 1)) {
        return closeAndFail(fd, "set send broadcast");
    }
    if (!setOption(fd, IPPROTO_IP, IP_TTL, std::clamp(ttl, 1, 255))) {
        return closeAndFail(fd, nullptr);
    }
    const sockaddr_in peer = socketAddress(address, port);
    if (connect(fd, reinterpret_cast<const sockaddr*>(&peer), sizeof peer) < 0) {
        return closeAndFail(fd, "connect send socket");
    }
    return opened(fd, Mode::Sending);
}

bool SocketUdp::openReceiveSocket(unsigned long address, int port, int blocking)
{
    if (mOpen || !isPort(port)) {
        return false;
    }
    const int fd = openDatagramSocket("Opening recv socket");
    if (fd < 0) {
        return false;
    }
    setCloseOnExec(fd, "fcntl");
    if (!setOption(fd, SOL_SOCKET, SO_REUSEADDR, 1)) {
        std::perror("setsockopt"); // and the descriptor stays open, as the header tells
        return false;
    }
    const sockaddr_in local = socketAddress(address, port);
    if (bind(fd, reinterpret_cast<const sockaddr*>(&local), sizeof local) < 0) {
        return closeAndFail(fd, "bind recv socket");
    }
    if (blocking == 0) {
        int on = 1;
        ioctl(fd, FIONBIO, &on);
    }
    return opened(fd, Mode::Receiving);
}

int SocketUdp::localPort() const
{
    return mOpen ? boundPort(mSd) : -1;
}

unsigned long SocketUdp::getHostAddress()
{
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1); // which may leave a long name without its end
    const unsigned long address = lookUpHost(name.data());
    if (address == 0) {
        std::perror("Unknown Host");
    }
    return address;
}

unsigned long SocketUdp::getBroadcastAddress()
{
    const int fd = openDatagramSocket("Opening send socket");
    if (fd < 0) {
        std::exit(EXIT_FAILURE); // no answer could be told from an address
    }
    const std::vector<NetworkAdapter> adapters = listInterfaces();
    const auto adapter = std::find_if(adapters.begin(), adapters.end(), isForBroadcasts);
    const unsigned long address = adapter == adapters.end() ? 0 : queryBroadcastAddress(fd, *adapter);
    close(fd);
    return address;
}

unsigned long SocketUdp::getAddressFromName(const std::string& name)
{
    return lookUpHost(name);
}

int SocketUdp::read(void* buffer, unsigned int length)
{
    return mOpen ? static_cast<int>(recv(mSd, buffer, length, 0)) : -1;
}

int SocketUdp::write(int /*unused*/, const void* data, unsigned int length)
{
    return mOpen ? static_cast<int>(send(mSd, data, length, 0)) : -1;
}

int SocketUdp::write(const void* data, unsigned int length)
{
    return mOpen ? static_cast<int>(send(mSd, data, length, MSG_DONTWAIT)) : -1;
}

} // namespace Tavik::Network
