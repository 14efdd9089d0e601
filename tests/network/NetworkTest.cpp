#include "RawPeer.h"

#include <support/TemporaryDirectory.h>
#include <tavik/network/Network.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <random>
#include <thread>

using Tavik::Network::NetworkAdapter;
using Tavik::Network::SocketTcp;
using Tavik::Network::SocketTcpServer;
using Net = Tavik::Network::Network;

namespace {

constexpr int HttpPort = 80;

/// Answers one request with fixed bytes, and keeps the request.
class HttpServer
{
public:
    explicit HttpServer(std::string answer) : mAnswer(std::move(answer)) { mIsListening = mServer.init(HttpPort); }

    ~HttpServer()
    {
        mServer.closeConnection();
        if (mThread.joinable()) {
            mThread.join();
        }
    }

    bool isListening() const { return mIsListening; }

    std::string download(const std::string& url, const std::string& file, bool& result)
    {
        mThread = std::thread([this] { serve(); });
        result = Net().getFileHttp(url, file);
        mThread.join();
        return mRequest;
    }

private:
    void serve()
    {
        SocketTcp client;
        if (!mServer.acceptConnection(client)) {
            return;
        }
        std::string buffer(4096, '\0');
        const int count = client.read(buffer.data(), 4096, 2000);
        mRequest = buffer.substr(0, static_cast<std::size_t>(std::max(count, 0)));
        for (std::size_t sent = 0; sent < mAnswer.size();) {
            const long piece = send(client.sd(), mAnswer.data() + sent, mAnswer.size() - sent, MSG_NOSIGNAL);
            if (piece < 0 && errno != EAGAIN) {
                break;
            }
            sent += piece > 0 ? static_cast<std::size_t>(piece) : 0;
        }
        client.closeConnection();
    }

    SocketTcpServer mServer;
    bool mIsListening = false;
    std::string mAnswer;
    std::string mRequest;
    std::thread mThread;
};

/// Python's own server, a process that lasts as long as the object.
class PackagedServer
{
public:
    PackagedServer(const std::string& folder, const char* protocol) : mProcess(fork())
    {
        if (mProcess == 0) {
            const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC); // for its log
            dup2(nowhere, STDOUT_FILENO);
            dup2(nowhere, STDERR_FILENO);
            execl(TAVIK_PYTHON, TAVIK_PYTHON, "-m", "http.server", "80", "--bind", "127.0.0.1", "--protocol", protocol,
                  "--directory", folder.c_str(), static_cast<char*>(nullptr));
            _exit(EXIT_FAILURE);
        }
    }

    ~PackagedServer()
    {
        if (mProcess > 0) {
            kill(mProcess, SIGKILL);
            waitpid(mProcess, nullptr, 0);
        }
    }

    PackagedServer(const PackagedServer&) = delete;
    PackagedServer& operator=(const PackagedServer&) = delete;

