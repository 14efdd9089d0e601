#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Tavik::Network {

/// Where a file lies.
struct HttpLocation
{
    std::string host;
    std::string path;
};

/// Takes a location apart.
HttpLocation splitUrl(const std::string& url);

/// What is sent to ask for a file.
std::string httpRequest(const HttpLocation& location);

/// Where the content of an answer begins: behind its last blank line, which content that holds one is cut at.
/// @return std::string_view::npos where there is no blank line before the last byte
std::size_t contentBegin(std::string_view answer);

} // namespace Tavik::Network
