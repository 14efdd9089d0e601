#pragma once

#include <tavik/Export.h>

namespace Tavik::Network {

class SocketTcp;

/// The listening side: hands each connection to a SocketTcp.
///
///     SocketTcpServer server;
///     if (!server.init(5000)) { ... }
///
///     // each frame
///     auto client = std::make_unique<SocketTcp>();
///     if (server.acceptConnectionNonBlock(*client)) { ... }
///
/// System errors are printed with perror to standard error, under the names told here. The destructor does not close
/// the descriptor; call closeConnection(). One thread at a time for each object.
class TAVIK_API SocketTcpServer
{
public:
    virtual ~SocketTcpServer() = default;

    /// Stops listening; connections that were accepted stay.
    /// @return true
    bool closeConnection();

    /// Listens on all local addresses, for five connections that wait to be accepted. A server that listens already is
    /// closed first by the caller.
    /// @param port  1 to 65535; 0 for one that the system chooses, see port()
    /// @return false when the port is taken ("bind"), and on other failures ("socket", "setsockopt", "listen"). Where
    ///         the system refuses an option, the descriptor is not closed
    bool init(int port);

    /// The port that is listened on, −1 for none.
    int port() const;

    /// Waits until a peer connects.
    /// @param client  receives descriptor, name and address; what it held before is not closed. The address is in
    ///                network byte order, so pass ntohl(client.address()) on to whatever takes addresses here
    /// @return false when not listening, and on failure ("accept")
    bool acceptConnection(SocketTcp& client);

    /// The same when a peer has connected or does so within 1 ms; the client's address stays as it is.
    /// @return false when there is none, when not listening, and on failure ("accept")
    bool acceptConnectionNonBlock(SocketTcp& client);

private:
    bool accept(SocketTcp& client, bool setsAddress, const char* failureText);

    int mSd = -1;
};

} // namespace Tavik::Network