    /// Waits until it listens; not when it has ended.
    bool isUp()
    {
        for (int i = 0; i < 1000 && mProcess > 0; ++i) {
            SocketTcp probe;
            if (probe.createTcpClientSocket(Loopback, HttpPort)) {
                return probe.closeConnection() == 0;
            }
            if (waitpid(mProcess, nullptr, WNOHANG) == mProcess) {
                mProcess = -1;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return false;
    }

private:
    pid_t mProcess;
};

std::string contentOf(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool exists(const std::string& file)
{
    return access(file.c_str(), F_OK) == 0;
}

/// Downloads end at a pause of 50 ms, which a server may well make on a busy machine.
template <typename Attempt>
bool soon(Attempt succeeds)
{
    bool done = false;
    for (int i = 0; i < 50 && !done; ++i) {
        done = succeeds();
    }
    return done;
}

} // namespace

TEST(NetworkTest, tellsAddresses)
{
    Net network;
    EXPECT_EQ(network.getAddressString(0xC0A80001), "192.168.0.1");
    EXPECT_EQ(network.getAddressString(0xFFFFFFFF00000000 + 10), "0.0.0.10");
    EXPECT_EQ(network.getAddressFromName("10.0.0.255"), 0x0A0000FFu);
    EXPECT_EQ(network.getAddressFromName("localhost"), Loopback);
    testing::internal::CaptureStderr();
    EXPECT_EQ(network.getAddressFromName("no such name"), 0u);
    EXPECT_EQ(testing::internal::GetCapturedStderr().rfind("getaddrinfo: ", 0), 0u);
}

/// Against what the kernel tells through the older interface.
TEST(NetworkTest, listsInterfaces)
{
    const std::vector<NetworkAdapter> adapters = Net().getNetworkAdapters();
    ASSERT_FALSE(adapters.empty());
    std::vector<ifreq> requests(64);
    ifconf list{};
    list.ifc_len = static_cast<int>(requests.size() * sizeof(ifreq));
    list.ifc_req = requests.data();
    const Descriptor query(socket(AF_INET, SOCK_DGRAM, 0));
    ASSERT_EQ(ioctl(query.get(), SIOCGIFCONF, &list), 0);
    ASSERT_EQ(adapters.size(), static_cast<std::size_t>(list.ifc_len) / sizeof(ifreq));
    for (std::size_t i = 0; i < adapters.size(); ++i) {
        EXPECT_EQ(adapters[i].name, requests[i].ifr_name);
        const auto value = [&](unsigned long what) {
            ifreq request = requests[i];
            EXPECT_EQ(ioctl(query.get(), what, &request), 0);
            return ntohl(reinterpret_cast<const sockaddr_in&>(request.ifr_addr).sin_addr.s_addr);
        };
        EXPECT_EQ(adapters[i].address, value(SIOCGIFADDR));
        EXPECT_EQ(adapters[i].netmask, value(SIOCGIFNETMASK));
        const unsigned int broadcast = value(SIOCGIFBRDADDR);
        EXPECT_EQ(adapters[i].broadcast, broadcast == 0 ? 0x7FFFFFFFu : broadcast);
    }
}

TEST(NetworkTest, downloadsFiles)
{
    const std::string large(1'100'000, 'L');
    struct Case
    {
        const char* name;
        std::string answer;
        const char* url;
        std::string request; // its first line
        bool writes;
        std::string content;
    };
    const Case cases[] = {
        {"plain", "HTTP/1.1 200 OK\r\nA: b\r\n\r\nbody\n", "http://127.0.0.1/dir/file.bin", "/dir/file.bin", true,
         "body\n"},
        {"cut behind the last blank line", "X\r\n\r\none\r\n\r\ntwo", "127.0.0.1/a", "/a", true, "two"},
        {"a blank line at the very end does not count", "X\r\n\r\none\r\n\r\n", "http://127.0.0.1/a", "/a", true,
         "one\r\n\r\n"},
        {"the whole location is the path", "X\r\n\r\nbody", "ftp://127.0.0.1", "ftp://127.0.0.1", true, "body"},
        {"no blank line", "HTTP/1.1 200 OK\r\n", "127.0.0.1/a", "/a", false, ""},
        {"four bytes", "HTTP", "127.0.0.1/a", "/a", false, ""},
        {"an error page is a file", "HTTP/1.1 404 Not Found\r\n\r\nno", "127.0.0.1/a", "/a", true, "no"},
        {"cut at 1 MiB", "X\r\n\r\n" + large, "127.0.0.1/a", "/a", true, large.substr(0, 1'048'576 - 5)},
    };
    const Tavik::Support::TemporaryDirectory directory;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        HttpServer server(c.answer);
        if (!server.isListening()) {
            GTEST_SKIP() << "port 80 cannot be bound";
        }
        const std::string file = directory.path() + "/new/folder/" + c.name;
        bool result = false;
        EXPECT_EQ(server.download(c.url, file, result), "GET " + c.request +
                                                            " HTTP/1.1\r\nHost: 127.0.0.1\r\n"
                                                            "User-Agent: Tavik::Network.1.0\r\nAccept: */*\r\n\r\n");
        EXPECT_TRUE(result);
        EXPECT_EQ(exists(file), c.writes);
        EXPECT_EQ(contentOf(file), c.content);
    }
}

TEST(NetworkTest, saysWhenADownloadFails)
{
    const Tavik::Support::TemporaryDirectory directory;
    bool result = false;
    {
        HttpServer server("X\r\n\r\nbody");
        if (!server.isListening()) {
            GTEST_SKIP() << "port 80 cannot be bound";
        }
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        server.download("127.0.0.1/a", directory.path(), result); // a folder
        EXPECT_TRUE(result);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "could not open <" + directory.path() + ">\n");
        EXPECT_EQ(testing::internal::GetCapturedStderr().rfind("fopen: ", 0), 0u);
    }
    EXPECT_FALSE(Net().getFileHttp("127.0.0.1/a", directory.path() + "/b")) << "nobody listens";
    {
        HttpServer server("");
        server.download("127.0.0.1/a", directory.path() + "/b", result);
        EXPECT_TRUE(result) << "an answer without a byte is the end of the connection";
    }
    EXPECT_FALSE(Net().getFileHttp("127.0.0.1/a\r\nX: y", directory.path() + "/b"));
    EXPECT_FALSE(exists(directory.path() + "/b"));
}

/// From a server that closes the connection behind a file, and from one that keeps it open.
TEST(NetworkTest, downloadsFromAPackagedServer)
{
    const Tavik::Support::TemporaryDirectory folder;
    std::string bytes(300'000, '\0');
    std::generate(bytes.begin(), bytes.end(),
                  [random = std::mt19937(4)]() mutable { return static_cast<char>(random()); });
    ASSERT_EQ(mkdir((folder.path() + "/sub").c_str(), 0755), 0);
    std::ofstream(folder.path() + "/sub/bytes.bin", std::ios::binary) << bytes;
    std::ofstream(folder.path() + "/empty") << "";
    for (const char* protocol : {"HTTP/1.0", "HTTP/1.1"}) {
        SocketTcpServer probe;
        if (std::string(TAVIK_PYTHON).empty() || !probe.init(HttpPort)) {
            GTEST_SKIP() << "there is no python3, or port 80 cannot be bound";
        }
        probe.closeConnection();
        PackagedServer server(folder.path(), protocol);
        if (!server.isUp()) {
            GTEST_SKIP() << "this python3 has no server of " << protocol;
        }
        const Tavik::Support::TemporaryDirectory target;
        bool answered = false;
        const auto download = [&](const std::string& path) {
            const std::string file = target.path() + "/got/" + path;
            answered = Net().getFileHttp("http://127.0.0.1/" + path, file);
            return contentOf(file);
        };
        EXPECT_TRUE(soon([&] {
            const std::string got = download("sub/bytes.bin");
            EXPECT_EQ(bytes.compare(0, got.size(), got), 0) << "never anything but their begin";
            return got == bytes;
        })) << protocol;
        EXPECT_TRUE(soon([&] { return download("missing").find("404") != std::string::npos; })) << "an error page";
        EXPECT_TRUE(soon([&] { return download("empty").empty() && answered; }));
        EXPECT_FALSE(exists(target.path() + "/got/empty")) << "a file without a byte is none";
    }
}
