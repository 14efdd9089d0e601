#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Feeds {

/// Makes lines of a stream that comes in pieces, however it is cut.
///
///     LineSplitter splitter;
///     splitter.add(bytes, [&](std::string_view line) { ... });
///
/// A line ends with CR, LF or both; empty ones are left out. One of more than 512 bytes is dropped up to its end, so
/// that memory stays bounded whatever a sender does.
class LineSplitter
{
public:
    static constexpr std::size_t LongestLine = 512;

    using Receiver = std::function<void(std::string_view line)>;

    LineSplitter() = default;

    /// @param first  a character that begins a line wherever it stands, so that the loss of an end costs one line only
    explicit LineSplitter(char first) : mEnds{'\r', '\n', first}, mFirst(first) {}

    /// Calls the receiver for each line that ends in these bytes, without its end. The text is valid during the call.
    void add(std::string_view bytes, const Receiver& receiver);

    /// The begin of the line whose end has not come yet; empty where it is too long.
    std::string_view begun() const { return mBegin; }

    /// Forgets the begin of a line, as after the loss of a connection.
    void clear();

private:
    void append(std::string_view part);

    std::string mEnds = "\r\n";
    std::optional<char> mFirst;
    std::string mBegin;
    bool mIsTooLong = false;
};

} // namespace Feeds
