#include <tavik/network/HttpText.h>

#include <cstring>

namespace Tavik::Network {

HttpLocation splitUrl(const std::string& url)
{
    const std::size_t slashes = url.find("//");
    const std::string rest = slashes == std::string::npos ? url : url.substr(slashes + 2);
    const std::size_t slash = rest.find('/');
    if (slash == std::string::npos) {
        return {rest, url};
    }
    return {rest.substr(0, slash), rest.substr(slash)};
}

std::string httpRequest(const HttpLocation& location)
{
    return "GET " + location.path + " HTTP/1.1\r\n" + "Host: " + location.host + "\r\n" +
           "User-Agent: Tavik::Network.1.0\r\n" + "Accept: */*\r\n\r\n";
}

std::size_t contentBegin(std::string_view answer)
{
    constexpr std::string_view BlankLine = "\r\n\r\n";
    if (answer.size() < BlankLine.size() + 1) {
        return std::string_view::npos;
    }
    // The last byte is never part of the blank line. From line end to line end, many bytes at a time; rfind() compares
    // texts at every byte, which takes longer than the download.
    std::size_t end = answer.size() - 1;
    while (const void* lineEnd = memrchr(answer.data(), '\n', end)) {
        end = static_cast<std::size_t>(static_cast<const char*>(lineEnd) - answer.data());
        const std::string_view upTo = answer.substr(0, end + 1);
        if (upTo.size() >= BlankLine.size() && upTo.substr(upTo.size() - BlankLine.size()) == BlankLine) {
            return upTo.size();
        }
    }
    return std::string_view::npos;
}

} // namespace Tavik::Network
