// Download of a file of 512 KiB from a server on this host to a file that is then put in its place, in processor time
// of the downloading thread. The server needs port 80, which getFileHttp has for every address; where others may not
// open it, the rows say so.

#include <support/TemporaryDirectory.h>
#include <tavik/network/Network.h>

#include <benchmark/benchmark.h>
#ifdef TAVIK_PEER_CURL
#include <curl/curl.h>
#endif

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>

namespace {

constexpr std::uint16_t HttpPort = 80;
constexpr std::size_t ContentBytes = std::size_t{512} * 1024;
constexpr const char* Url = "http://127.0.0.1/chart.bin";

sockaddr_in serverAddress()
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(HttpPort);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

void sendAll(int fd, const char* data, std::size_t length)
{
    while (length > 0) {
        const ssize_t sent = send(fd, data, length, MSG_NOSIGNAL);
        if (sent <= 0) {
            return;
        }
        data += sent;
        length -= static_cast<std::size_t>(sent);
    }
}

/// Answers every request with the same file and closes.
class Server
{
public:
    Server() : mListener(socket(AF_INET, SOCK_STREAM, 0))
    {
        const int on = 1;
        setsockopt(mListener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        const sockaddr_in address = serverAddress();
        isOpen = bind(mListener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                 listen(mListener, 8) == 0;
        if (isOpen) {
            mThread = std::thread([this] { serve(); });
        }
    }

    ~Server()
    {
        shutdown(mListener, SHUT_RDWR); // ends accept()
        if (mThread.joinable()) {
            mThread.join();
        }
        close(mListener);
    }

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    bool isOpen = false;

private:
    void serve() const
    {
        const std::string answer = "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(ContentBytes) +
                                   "\r\nConnection: close\r\n\r\n" + std::string(ContentBytes, 'x');
        for (int fd = accept(mListener, nullptr, nullptr); fd >= 0; fd = accept(mListener, nullptr, nullptr)) {
            std::string request;
            std::array<char, 1024> piece;
            while (request.find("\r\n\r\n") == std::string::npos) {
                const ssize_t count = recv(fd, piece.data(), piece.size(), 0);
                if (count <= 0) {
                    break;
                }
                request.append(piece.data(), static_cast<std::size_t>(count));
            }
            sendAll(fd, answer.data(), answer.size());
            close(fd);
        }
    }

    int mListener;
    std::thread mThread;
};

/// @param download  writes the file of the given name, and tells whether it could
template <typename Download>
void measure(benchmark::State& state, Download download)
{
    const Server server;
    if (!server.isOpen) {
        state.SkipWithError("port 80 cannot be opened");
        return;
    }
    const Tavik::Support::TemporaryDirectory directory;
    const std::string file = directory.path() + "/chart.bin";
    for ([[maybe_unused]] auto _ : state) {
        if (!download(file)) {
            state.SkipWithError("the download failed");
            break;
        }
    }
    std::error_code error;
    if (std::filesystem::file_size(file, error) != ContentBytes) {
        state.SkipWithError("the file is not whole");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(ContentBytes));
}

void downloadOurs(benchmark::State& state)
{
    Tavik::Network::Network network;
    measure(state, [&](const std::string& file) { return network.getFileHttp(Url, file); });
}

/// Flushes a written file, gives it its name and flushes its folder, so that it lasts.
bool putInPlace(int fd, const std::string& beside, const std::string& file)
{
    const bool isGood = fsync(fd) == 0 && std::rename(beside.c_str(), file.c_str()) == 0;
    const int folder = open(file.substr(0, file.rfind('/')).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    fsync(folder);
    close(folder);
    return isGood;
}

/// Receives into one array, writes what stands behind the header, and renames.
bool downloadBare(std::string& buffer, const std::string& file)
{
    const int fd = socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in address = serverAddress();
    if (connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(fd);
        return false;
    }
    const std::string request = "GET /chart.bin HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n\r\n";
    sendAll(fd, request.data(), request.size());
    std::size_t length = 0;
    for (ssize_t count = 1; count > 0; length += static_cast<std::size_t>(count > 0 ? count : 0)) {
        count = recv(fd, &buffer[length], buffer.size() - length, 0);
    }
    close(fd);
    const std::size_t header = buffer.find("\r\n\r\n");
    const std::string beside = file + ".new";
    const int out = open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    const std::size_t contentLength = length - header - 4;
    const bool isGood = write(out, &buffer[header + 4], contentLength) == static_cast<ssize_t>(contentLength) &&
                        putInPlace(out, beside, file);
    close(out);
    return isGood;
}

void downloadLimit(benchmark::State& state)
{
    std::string buffer(1 << 20, '\0');
    measure(state, [&](const std::string& file) { return downloadBare(buffer, file); });
}

#ifdef TAVIK_PEER_CURL
/// One handle for all downloads, as its guide advises.
void downloadCurl(benchmark::State& state)
{
    CURL* curl = curl_easy_init();
    curl_easy_setopt(curl, CURLOPT_URL, Url);
    curl_easy_setopt(curl, CURLOPT_PROXY, "");
    measure(state, [&](const std::string& file) {
        const std::string beside = file + ".new";
        std::FILE* out = std::fopen(beside.c_str(), "wb");
        curl_easy_setopt(curl, CURLOPT_WRITEDATA, out);
        const bool isGood =
            curl_easy_perform(curl) == CURLE_OK && std::fflush(out) == 0 && putInPlace(fileno(out), beside, file);
        return std::fclose(out) == 0 && isGood;
    });
    curl_easy_cleanup(curl);
}
BENCHMARK(downloadCurl)->Name("http_download/peer_curl")->Unit(benchmark::kMicrosecond);
#endif

BENCHMARK(downloadOurs)->Name("http_download/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(downloadLimit)->Name("http_download/limit")->Unit(benchmark::kMicrosecond);

} // namespace
