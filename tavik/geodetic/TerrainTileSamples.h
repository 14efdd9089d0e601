#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

// From the words of a terrain file to heights: one at a time, and eight side by side. Internal.

namespace Tavik::Geodetic {

/// Values below this mean that the height is unknown, metres.
constexpr std::int16_t LowestHeight = -9000;

/// The height that a big-endian word stands for, metres; 0 for a void.
inline std::int16_t heightFromWord(const unsigned char* word)
{
    const auto value = static_cast<std::int16_t>(word[0] << 8 | word[1]);
    return value < LowestHeight ? std::int16_t(0) : value;
}

/// Eight samples in one register. Vector types of the compiler keep this free of processor-specific code.
using EightSamples = std::int16_t __attribute__((vector_size(16)));
using EightWords = std::uint16_t __attribute__((vector_size(16)));

/// heightFromWord of eight words that stand in a row, at any alignment.
inline EightSamples heightsFromWords(const unsigned char* words)
{
    EightWords stored;
    std::memcpy(&stored, words, sizeof stored);
    if constexpr (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__) {
        stored = stored << 8 | stored >> 8;
    }
    const auto values = reinterpret_cast<EightSamples>(stored);
    return values & (values >= LowestHeight);
}

/// Turns eight rows of eight into eight columns, in place.
inline void transpose(EightSamples (&rows)[8])
{
    // Seen as one number of 3 + 3 bits, row and column, each round rotates a sample's place by one bit.
    for (int round = 0; round < 3; ++round) {
        EightSamples next[8];
        for (std::size_t i = 0; i < 4; ++i) {
            next[2 * i] = __builtin_shufflevector(rows[i], rows[i + 4], 0, 8, 1, 9, 2, 10, 3, 11);
            next[2 * i + 1] = __builtin_shufflevector(rows[i], rows[i + 4], 4, 12, 5, 13, 6, 14, 7, 15);
        }
        std::memcpy(rows, next, sizeof next);
    }
}

inline void store(EightSamples samples, std::int16_t* destination)
{
    std::memcpy(destination, &samples, sizeof samples);
}

} // namespace Tavik::Geodetic
