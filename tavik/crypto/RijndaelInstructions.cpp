#include <tavik/crypto/RijndaelKernel.h>

// Rijndael by the processor's AES instructions, which do a whole round of a 128-bit block. A larger block lies in two
// registers; its bytes are shuffled between them before each round, so that the shift of rows within the registers,
// which is part of the instruction, brings them where ShiftRows of the large block wants them. MixColumns and SubBytes
// do not care in which register a column lies.
//
// No memory address and no branch depends on key or data, so that time does not either.

#ifdef __x86_64__

#include <immintrin.h>

#define TAVIK_AES_TARGET [[gnu::target("aes,ssse3")]]

namespace Tavik::Crypto {

namespace {

template <std::size_t Words>
constexpr std::size_t Registers = Words == 4 ? 1 : 2;

/// A block of 4, 6 or 8 words. Of a block of 6, the upper half of the second register is of no meaning.
template <std::size_t Words>
struct Block
{
    __m128i parts[Registers<Words>];
};

/// Blocks that are worked on at the same time: eight registers, which hides the latency of the instructions.
template <std::size_t Words>
constexpr std::size_t InFlight = 8 / Registers<Words>;

/// For each register to be filled and each to be taken from: the index for PSHUFB, whose top bit makes a zero.
template <std::size_t Words, bool Forward>
struct Shuffles
{
    unsigned char index[2][2][16];
};

template <std::size_t Words, bool Forward>
constexpr Shuffles<Words, Forward> makeShuffles()
{
    Shuffles<Words, Forward> shuffles{};
    for (std::size_t byte = 0; byte < sizeof shuffles.index; ++byte) {
        shuffles.index[byte / 32][byte / 16 % 2][byte % 16] = 0x80;
    }
    for (std::size_t column = 0; column < Words; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            const std::size_t source = shiftedColumn(Words, Forward, row, column);
            const std::size_t before =
                shiftedColumn(4, Forward, row, column % 4); // where the instruction takes the byte from
            shuffles.index[column / 4][source / 4][4 * before + row] =
                static_cast<unsigned char>(4 * (source % 4) + row);
        }
    }
    return shuffles;
}

template <std::size_t Words, bool Forward>
alignas(16) constexpr Shuffles<Words, Forward> AllShuffles = makeShuffles<Words, Forward>();

/// @param bytes  of a block or of a round key
template <std::size_t Words>
TAVIK_AES_TARGET inline Block<Words> load(const void* bytes)
{
    const auto* parts = static_cast<const __m128i*>(bytes);
    Block<Words> block;
    block.parts[0] = _mm_loadu_si128(parts);
    if constexpr (Words == 6) {
        block.parts[1] = _mm_loadl_epi64(parts + 1);
    } else if constexpr (Words == 8) {
        block.parts[1] = _mm_loadu_si128(parts + 1);
    }
    return block;
}

template <std::size_t Words>
TAVIK_AES_TARGET inline void store(const Block<Words>& block, unsigned char* bytes)
{
    auto* parts = reinterpret_cast<__m128i*>(bytes);
    _mm_storeu_si128(parts, block.parts[0]);
    if constexpr (Words == 6) {
        _mm_storel_epi64(parts + 1, block.parts[1]);
    } else if constexpr (Words == 8) {
        _mm_storeu_si128(parts + 1, block.parts[1]);
    }
}

template <std::size_t Words>
TAVIK_AES_TARGET inline Block<Words> sum(Block<Words> block, const Block<Words>& addend)
{
    for (std::size_t i = 0; i < Registers<Words>; ++i) {
        block.parts[i] = _mm_xor_si128(block.parts[i], addend.parts[i]);
    }
    return block;
}

template <std::size_t Words, bool Forward>
TAVIK_AES_TARGET inline Block<Words> shuffled(const Block<Words>& block)
{
    if constexpr (Words == 4) {
        return block;
    } else {
        const auto* masks = reinterpret_cast<const __m128i*>(AllShuffles<Words, Forward>.index);
        Block<Words> result;
        for (std::size_t i = 0; i < 2; ++i) {
            result.parts[i] = _mm_or_si128(_mm_shuffle_epi8(block.parts[0], _mm_load_si128(masks + 2 * i)),
                                           _mm_shuffle_epi8(block.parts[1], _mm_load_si128(masks + 2 * i + 1)));
        }
        return result;
    }
}

template <std::size_t Words, bool Forward>
TAVIK_AES_TARGET inline Block<Words> roundOf(const Block<Words>& block, const Block<Words>& key)
{
    Block<Words> next = shuffled<Words, Forward>(block);
    for (std::size_t i = 0; i < Registers<Words>; ++i) {
        next.parts[i] =
            Forward ? _mm_aesenc_si128(next.parts[i], key.parts[i]) : _mm_aesdec_si128(next.parts[i], key.parts[i]);
    }
    return next;
}

template <std::size_t Words, bool Forward>
TAVIK_AES_TARGET inline Block<Words> lastRoundOf(const Block<Words>& block, const Block<Words>& key)
{
    Block<Words> next = shuffled<Words, Forward>(block);
    for (std::size_t i = 0; i < Registers<Words>; ++i) {
        next.parts[i] = Forward ? _mm_aesenclast_si128(next.parts[i], key.parts[i])
                                : _mm_aesdeclast_si128(next.parts[i], key.parts[i]);
    }
    return next;
}

/// All rounds; the first round key has been added already.
template <std::size_t Words, bool Forward, std::size_t Count>
TAVIK_AES_TARGET inline void cipher(Block<Words> (&blocks)[Count], const RoundKeys& keys)
{
    const std::uint32_t* word = keys.words + Words;
    const std::uint32_t* const last = keys.words + keys.rounds * Words;
    for (; word != last; word += Words) {
        const Block<Words> key = load<Words>(word);
        for (std::size_t i = 0; i < Count; ++i) {
            blocks[i] = roundOf<Words, Forward>(blocks[i], key);
        }
    }
    const Block<Words> key = load<Words>(last);
    for (std::size_t i = 0; i < Count; ++i) {
        blocks[i] = lastRoundOf<Words, Forward>(blocks[i], key);
    }
}

/// As many blocks as `Count` says, each by itself.
template <std::size_t Words, bool Forward, std::size_t Count>
TAVIK_AES_TARGET inline void independentBlocks(Block<Words> (&blocks)[Count], const RoundKeys& keys,
                                               const unsigned char* in)
{
    const Block<Words> key = load<Words>(keys.words);
    for (std::size_t i = 0; i < Count; ++i) {
        blocks[i] = sum<Words>(load<Words>(in + i * 4 * Words), key);
    }
    cipher<Words, Forward>(blocks, keys);
}

template <std::size_t Words, bool Forward, std::size_t Count>
TAVIK_AES_TARGET inline void ecbStep(const RoundKeys& keys, const unsigned char* in, unsigned char* out)
{
    Block<Words> blocks[Count];
    independentBlocks<Words, Forward>(blocks, keys, in);
    for (std::size_t i = 0; i < Count; ++i) {
        store<Words>(blocks[i], out + i * 4 * Words);
    }
}

template <std::size_t Words, bool Forward>
TAVIK_AES_TARGET void ecb(const RoundKeys& keys, const unsigned char* in, unsigned char* out, std::size_t blockCount)
{
    constexpr std::size_t Step = InFlight<Words>;
    for (; blockCount >= Step; blockCount -= Step, in += Step * 4 * Words, out += Step * 4 * Words) {
        ecbStep<Words, Forward, Step>(keys, in, out);
    }
    for (; blockCount > 0; --blockCount, in += 4 * Words, out += 4 * Words) {
        ecbStep<Words, Forward, 1>(keys, in, out);
    }
}

/// Each block waits for the one before it, so that only the addition of the first key can be done ahead.
template <std::size_t Words>
TAVIK_AES_TARGET void encryptCbc(const RoundKeys& keys, const unsigned char* in, unsigned char* out,
                                 std::size_t blockCount)
{
    const Block<Words> key = load<Words>(keys.words);
    Block<Words> block[1] = {};
    for (; blockCount > 0; --blockCount, in += 4 * Words, out += 4 * Words) {
        block[0] = sum<Words>(sum<Words>(load<Words>(in), key), block[0]);
        cipher<Words, true>(block, keys);
        store<Words>(block[0], out);
    }
}

/// @param previous  the encrypted block before these; the last of these when it returns
template <std::size_t Words, std::size_t Count>
TAVIK_AES_TARGET inline void decryptCbcStep(const RoundKeys& keys, const unsigned char* in, unsigned char* out,
                                            Block<Words>& previous)
{
    Block<Words> blocks[Count];
    independentBlocks<Words, false>(blocks, keys, in);
    const Block<Words> last = load<Words>(in + (Count - 1) * 4 * Words);
    // Backwards, because storing a block overwrites the encrypted one, which the next needs, when `out` is `in`.
    for (std::size_t i = Count - 1; i > 0; --i) {
        store<Words>(sum<Words>(blocks[i], load<Words>(in + (i - 1) * 4 * Words)), out + i * 4 * Words);
    }
    store<Words>(sum<Words>(blocks[0], previous), out);
    previous = last;
}

template <std::size_t Words>
TAVIK_AES_TARGET void decryptCbc(const RoundKeys& keys, const unsigned char* in, unsigned char* out,
                                 std::size_t blockCount)
{
    constexpr std::size_t Step = InFlight<Words>;
    Block<Words> previous = {};
    for (; blockCount >= Step; blockCount -= Step, in += Step * 4 * Words, out += Step * 4 * Words) {
        decryptCbcStep<Words, Step>(keys, in, out, previous);
    }
    for (; blockCount > 0; --blockCount, in += 4 * Words, out += 4 * Words) {
        decryptCbcStep<Words, 1>(keys, in, out, previous);
    }
}

/// The last round without key; four equal columns stay in place when their rows are shifted.
TAVIK_AES_TARGET std::uint32_t substitute(std::uint32_t word)
{
    const __m128i columns = _mm_set1_epi32(static_cast<int>(word));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_aesenclast_si128(columns, _mm_setzero_si128())));
}

TAVIK_AES_TARGET std::uint32_t inverseMixColumn(std::uint32_t column)
{
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_aesimc_si128(_mm_cvtsi32_si128(static_cast<int>(column)))));
}

constexpr RijndaelKernel InstructionKernel = {
    substitute,
    inverseMixColumn,
    ofAnyBlock<ecb<4, true>, ecb<6, true>, ecb<8, true>>,
    ofAnyBlock<encryptCbc<4>, encryptCbc<6>, encryptCbc<8>>,
    ofAnyBlock<ecb<4, false>, ecb<6, false>, ecb<8, false>>,
    ofAnyBlock<decryptCbc<4>, decryptCbc<6>, decryptCbc<8>>,
};

} // namespace

const RijndaelKernel* instructionRijndaelKernel()
{
    return __builtin_cpu_supports("aes") && __builtin_cpu_supports("ssse3") ? &InstructionKernel : nullptr;
}

} // namespace Tavik::Crypto

#else

namespace Tavik::Crypto {

const RijndaelKernel* instructionRijndaelKernel()
{
    return nullptr;
}

} // namespace Tavik::Crypto

#endif
