#pragma once

#include <tavik/Export.h>
#include <tavik/network/MsgHeader.h>
#include <tavik/network/SendQueue.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace Tavik::Network {

/// One end of a TCP connection over which messages travel, each a MsgHeader and a payload.
///
///     SocketTcp socket;
///     if (socket.createTcpClientSocketNonBlock(address, 5000, 500)) { ... }
///
///     // each frame
///     MsgHeader header;
///     std::vector<unsigned char> payload(SocketTcp::LargestPayloadBytes);
///     while (socket.readPackage(payload.data(), header, SocketTcp::LargestPayloadBytes) >= 0) {
///         ... header.dataLength bytes ...
///     }
///     header.msgType = 7;
///     header.dataLength = 100;
///     socket.writePackage(payload.data(), header, 0);
///     socket.sendPendingMessages();
///     ...
///     socket.closeConnection();
///
/// Reading never waits. Writing waits 10 ms at the most for each message that it sends, when the kernel's buffer fills
/// up in the middle of it; what the kernel does not take then goes to a queue of 200 messages, which later calls drain
/// in order. Neither allocates memory for a message, except for those in the queue.
///
/// The destructor does not close the connection, and neither does any function that makes a new one: call
/// closeConnection() first. A copy shares the descriptor and starts with empty buffers and an empty queue.
///
/// Sending to a peer that has gone raises SIGPIPE, which ends a process that does not expect it. An application that
/// holds connections calls std::signal(SIGPIPE, SIG_IGN) once at its start; the send then fails like any other.
///
/// System errors are printed with perror to standard error, under the names told here. One thread at a time for each
/// object and its copies, whose queues know nothing of each other.
class TAVIK_API SocketTcp
{
public:
    /// What a message can carry and still be received, in bytes.
    static constexpr unsigned int LargestPayloadBytes = 1'048'551;

    /// Neither connected nor holding a descriptor (−1). Takes 2 MiB of address space, which fills as it is used.
    SocketTcp();

    /// A copy that shares the descriptor, and knows the peer's name. clientName and address stay unset; the bytes that
    /// other had received in part read as zeros here.
    SocketTcp(const SocketTcp& other);

    /// As the copy, with the queue emptied. The buffers that this object had are not given back: an application that
    /// connects time and again makes new objects instead of assigning.
    SocketTcp& operator=(const SocketTcp& other);

    virtual ~SocketTcp() = default;

    /// The descriptor; −1 for none. After a failed connect it is the number that the socket had, which may be another
    /// file's by now; nothing is sent to it or received from it.
    int sd() const { return mSd; }

    /// Takes over a descriptor that is connected. Its options stay: without a send timeout, writing may wait for
    /// longer.
    void setDescriptor(int fd);

    /// Whether the connection is usable as far as known: until closeConnection(), or until reading meets its end.
    bool isConnected() const { return mConnected; }

    /// @{
    /// The peer's address as text, set by connecting and accepting.
    void setName(const std::string& name) { mName = name; }
    const std::string& name() const { return mName; }
    /// @}

    /// @{
    /// A label for the application's own use.
    void setClientName(const std::string& name) { mClientName = name; }
    const std::string& clientName() const { return mClientName; }
    /// @}

    /// @{
    /// The peer's address as SocketTcpServer::acceptConnection() stores it: in network byte order, unlike the addresses
    /// that the functions here take. 0 until it is set.
    void setAddress(unsigned long address) { mAddress = address; }
    unsigned long address() const { return mAddress; }
    /// @}

    /// Closes the descriptor, if there is one. The queue stays and so does a message that has been received in part;
    /// over another connection, either would be taken for the begin of its stream: connect anew with a new object.
    /// After a failed connect this closes the number that sd() still tells: call it only where nothing has been opened
    /// in between.
    /// @return what close() returned, or the descriptor where it is negative
    int closeConnection();

    /// Connects, waiting for as long as the system does (minutes, where nobody answers).
    /// @param address  IPv4 in host byte order, first part in the highest byte; 0 fails at once
    /// @param port  1 to 65535
    /// @return false when that failed, which only the lack of a descriptor prints ("socket")
    bool createTcpClientSocket(unsigned long address, int port);

    /// Connects, waiting no longer than told. Where this host has no way at all to the address (its network is down,
    /// say), this succeeds all the same, and the first readPackage() tells that the connection is over.
    /// @param address  as above, but 0 is this host
    /// @param port  1 to 65535
    /// @param timeoutMs  milliseconds
    /// @return as above
    bool createTcpClientSocketNonBlock(unsigned long address, int port, unsigned int timeoutMs);

