#include <tavik/xml/Utf8.h>

#include <cstdint>
#include <cstring>

namespace Tavik::XML {

namespace {

/// What a leading byte tells.
struct Sequence
{
    std::size_t length;
    char32_t bits;     // of the leading byte
    char32_t smallest; // that needs this length
};

Sequence sequenceOf(unsigned char lead)
{
    if ((lead & 0xE0) == 0xC0) {
        return {2, lead & 0x1Fu, 0x80};
    }
    if ((lead & 0xF0) == 0xE0) {
        return {3, lead & 0x0Fu, 0x800};
    }
    if ((lead & 0xF8) == 0xF0) {
        return {4, lead & 0x07u, 0x10000};
    }
    return {0, 0, 0};
}

bool isSurrogate(char32_t character)
{
    return character >= 0xD800 && character <= 0xDFFF;
}

/// Eight bytes at once, none of them above 127.
bool isAscii(const char* bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return (word & 0x8080808080808080) == 0;
}

} // namespace

char32_t decodeUtf8(std::string_view text, std::size_t& position)
{
    const std::size_t start = position++;
    const auto lead = static_cast<unsigned char>(text[start]);
    if (lead < 0x80) {
        return lead;
    }
    const Sequence sequence = sequenceOf(lead);
    if (sequence.length == 0 || text.size() - start < sequence.length) {
        return InvalidCharacter;
    }
    char32_t character = sequence.bits;
    for (std::size_t i = start + 1; i < start + sequence.length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) != 0x80) {
            return InvalidCharacter;
        }
        character = character << 6 | (byte & 0x3Fu);
    }
    if (character < sequence.smallest || character > 0x10FFFF || isSurrogate(character)) {
        return InvalidCharacter;
    }
    position = start + sequence.length;
    return character;
}

bool isUtf8(std::string_view text)
{
    std::size_t position = 0;
    while (position < text.size()) {
        if (text.size() - position >= 8 && isAscii(text.data() + position)) {
            position += 8;
        } else if (decodeUtf8(text, position) == InvalidCharacter) {
            return false;
        }
    }
    return true;
}

} // namespace Tavik::XML
