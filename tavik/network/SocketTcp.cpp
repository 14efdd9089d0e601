#include <tavik/network/SocketTcp.h>

#include <tavik/network/AddressText.h>
#include <tavik/network/SocketOptions.h>
#include <tavik/network/SocketWait.h>

#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>

namespace Tavik::Network {

namespace {

constexpr std::uint32_t BufferBytes = 1'048'576;
constexpr std::uint32_t HeaderBytes = sizeof(MsgHeader);

// Copying a message together costs less than handing it over in two pieces up to about this size.
constexpr std::uint32_t SmallMessageBytes = 4096;

constexpr std::int64_t MicrosecondsPerMs = 1000;

// What readPackage() returns beside a message's type.
constexpr int NoMessage = -1;
constexpr int ConnectionOver = -2;
constexpr int NoRoom = -3;

void setNonBlocking(int fd, int on)
{
    ioctl(fd, FIONBIO, &on);
}

/// @return 0 when the socket has connected, else why it has not
int pendingError(int fd)
{
    int error = 0;
    socklen_t length = sizeof error;
    if (getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &length) < 0) {
        error = errno;
        std::perror("getsockopt");
    }
    return error;
}

bool connectTo(int fd, const sockaddr_in& peer)
{
    if (connect(fd, reinterpret_cast<const sockaddr*>(&peer), sizeof peer) == 0) {
        return true;
    }
    // A signal ends the wait, not the attempt.
    return errno == EINTR && waitFor(fd, Readiness::Writable, WithoutLimit) == 1 && pendingError(fd) == 0;
}

/// Calls again what a signal has cut short.
template <typename Call>
long uninterrupted(Call call)
{
    long result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

/// Copies a message together as it goes over the wire.
/// @param skipped  bytes to leave out at its begin
void copyMessage(unsigned char* target, const void* payload, const MsgHeader& header, std::uint32_t skipped)
{
    const std::uint32_t skippedHeader = std::min(skipped, HeaderBytes);
    std::memcpy(target, reinterpret_cast<const unsigned char*>(&header) + skippedHeader, HeaderBytes - skippedHeader);
    const std::uint32_t skippedPayload = skipped - skippedHeader;
    if (header.dataLength > skippedPayload) {
        std::memcpy(target + HeaderBytes - skippedHeader, static_cast<const unsigned char*>(payload) + skippedPayload,
                    header.dataLength - skippedPayload);
    }
}

/// Whether a call that does not wait failed where a look beforehand would have said "not now": no data, or a
/// descriptor that is not open.
bool isNotReady(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK || error == EBADF;
}

} // namespace

SocketTcp::SocketTcp() : mReceiveBuffer(makeBuffer()), mSendBuffer(makeBuffer()) {}

SocketTcp::SocketTcp(const SocketTcp& other)
    : mSd(other.mSd), mConnected(other.mConnected), mName(other.mName), mReceiveBuffer(makeBuffer()),
      mSendBuffer(makeBuffer()), mReceiveFill(mReceiveBuffer != nullptr ? other.mReceiveFill : 0)
{}

SocketTcp& SocketTcp::operator=(const SocketTcp& other) // NOLINT(cert-oop54-cpp): to itself it does the same
{
    // Whoever holds on to the buffers of an assigned object may do so; they are never freed.
    static_cast<void>(mReceiveBuffer.release());
    static_cast<void>(mSendBuffer.release());
    mReceiveBuffer = makeBuffer();
    mSendBuffer = makeBuffer();
    mReceiveBegin = 0;
    mReceiveFill = mReceiveBuffer != nullptr ? other.mReceiveFill : 0;
    mSd = other.mSd;
    mConnected = other.mConnected;
    mName = other.mName;
    mSendQueue.clear();
    return *this;
}

/// Zeros that take no memory until they are written to; null without memory, which ends connections like a full buffer.
SocketTcp::Buffer SocketTcp::makeBuffer()
{
    return Buffer(static_cast<unsigned char*>(std::calloc(BufferBytes, 1)));
}

void SocketTcp::setDescriptor(int fd)
{
    mSd = fd;
    mConnected = true;
}

int SocketTcp::closeConnection()
{
    const int result = mSd < 0 ? mSd : close(mSd);
    mSd = -1;
    mConnected = false;
    return result;
}

/// Closes a socket that could not connect; its number stays.
bool SocketTcp::fail()
{
    close(mSd);
    mConnected = false;
    return false;
}

bool SocketTcp::finishConnecting(unsigned long address)
{
    setBufferSizes(mSd);
    setSendTimeout(mSd);
    mName = addressText(address);
    mConnected = true;
    return true;
}

bool SocketTcp::createTcpClientSocket(unsigned long address, int port)
{
    if (address == 0 || !isPort(port)) {
        return false;
    }
    const int fd = openStreamSocket();
    if (fd < 0) {
        return false;
    }
    mSd = fd;
    setNoDelay(mSd);
    setCloseOnExec(mSd, "createTcpClientSocket fcntl");
    return connectTo(mSd, socketAddress(address, port)) ? finishConnecting(address) : fail();
}

bool SocketTcp::createTcpClientSocketNonBlock(unsigned long address, int port, unsigned int timeoutMs)
{
    if (!isPort(port)) {
        return false;
    }
    const int fd = openStreamSocket();
    if (fd < 0) {
        return false;
    }
    mSd = fd;
    setNoDelay(mSd);
    setNonBlocking(mSd, 1);
    setCloseOnExec(mSd, "createTcpClientSocketNonBlock fcntl");
    const sockaddr_in peer = socketAddress(address, port);
    // How it went is told by the wait and the pending error; neither knows of an attempt that could not even begin.
    static_cast<void>(connect(mSd, reinterpret_cast<const sockaddr*>(&peer), sizeof peer));
    if (waitFor(mSd, Readiness::Writable, timeoutMs * MicrosecondsPerMs) < 1 || pendingError(mSd) != 0) {
        return fail();
    }
    setNonBlocking(mSd, 0);
    return finishConnecting(address);
}

int SocketTcp::read(void* buffer, unsigned int length, unsigned int timeoutMs)
{
    if (!mConnected) {
        return 0;
    }
    // Without a wait the receive itself tells whether there is something, which saves a call.
    if (timeoutMs > 0 && waitFor(mSd, Readiness::Readable, timeoutMs * MicrosecondsPerMs) < 1) {
        return 0;
    }
    const long count = uninterrupted([&] { return recv(mSd, buffer, length, timeoutMs > 0 ? 0 : MSG_DONTWAIT); });
    if (count > 0) {
        return static_cast<int>(count);
    }
    if (count < 0 && timeoutMs == 0 && isNotReady(errno)) {
        return 0;
    }
    const int reason = count < 0 ? errno : ENOTCONN; // the peer's orderly end sets none
    closeConnection();
    errno = reason;
    return -1;
}

int SocketTcp::selectWrite(int fd, unsigned int timeoutMs)
{
    return waitFor(fd, Readiness::Writable, timeoutMs * MicrosecondsPerMs);
}

long SocketTcp::sendSocket(int fd, const void* data, unsigned long length, int flags)
{
    if (selectWrite(fd, 0) < 1) {
        return 0;
    }
    return uninterrupted([&] { return send(fd, data, length, flags); });
}

void SocketTcp::putDataToQueue(const void* data, unsigned int length)
{
    if (data == nullptr && length > 0) {
        return;
    }
    unsigned char* const entry = mSendQueue.append(length, false);
    if (entry != nullptr && length > 0) {
        std::memcpy(entry, data, length);
    }
}

void SocketTcp::sendPendingMessages()
{
    while (mConnected && !mSendQueue.isEmpty() && selectWrite(mSd, 0) == 1) {
        const std::uint32_t length = mSendQueue.headLength();
        // There is nothing to send of an entry without data, and nothing to wait for.
        const long sent = length == 0 ? 0 : uninterrupted([&] { return send(mSd, mSendQueue.headData(), length, 0); });
        if (sent < 0 || (sent == 0 && length > 0)) {
            return;
        }
        mSendQueue.consume(static_cast<std::uint32_t>(sent));
        if (static_cast<std::uint32_t>(sent) < length) {
            return;
        }
    }
}

int SocketTcp::writePackage(const void* payload, const MsgHeader& header, unsigned int /*unused*/)
{
    if (!mConnected) {
        return 0;
    }
    if (header.dataLength > BufferBytes - HeaderBytes || (payload == nullptr && header.dataLength > 0)) {
        std::printf("SocketTcp::writePackage cannot send %u bytes\n", header.dataLength);
        return 0;
    }
    sendPendingMessages();
    long sent = 0;
    if (mSendQueue.isEmpty() && selectWrite(mSd, 0) == 1) {
        sent = sendMessage(payload, header);
        if (sent < 0) {
            std::printf("SocketTcp::writePackage ret %d\n", static_cast<int>(sent));
            return 0;
        }
    }
    queueRest(payload, header, static_cast<std::uint32_t>(sent));
    return 0;
}

/// Sends once.
/// @return what send() returned
long SocketTcp::sendMessage(const void* payload, const MsgHeader& header)
{
    const std::uint32_t total = HeaderBytes + header.dataLength;
    if (total <= SmallMessageBytes && mSendBuffer != nullptr) {
        copyMessage(mSendBuffer.get(), payload, header, 0);
        return uninterrupted([&] { return send(mSd, mSendBuffer.get(), total, 0); });
    }
    // sendmsg() only reads, whatever its types say.
    std::array<iovec, 2> pieces = {
        {{const_cast<MsgHeader*>(&header), HeaderBytes}, {const_cast<void*>(payload), header.dataLength}}};
    msghdr message{};
    message.msg_iov = pieces.data();
    message.msg_iovlen = pieces.size();
    return uninterrupted([&] { return sendmsg(mSd, &message, 0); });
}

/// Appends a message to the queue, without the bytes that have been sent.
void SocketTcp::queueRest(const void* payload, const MsgHeader& header, std::uint32_t sent)
{
    const std::uint32_t total = HeaderBytes + header.dataLength;
    if (sent == total) {
        return;
    }
    unsigned char* const entry = mSendQueue.append(total - sent, sent > 0);
    if (entry != nullptr) {
        copyMessage(entry, payload, header, sent);
    }
}

int SocketTcp::readPackage(void* payload, MsgHeader& header)
{
    return readPackage(payload, header, std::numeric_limits<unsigned int>::max());
}

int SocketTcp::readPackage(void* payload, MsgHeader& header, unsigned int capacity)
{
    if (!mConnected) {
        return ConnectionOver;
    }
    MsgHeader received;
    if (!parseMessage(received)) {
        const int count = receiveMore();
        if (count < 0) {
            std::perror("read");
            return ConnectionOver;
        }
        if (count == 0 || !parseMessage(received)) {
            return NoMessage;
        }
    }
    received.reserved = header.reserved;
    header = received;
    if (received.dataLength > capacity) {
        return NoRoom;
    }
    deliver(payload, received.dataLength);
    return static_cast<int>(received.msgType);
}

/// Whether a whole message stands at the begin of what has been received.
/// @param header  receives its header, as far as that has arrived
bool SocketTcp::parseMessage(MsgHeader& header)
{
    if (mReceiveFill < HeaderBytes) {
        return false;
    }
    std::memcpy(&header, mReceiveBuffer.get() + mReceiveBegin, HeaderBytes);
    if (header.version != MsgHeader::Version) {
        std::printf("Wrong VOXA version data received --> 0x%x, should be 0x%x\n",
                    static_cast<unsigned int>(static_cast<std::int16_t>(header.version)),
                    static_cast<unsigned int>(MsgHeader::Version));
        mReceiveFill = 0;
        return false;
    }
    return mReceiveFill >= std::uint64_t{HeaderBytes} + header.dataLength;
}

/// Receives what is there now, behind what has been received before.
/// @return as read()
int SocketTcp::receiveMore()
{
    if (mReceiveBegin > 0) { // what is left here is part of one message, so no byte moves twice
        std::memmove(mReceiveBuffer.get(), mReceiveBuffer.get() + mReceiveBegin, mReceiveFill);
        mReceiveBegin = 0;
    }
    const std::uint32_t room = mReceiveBuffer != nullptr ? BufferBytes - 1 - mReceiveFill : 0;
    const int count = read(mReceiveBuffer.get() + mReceiveFill, room, 0); // without a buffer the fill is 0
    if (count > 0) {
        mReceiveFill += static_cast<std::uint32_t>(count);
    }
    return count;
}

/// Hands the payload of the first message over, and removes the message.
void SocketTcp::deliver(void* payload, std::uint32_t length)
{
    if (payload != nullptr && length > 0) {
        std::memcpy(payload, mReceiveBuffer.get() + mReceiveBegin + HeaderBytes, length);
    }
    const std::uint32_t total = HeaderBytes + length;
    mReceiveFill -= total;
    mReceiveBegin = mReceiveFill > 0 ? mReceiveBegin + total : 0;
}

} // namespace Tavik::Network