    /// Receives bytes as they come, past the messages; not to be mixed with readPackage().
    /// @param buffer,length  receives length bytes at most
    /// @param timeoutMs  milliseconds to wait for something
    /// @return the number of bytes, 0 when nothing came (or when not connected), −1 when the connection is over, which
    ///         closes it and prints nothing. With a length of 0 the first byte that comes ends the connection too
    int read(void* buffer, unsigned int length, unsigned int timeoutMs);

    /// Waits until a descriptor takes data, or has failed, as a send then tells.
    /// @param fd  any, be it open or not
    /// @param timeoutMs  milliseconds; 0 to look only
    /// @return 1, or 0 when the time is over, or −1 when it is not open
    int selectWrite(int fd, unsigned int timeoutMs);

    /// Sends once, if the descriptor takes data now, past the messages and their queue.
    /// @param fd  any: whether it is this object's is not looked at
    /// @param data,length  what is sent, bytes
    /// @param flags  of send()
    /// @return what send() returned, 0 when the descriptor takes nothing now or is not open
    long sendSocket(int fd, const void* data, unsigned long length, int flags);

    /// Appends a copy of the data to the queue, see SendQueue::append(). Null data is not.
    void putDataToQueue(const void* data, unsigned int length);

    /// Number of entries in the queue, 0 to 200.
    int bufferSize() const { return static_cast<int>(mSendQueue.size()); }

    /// Entries that were dropped since the last one that found room.
    unsigned int queueOverflow() const { return mSendQueue.overflow(); }

    /// Empties the queue, as is wise before a new connection.
    void clearQueue() { mSendQueue.clear(); }

    /// Sends what the queue holds as far as the socket takes it now. What could not be sent stays, whatever the reason.
    void sendPendingMessages();

    /// Receives a message, if one has arrived whole. Trusts the sender: the payload must have room for whatever
    /// dataLength tells, up to LargestPayloadBytes. Better use the next.
    /// @param payload  receives header.dataLength bytes
    /// @param header  receives all fields but `reserved`
    /// @return the message's msgType, −1 when there is none yet, −2 when the connection is over, which is printed once
    ///         ("read", and why: after the peer's orderly end that there is no connection), or was not there. A larger
    ///         message never arrives: it ends the connection when the buffer is
    ///         full
    ///
    /// A header with another version drops everything that has been received, and reading goes on with what comes next;
    /// standard output says "Wrong VOXA version data received --> 0x1204, should be 0x1203".
    int readPackage(void* payload, MsgHeader& header);

    /// The same for a payload buffer of limited size.
    /// @param payload,header  as above
    /// @param capacity  bytes that fit into the payload
    /// @return also −3 when the payload does not fit: the header tells its size, and the message waits for a call with
    ///         a larger buffer, ahead of all others
    int readPackage(void* payload, MsgHeader& header, unsigned int capacity);

    /// Sends a message, after those in the queue; what the socket does not take now is appended to the queue. Nothing
    /// happens when not connected.
    ///
    /// Standard output tells of messages that are lost: one of more than 1,048,552 bytes of payload (which is one more
    /// than can be received) is not sent, "SocketTcp::writePackage cannot send 2000000 bytes", and neither is one whose
    /// sending fails, "SocketTcp::writePackage ret -1".
    /// @param payload  header.dataLength bytes; may be null when there are none
    /// @param header  sent as it is, the version too
    /// @return 0
    int writePackage(const void* payload, const MsgHeader& header, unsigned int);

private:
    struct Free
    {
        void operator()(unsigned char* bytes) const { std::free(bytes); }
    };
    using Buffer = std::unique_ptr<unsigned char[], Free>;

    static Buffer makeBuffer();
    bool fail();
    bool finishConnecting(unsigned long address);
    bool parseMessage(MsgHeader& header);
    int receiveMore();
    void deliver(void* payload, std::uint32_t length);
    long sendMessage(const void* payload, const MsgHeader& header);
    void queueRest(const void* payload, const MsgHeader& header, std::uint32_t sent);

    int mSd = -1;
    bool mConnected = false;
    std::string mName;
    std::string mClientName;
    unsigned long mAddress = 0;
    SendQueue mSendQueue;
    Buffer mReceiveBuffer;
    Buffer mSendBuffer;
    std::uint32_t mReceiveBegin = 0; // of what has been received and not delivered
    std::uint32_t mReceiveFill = 0;
};

} // namespace Tavik::Network
