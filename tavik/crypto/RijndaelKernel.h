#pragma once

#include <cstddef>
#include <cstdint>

namespace Tavik::Crypto {

/// The round keys of one direction in the order in which they are used; `rounds + 1` of them, `blockWords` words each.
///
/// A word is a column of the state, its top byte in the low 8 bits. For decryption the keys of all rounds but the first
/// and the last went through InvMixColumns (the equivalent inverse cipher of FIPS-197, 5.3.5).
struct RoundKeys
{
    const std::uint32_t* words;
    std::size_t blockWords; // 4, 6 or 8
    std::size_t rounds;
};

/// One way to compute Rijndael. All ways give the same results from the same round keys. The output of the modes may be
/// the input.
struct RijndaelKernel
{
    using Mode = void (*)(const RoundKeys& keys, const unsigned char* in, unsigned char* out, std::size_t blockCount);

    /// The S-box on each byte of a word.
    std::uint32_t (*substitute)(std::uint32_t word);
    /// InvMixColumns on one column.
    std::uint32_t (*inverseMixColumn)(std::uint32_t column);

    Mode encryptEcb;
    Mode encryptCbc;
    Mode decryptEcb;
    Mode decryptCbc;
};

/// By tables, on every processor.
const RijndaelKernel& tableRijndaelKernel();

/// By the AES instructions, on one block in a register (AES-NI) or two (VAES with AVX2).
/// @return null where the processor lacks them
const RijndaelKernel* instructionRijndaelKernel();
const RijndaelKernel* pairwiseRijndaelKernel();

/// How many columns to the right the byte comes from that ShiftRows puts into a row.
constexpr std::size_t rowShift(std::size_t blockWords, std::size_t row)
{
    return blockWords == 8 && row >= 2 ? row + 1 : row;
}

/// Column from which ShiftRows takes the byte in a row and column, or InvShiftRows where not `forward`.
constexpr std::size_t shiftedColumn(std::size_t blockWords, bool forward, std::size_t row, std::size_t column)
{
    const std::size_t shift = rowShift(blockWords, row);
    return (column + (forward ? shift : blockWords - shift)) % blockWords;
}

/// The mode for the block length of the keys.
template <RijndaelKernel::Mode Of4, RijndaelKernel::Mode Of6, RijndaelKernel::Mode Of8>
void ofAnyBlock(const RoundKeys& keys, const unsigned char* in, unsigned char* out, std::size_t blockCount)
{
    switch (keys.blockWords) {
    case 4:
        return Of4(keys, in, out, blockCount);
    case 6:
        return Of6(keys, in, out, blockCount);
    default:
        return Of8(keys, in, out, blockCount);
    }
}

} // namespace Tavik::Crypto
