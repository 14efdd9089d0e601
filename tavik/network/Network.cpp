#include <tavik/network/Network.h>

#include <tavik/filesystem/Directory.h>
#include <tavik/filesystem/ReplaceFile.h>
#include <tavik/network/AddressText.h>
#include <tavik/network/HttpText.h>
#include <tavik/network/Interfaces.h>
#include <tavik/network/SocketOptions.h>
#include <tavik/network/SocketTcp.h>
#include <tavik/network/SocketWait.h>

#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <new>
#include <string_view>

namespace Tavik::Network {

namespace {

constexpr std::uint32_t NoBroadcast = 0x7FFFFFFF;

constexpr int HttpPort = 80;
constexpr unsigned int LargestAnswerBytes = 1'048'576;
constexpr unsigned int SmallestAnswerBytes = 5; // less holds no blank line
constexpr std::int64_t FirstByteMicroseconds = 1'000'000;
constexpr unsigned int SilenceMs = 50;

struct FreeResults
{
    void operator()(addrinfo* results) const { freeaddrinfo(results); }
};

bool hasControlCharacter(const std::string& text)
{
    return std::any_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; });
}

/// Receives until the server is silent or gone, or the buffer is full.
unsigned int receiveAnswer(SocketTcp& socket, char* buffer)
{
    unsigned int total = 0;
    int count = 0;
    do {
        total += static_cast<unsigned int>(count);
        count = socket.read(buffer + total, LargestAnswerBytes - total, SilenceMs);
    } while (count > 0);
    return total;
}

void writeContent(std::string_view answer, const std::string& fileName)
{
    const std::size_t begin = answer.size() < SmallestAnswerBytes ? std::string_view::npos : contentBegin(answer);
    if (begin == std::string_view::npos) {
        return;
    }
    if (fileName.find('/') != std::string::npos) {
        FileSystem::Directory::createDirectoryRecursive(FileSystem::Directory::extractPathFomFile(fileName));
    }
    if (!FileSystem::replaceFile(fileName, answer.substr(begin))) {
        const int reason = errno; // which printing may change
        std::printf("could not open <%s>\n", fileName.c_str());
        errno = reason;
        std::perror("fopen");
    }
}

} // namespace

std::map<std::string, unsigned long> Network::mHosts;

std::vector<NetworkAdapter> Network::getNetworkAdapters()
{
    const int fd = openDatagramSocket("Opening send socket");
    if (fd < 0) {
        return {};
    }
    std::vector<NetworkAdapter> adapters = listInterfaces();
    for (NetworkAdapter& adapter : adapters) {
        const std::uint32_t broadcast = queryBroadcastAddress(fd, adapter);
        adapter.broadcast = broadcast == 0 ? NoBroadcast : broadcast;
    }
    close(fd);
    return adapters;
}

std::string Network::getAddressString(unsigned long address)
{
    return addressText(address);
}

unsigned long Network::getAddressFromName(const std::string& name)
{
    addrinfo* results = nullptr;
    const int error = getaddrinfo(name.c_str(), nullptr, nullptr, &results);
    if (error != 0) {
        std::fprintf(stderr, "getaddrinfo: %s\n", gai_strerror(error));
        return 0;
    }
    const std::unique_ptr<addrinfo, FreeResults> owner(results);
    unsigned long address = 0;
    for (const addrinfo* result = results; result != nullptr; result = result->ai_next) {
        if (result->ai_family == AF_INET && result->ai_addr != nullptr) {
            const unsigned long found = ntohl(reinterpret_cast<const sockaddr_in*>(result->ai_addr)->sin_addr.s_addr);
            address = found != 0 ? found : address;
        }
    }
    return address;
}

bool Network::getFileHttp(const std::string& url, const std::string& fileName)
{
    if (hasControlCharacter(url)) {
        return false;
    }
    const HttpLocation location = splitUrl(url);
    auto host = mHosts.find(location.host);
    if (host == mHosts.end()) {
        const unsigned long address = getAddressFromName(location.host);
        if (address == 0) {
            return false;
        }
        host = mHosts.emplace(location.host, address).first;
    }
    SocketTcp socket;
    if (!socket.createTcpClientSocket(host->second, HttpPort)) {
        return false;
    }
    const std::string request = httpRequest(location);
    // Where the server has gone already, waiting for the answer tells.
    static_cast<void>(socket.sendSocket(socket.sd(), request.data(), request.size(), MSG_NOSIGNAL));
    const std::unique_ptr<char[]> buffer(new (std::nothrow) char[LargestAnswerBytes]);
    const bool answers = buffer != nullptr && waitFor(socket.sd(), Readiness::Readable, FirstByteMicroseconds) == 1;
    if (answers) {
        writeContent({buffer.get(), receiveAnswer(socket, buffer.get())}, fileName);
    }
    socket.closeConnection();
    return answers;
}

} // namespace Tavik::Network
