#include <tavik/network/HttpText.h>

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
    // The last byte is never part of the blank line.
    const std::size_t line = answer.substr(0, answer.size() - 1).rfind(BlankLine);
    return line == std::string_view::npos ? line : line + BlankLine.size();
}

} // namespace Tavik::Network
