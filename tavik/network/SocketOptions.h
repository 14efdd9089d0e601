#pragma once

#include <netinet/in.h>

#include <cstdint>

/// What every socket of the library is set up with.
namespace Tavik::Network {

/// @param failureText  for perror
/// @return −1 when the system gives no socket
int openDatagramSocket(const char* failureText);

/// @return −1, with perror("socket"), when the system gives no socket
int openStreamSocket();

/// Not inherited by programs that the process starts.
/// @param failureText  for perror, when the flags cannot be read
void setCloseOnExec(int fd, const char* failureText);

/// Small messages leave at once.
void setNoDelay(int fd);

/// Kernel buffers of 1 MiB each way.
void setBufferSizes(int fd);

/// A send that finds no room waits 10 ms at the most; perror where that cannot be set.
void setSendTimeout(int fd);

/// @param address  host byte order
/// @param port  0 to 65535
sockaddr_in socketAddress(unsigned long address, int port);

/// Whether a port has 16 bits.
constexpr bool isPort(int port)
{
    return port >= 0 && port <= 0xFFFF;
}

/// The port that a socket is bound to, −1 where it is none.
int boundPort(int fd);

} // namespace Tavik::Network
