#include <moving_map/Latin1.h>

#include <algorithm>
#include <cstddef>

namespace MovingMap {

namespace {

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80;
}

/// Bytes of the character that begins with this one; 1 where none of several bytes does.
std::size_t lengthAfter(unsigned char first)
{
    return first < 0xC2 || first > 0xF4 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

} // namespace

std::string toLatin1(const std::string& text)
{
    std::string latin1;
    latin1.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const auto first = static_cast<unsigned char>(text[i]);
        std::size_t length = lengthAfter(first);
        const auto begin = text.begin() + static_cast<std::ptrdiff_t>(i);
        const auto room = text.size() - i;
        if (length > room || !std::all_of(begin + 1, begin + static_cast<std::ptrdiff_t>(length), isContinuation)) {
            length = 1;
        }
        if (length == 1) {
            latin1 += text[i];
        } else if (first <= 0xC3) {
            latin1 += static_cast<char>(((first & 0x03u) << 6) | (static_cast<unsigned char>(text[i + 1]) & 0x3Fu));
        } else {
            latin1 += '?';
        }
        i += length;
    }
    return latin1;
}

} // namespace MovingMap
