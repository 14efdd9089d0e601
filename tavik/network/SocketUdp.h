#pragma once

#include <tavik/Export.h>

#include <cstdint>
#include <string>

namespace Tavik::Network {

/// Sends or receives IPv4 datagrams, typically broadcasts between display stations.
///
///     SocketUdp sender;
///     sender.openSendSocket(sender.getBroadcastAddress(), 4000, 1);
///     sender.write(&position, sizeof position);
///
///     SocketUdp receiver;
///     receiver.openReceiveSocket(0, 4000, 0); // any local address, without waiting
///     char buffer[1500];
///     for (int count; (count = receiver.read(buffer, sizeof buffer)) >= 0;) { ... }
///
/// Addresses are numbers in host byte order, first part in the highest byte: 0xC0A80001 is 192.168.0.1. System errors
/// are printed with perror to standard error, under the names told here. One thread at a time for each object.
class TAVIK_API SocketUdp
{
public:
    SocketUdp() = default;

    /// Closes the socket.
    virtual ~SocketUdp();

    SocketUdp(const SocketUdp&) = delete;
    SocketUdp& operator=(const SocketUdp&) = delete;

    /// Closes the socket; another one may be opened afterwards.
    /// @return what close() returned; where no socket was open, −1 the first time and 0 later
    int closeConnection();

    /// Opens a socket that sends to one address, which may be a broadcast address.
    /// @param address  of the receiver
    /// @param port  0 to 65535
    /// @param ttl  routers that a datagram may pass, brought into 1 to 255
    /// @return false when a socket is open already, and on failure ("Opening send socket", "set send broadcast",
    ///         "connect send socket")
    bool openSendSocket(unsigned long address, int port, int ttl);

    /// Opens a socket that receives what is sent to a port of this host; several may receive from the same port.
    /// @param address  a local address, 0 for any
    /// @param port  1 to 65535, 0 for one that the system chooses, see localPort()
    /// @param blocking  0: read() never waits; else it waits for a datagram
    /// @return false when a socket is open already, and on failure ("Opening recv socket", "bind recv socket",
    ///         "setsockopt"). Where the system refuses an option, the descriptor is not closed
    bool openReceiveSocket(unsigned long address, int port, int blocking);

    /// The port of this end, −1 when no socket is open.
    int localPort() const;

    /// The address of this host's name; 0 where the name is unknown ("Unknown Host").
    unsigned long getHostAddress();

    /// The broadcast address of the first interface that is neither loopback ("lo…") nor dummy ("dummy…") nor an alias
    /// (with ':'); 0 when there is none. Ends the process with exit status 1 when the system gives no socket at all
    /// ("Opening send socket").
    unsigned long getBroadcastAddress();

    /// The first address of a name, 0 when there is none. Asks name servers, and may wait for them.
    unsigned long getAddressFromName(const std::string& name);

    /// Receives one datagram; what does not fit is lost.
    /// @return its size, −1 when there is none, when a signal came first, on failure, and when no socket is open
    int read(void* buffer, unsigned int length);

    /// Sends one datagram; the first argument has no effect. May wait for room in the kernel's buffer.
    /// @param data,length  what is sent, 65507 bytes at most
    /// @return the number of bytes sent, −1 on failure and when no socket is open. Failing may mean that an earlier
    ///         datagram was not welcome
    int write(int, const void* data, unsigned int length);

    /// The same without waiting.
    int write(const void* data, unsigned int length);

private:
    enum class Mode : std::uint32_t
    {
        Closed = 0,
        Receiving = 1,
        Sending = 2
    };

    bool opened(int fd, Mode mode);

    int mSd = -1;
    int mPort = 0;
    Mode mMode = Mode::Closed;
    bool mOpen = false;
};

} // namespace Tavik::Network
