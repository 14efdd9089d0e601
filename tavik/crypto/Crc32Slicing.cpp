#include <tavik/crypto/Crc32Kernels.h>
#include <tavik/crypto/LittleEndian.h>

#include <array>

namespace Tavik::Crypto {

namespace {

using SlicingTables = std::array<std::array<std::uint32_t, 256>, Crc32Granule>;

/// Table k holds the remainder of each byte with k zero bytes behind it.
constexpr SlicingTables makeSlicingTables()
{
    SlicingTables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t remainder = byte;
        for (auto& table : tables) {
            for (int bit = 0; bit < 8; ++bit) {
                remainder = remainder >> 1 ^ (remainder & 1 ? ReflectedCrc32Polynomial : 0);
            }
            table[byte] = remainder;
        }
    }
    return tables;
}

constexpr SlicingTables Tables = makeSlicingTables();

/// Remainder of the four bytes of a word with `Behind` bytes of the granule behind them.
template <std::size_t Behind>
inline std::uint32_t remainderOf(std::uint32_t word)
{
    return Tables[Behind + 3][word & 0xFF] ^ Tables[Behind + 2][word >> 8 & 0xFF] ^
           Tables[Behind + 1][word >> 16 & 0xFF] ^ Tables[Behind][word >> 24];
}

} // namespace

std::uint32_t crc32BySlicing(std::uint32_t crc, const unsigned char* data, std::size_t length)
{
    for (const unsigned char* end = data + length; data != end; data += Crc32Granule) {
        // The running value, which the next round waits for, comes last.
        const std::uint32_t others = remainderOf<8>(loadLittleEndian(data + 4)) ^
                                     remainderOf<4>(loadLittleEndian(data + 8)) ^
                                     remainderOf<0>(loadLittleEndian(data + 12));
        crc = others ^ remainderOf<12>(loadLittleEndian(data) ^ crc);
    }
    return crc;
}

} // namespace Tavik::Crypto
