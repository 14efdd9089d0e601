#include <tavik/crypto/Crc32Kernels.h>

// Folding by carry-less multiplication: a piece of the message, 16 bytes taken as a polynomial over GF(2), is replaced
// by a congruent one D bits further on and added to what stands there, until 16 bytes are left.
//
// Reflected, bit i of a piece is the coefficient of x^(127 - i): its low half is worth x^64 as much as its high half.
// The product of two reflected halves comes out as if multiplied by x once more, hence the -1 in the factors.

#ifdef __x86_64__

#include <immintrin.h>

namespace Tavik::Crypto {

namespace {

constexpr std::size_t Lanes = 8; // enough that the multiplier never waits for a sum
constexpr std::size_t Stride = Lanes * Crc32Granule;

/// x^exponent modulo the polynomial, as a reflected half.
constexpr long long powerOfX(std::size_t exponent)
{
    std::uint32_t power = 0x80000000; // x^0
    for (std::size_t i = 0; i < exponent; ++i) {
        power = power >> 1 ^ (power & 1 ? ReflectedCrc32Polynomial : 0);
    }
    const std::uint64_t half = static_cast<std::uint64_t>(power) << 32;
    return static_cast<long long>(half);
}

/// What carries the halves of a piece over a distance of this many bytes.
template <std::size_t Distance>
struct FoldFactors
{
    static constexpr long long Low = powerOfX(Distance * 8 + 64 - 1);
    static constexpr long long High = powerOfX(Distance * 8 - 1);
};

[[gnu::target("pclmul")]] inline __m128i load(const unsigned char* data)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(data));
}

[[gnu::target("pclmul")]] inline __m128i fold(__m128i piece, __m128i factors, __m128i onto)
{
    const __m128i low = _mm_clmulepi64_si128(piece, factors, 0x00);
    const __m128i high = _mm_clmulepi64_si128(piece, factors, 0x11);
    return _mm_xor_si128(_mm_xor_si128(low, onto), high);
}

/// Folds eight pieces over each eight that follow, as long as there are so many; returns where it stopped.
[[gnu::target("pclmul")]] const unsigned char* foldLanes(__m128i (&lanes)[Lanes], const unsigned char* data,
                                                         const unsigned char* end)
{
    const __m128i factors = _mm_set_epi64x(FoldFactors<Stride>::High, FoldFactors<Stride>::Low);
    for (; static_cast<std::size_t>(end - data) >= Stride; data += Stride) {
        for (std::size_t i = 0; i < Lanes; ++i) {
            lanes[i] = fold(lanes[i], factors, load(data + i * Crc32Granule));
        }
    }
    return data;
}

/// The same with two pieces in a register, for processors that multiply two at once.
[[gnu::target("avx2,vpclmulqdq")]] const unsigned char*
foldLanesInPairs(__m128i (&lanes)[Lanes], const unsigned char* data, const unsigned char* end)
{
    const __m256i factors = _mm256_set_epi64x(FoldFactors<Stride>::High, FoldFactors<Stride>::Low,
                                              FoldFactors<Stride>::High, FoldFactors<Stride>::Low);
    __m256i pairs[Lanes / 2];
    for (std::size_t i = 0; i < Lanes / 2; ++i) {
        pairs[i] = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(lanes + 2 * i));
    }
    for (; static_cast<std::size_t>(end - data) >= Stride; data += Stride) {
        for (std::size_t i = 0; i < Lanes / 2; ++i) {
            const __m256i next = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(data + 2 * i * Crc32Granule));
            const __m256i low = _mm256_clmulepi64_epi128(pairs[i], factors, 0x00);
            const __m256i high = _mm256_clmulepi64_epi128(pairs[i], factors, 0x11);
            pairs[i] = _mm256_xor_si256(_mm256_xor_si256(low, next), high);
        }
    }
    for (std::size_t i = 0; i < Lanes / 2; ++i) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(lanes + 2 * i), pairs[i]);
    }
    return data;
}

template <auto FoldLanes>
[[gnu::target("pclmul")]] std::uint32_t crc32ByCarryLess(std::uint32_t crc, const unsigned char* data,
                                                         std::size_t length)
{
    if (length < 2 * Crc32Granule) {
        return crc32BySlicing(crc, data, length);
    }
    const unsigned char* const end = data + length;
    const __m128i once = _mm_set_epi64x(FoldFactors<Crc32Granule>::High, FoldFactors<Crc32Granule>::Low);
    __m128i piece = _mm_xor_si128(load(data), _mm_cvtsi32_si128(static_cast<int>(crc)));
    data += Crc32Granule;
    if (length >= 2 * Stride) {
        __m128i lanes[Lanes] = {piece};
        for (std::size_t i = 1; i < Lanes; ++i, data += Crc32Granule) {
            lanes[i] = load(data);
        }
        data = FoldLanes(lanes, data, end);
        piece = lanes[0];
        for (std::size_t i = 1; i < Lanes; ++i) {
            piece = fold(piece, once, lanes[i]);
        }
    }
    for (; data != end; data += Crc32Granule) {
        piece = fold(piece, once, load(data));
    }
    unsigned char rest[Crc32Granule];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(rest), piece);
    return crc32BySlicing(0, rest, sizeof rest);
}

} // namespace

Crc32Kernel carryLessCrc32Kernel()
{
    return __builtin_cpu_supports("pclmul") ? crc32ByCarryLess<foldLanes> : nullptr;
}

Crc32Kernel pairwiseCrc32Kernel()
{
    const bool present =
        __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("avx2") && __builtin_cpu_supports("vpclmulqdq");
    return present ? crc32ByCarryLess<foldLanesInPairs> : nullptr;
}

} // namespace Tavik::Crypto

#else

namespace Tavik::Crypto {

Crc32Kernel carryLessCrc32Kernel()
{
    return nullptr;
}

Crc32Kernel pairwiseCrc32Kernel()
{
    return nullptr;
}

} // namespace Tavik::Crypto

#endif
