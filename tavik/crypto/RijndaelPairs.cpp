#include <tavik/crypto/RijndaelKernel.h>

// The AES instructions on two blocks of 128 bits in one register, for the modes whose blocks do not wait for each
// other. Everything else is left to the instructions on single blocks, on which this is built.

#ifdef __x86_64__

#include <cpuid.h>
#include <immintrin.h>

#define TAVIK_PAIRS_TARGET [[gnu::target("avx2,vaes")]]

namespace Tavik::Crypto {

namespace {

constexpr std::size_t BlockBytes = 16;
constexpr std::size_t Pairs = 8; // in flight, which hides the latency of the instructions
constexpr std::size_t StepBlocks = 2 * Pairs;
constexpr std::size_t StepBytes = StepBlocks * BlockBytes;

using PairsInFlight = __m256i[Pairs];

const RijndaelKernel& singly()
{
    return *instructionRijndaelKernel();
}

TAVIK_PAIRS_TARGET inline __m256i load(const unsigned char* bytes)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes));
}

TAVIK_PAIRS_TARGET inline void store(__m256i pair, unsigned char* bytes)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(bytes), pair);
}

/// The round key once for each block of a pair.
TAVIK_PAIRS_TARGET inline __m256i keyOf(const RoundKeys& keys, std::size_t round)
{
    return _mm256_broadcastsi128_si256(
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(keys.words + round * keys.blockWords)));
}

/// As many blocks as are in flight, each by itself.
template <bool Forward>
TAVIK_PAIRS_TARGET inline void cipher(PairsInFlight& pairs, const RoundKeys& keys, const unsigned char* in)
{
    const __m256i first = keyOf(keys, 0);
    for (std::size_t i = 0; i < Pairs; ++i) {
        pairs[i] = _mm256_xor_si256(load(in + 2 * BlockBytes * i), first);
    }
    for (std::size_t round = 1; round < keys.rounds; ++round) {
        const __m256i key = keyOf(keys, round);
        for (__m256i& pair : pairs) {
            pair = Forward ? _mm256_aesenc_epi128(pair, key) : _mm256_aesdec_epi128(pair, key);
        }
    }
    const __m256i last = keyOf(keys, keys.rounds);
    for (__m256i& pair : pairs) {
        pair = Forward ? _mm256_aesenclast_epi128(pair, last) : _mm256_aesdeclast_epi128(pair, last);
    }
}

template <bool Forward>
TAVIK_PAIRS_TARGET void ecb(const RoundKeys& keys, const unsigned char* in, unsigned char* out, std::size_t blockCount)
{
    for (; blockCount >= StepBlocks; blockCount -= StepBlocks, in += StepBytes, out += StepBytes) {
        PairsInFlight pairs;
        cipher<Forward>(pairs, keys, in);
        for (std::size_t i = 0; i < Pairs; ++i) {
            store(pairs[i], out + 2 * BlockBytes * i);
        }
    }
    (Forward ? singly().encryptEcb : singly().decryptEcb)(keys, in, out, blockCount);
}

TAVIK_PAIRS_TARGET void decryptCbc(const RoundKeys& keys, const unsigned char* in, unsigned char* out,
                                   std::size_t blockCount)
{
    __m128i previous = _mm_setzero_si128();
    for (; blockCount >= StepBlocks; blockCount -= StepBlocks, in += StepBytes, out += StepBytes) {
        PairsInFlight pairs;
        cipher<false>(pairs, keys, in);
        const __m128i last = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + StepBytes - BlockBytes));
        // Backwards, because storing a pair overwrites encrypted blocks, which the next needs, when `out` is `in`.
        for (std::size_t i = Pairs - 1; i > 0; --i) {
            const __m256i before = load(in + 2 * BlockBytes * i - BlockBytes);
            store(_mm256_xor_si256(pairs[i], before), out + 2 * BlockBytes * i);
        }
        const __m256i before = _mm256_inserti128_si256(_mm256_castsi128_si256(previous),
                                                       _mm_loadu_si128(reinterpret_cast<const __m128i*>(in)), 1);
        store(_mm256_xor_si256(pairs[0], before), out);
        previous = last;
    }
    singly().decryptCbc(keys, in, out, blockCount);
    if (blockCount > 0) { // its first block knew nothing of those before
        auto* first = reinterpret_cast<__m128i*>(out);
        _mm_storeu_si128(first, _mm_xor_si128(_mm_loadu_si128(first), previous));
    }
}

/// VAES in registers of 256 bits. Asked of the processor itself, since not every compiler knows how to ask for it.
bool isPresent()
{
    unsigned int eax = 0;
    unsigned int ebx = 0;
    unsigned int ecx = 0;
    unsigned int edx = 0;
    constexpr unsigned int Vaes = 1U << 9;
    return instructionRijndaelKernel() != nullptr && __builtin_cpu_supports("avx2") &&
           __get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) != 0 && (ecx & Vaes) != 0;
}

} // namespace

const RijndaelKernel* pairwiseRijndaelKernel()
{
    static const bool present = isPresent();
    if (!present) {
        return nullptr;
    }
    static const RijndaelKernel kernel = {
        singly().substitute,
        singly().inverseMixColumn,
        [](const RoundKeys& keys, const unsigned char* in, unsigned char* out, std::size_t blockCount) {
            (keys.blockWords == 4 ? ecb<true> : singly().encryptEcb)(keys, in, out, blockCount);
        },
        singly().encryptCbc,
        [](const RoundKeys& keys, const unsigned char* in, unsigned char* out, std::size_t blockCount) {
            (keys.blockWords == 4 ? ecb<false> : singly().decryptEcb)(keys, in, out, blockCount);
        },
        [](const RoundKeys& keys, const unsigned char* in, unsigned char* out, std::size_t blockCount) {
            (keys.blockWords == 4 ? decryptCbc : singly().decryptCbc)(keys, in, out, blockCount);
        },
    };
    return &kernel;
}

} // namespace Tavik::Crypto

#else

namespace Tavik::Crypto {

const RijndaelKernel* pairwiseRijndaelKernel()
{
    return nullptr;
}

} // namespace Tavik::Crypto

#endif
