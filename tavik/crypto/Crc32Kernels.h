#pragma once

#include <cstddef>
#include <cstdint>

namespace Tavik::Crypto {

constexpr std::uint32_t ReflectedCrc32Polynomial = 0xEDB88320;
constexpr std::size_t Crc32Granule = 16; // bytes: what a kernel takes at a time

/// Continues a running CRC-32 over `length` bytes, a multiple of the granule at any address.
using Crc32Kernel = std::uint32_t (*)(std::uint32_t crc, const unsigned char* data, std::size_t length);

/// By tables, on every processor.
std::uint32_t crc32BySlicing(std::uint32_t crc, const unsigned char* data, std::size_t length);

/// By carry-less multiplication, one product at a time (PCLMULQDQ) or two (VPCLMULQDQ with AVX2).
/// @return null where the processor lacks the instruction
Crc32Kernel carryLessCrc32Kernel();
Crc32Kernel pairwiseCrc32Kernel();

} // namespace Tavik::Crypto
