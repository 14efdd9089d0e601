#pragma once

#include <cstddef>
#include <string_view>

/// UTF-8 as RFC 3629 has it: no overlong forms, no surrogates, nothing above U+10FFFF.
namespace Tavik::XML {

/// What decodeUtf8 answers for bytes that are no character.
constexpr char32_t InvalidCharacter = 0xFFFFFFFF;

/// The character at a position before the end; moves the position behind it, by one byte where it is invalid.
char32_t decodeUtf8(std::string_view text, std::size_t& position);

/// Whether the text is UTF-8 throughout.
bool isUtf8(std::string_view text);

} // namespace Tavik::XML
