#pragma once

#include <cstdint>

namespace Tavik::Crypto {

// Byte by byte, so that any address and either byte order will do; compilers make one move of it.

inline std::uint32_t loadLittleEndian(const unsigned char* bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

inline void storeLittleEndian(std::uint32_t word, unsigned char* bytes)
{
    bytes[0] = static_cast<unsigned char>(word);
    bytes[1] = static_cast<unsigned char>(word >> 8);
    bytes[2] = static_cast<unsigned char>(word >> 16);
    bytes[3] = static_cast<unsigned char>(word >> 24);
}

} // namespace Tavik::Crypto
