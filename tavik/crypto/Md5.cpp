#include <tavik/crypto/LittleEndian.h>
#include <tavik/crypto/Md5.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <fstream>
#include <istream>
#include <new>

using Tavik::Crypto::loadLittleEndian;
using Tavik::Crypto::storeLittleEndian;

namespace {

constexpr std::size_t BlockSize = 64;
constexpr std::size_t LengthOffset = 56; // of the bit count in the last block

// floor(2^32 |sin(i + 1)|), i + 1 in radians.
constexpr std::uint32_t Sines[64] = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

// The four functions of the rounds. Each is written so that as little as possible waits for x, which comes from the
// step just before.
struct F
{
    static std::uint32_t add(std::uint32_t sum, std::uint32_t x, std::uint32_t y, std::uint32_t z)
    {
        return sum + (z ^ (x & (y ^ z)));
    }
};

struct G
{
    static std::uint32_t add(std::uint32_t sum, std::uint32_t x, std::uint32_t y, std::uint32_t z)
    {
        return sum + (y & ~z) + (x & z); // the two have no bit in common, so that adding is as good as or-ing
    }
};

struct H
{
    static std::uint32_t add(std::uint32_t sum, std::uint32_t x, std::uint32_t y, std::uint32_t z)
    {
        return sum + (x ^ (y ^ z));
    }
};

struct I
{
    static std::uint32_t add(std::uint32_t sum, std::uint32_t x, std::uint32_t y, std::uint32_t z)
    {
        return sum + (y ^ (x | ~z));
    }
};

template <class Function, int Shift>
inline void step(std::uint32_t& a, std::uint32_t b, std::uint32_t c, std::uint32_t d, std::uint32_t addend)
{
    const std::uint32_t sum = Function::add(a + addend, b, c, d);
    a = b + (sum << Shift | sum >> (32 - Shift));
}

/// One round of 16 steps, the words of the block taken in the order (First + i Stride) mod 16.
template <class Function, std::size_t Round, std::size_t First, std::size_t Stride, int Shift0, int Shift1, int Shift2,
          int Shift3>
inline void round(std::uint32_t (&state)[4], const unsigned char* block)
{
    auto& [a, b, c, d] = state;
    const auto addend = [block](std::size_t i) {
        return loadLittleEndian(block + (First + i * Stride) % 16 * 4) + Sines[Round * 16 + i];
    };
    for (std::size_t i = 0; i < 16; i += 4) {
        step<Function, Shift0>(a, b, c, d, addend(i));
        step<Function, Shift1>(d, a, b, c, addend(i + 1));
        step<Function, Shift2>(c, d, a, b, addend(i + 2));
        step<Function, Shift3>(b, c, d, a, addend(i + 3));
    }
}

void addBlocks(std::uint32_t (&state)[4], const unsigned char* data, std::size_t blockCount)
{
    for (; blockCount > 0; --blockCount, data += BlockSize) {
        std::uint32_t next[4] = {state[0], state[1], state[2], state[3]};
        round<F, 0, 0, 1, 7, 12, 17, 22>(next, data);
        round<G, 1, 1, 5, 5, 9, 14, 20>(next, data);
        round<H, 2, 5, 3, 4, 11, 16, 23>(next, data);
        round<I, 3, 0, 7, 6, 10, 15, 21>(next, data);
        for (int i = 0; i < 4; ++i) {
            state[i] += next[i];
        }
    }
}

} // namespace

Md5::Md5()
{
    init();
}

Md5::Md5(std::FILE* file) : Md5()
{
    update(file);
    finalize();
}

Md5::Md5(std::istream& stream) : Md5()
{
    update(stream);
    finalize();
}

Md5::Md5(std::ifstream& stream) : Md5(static_cast<std::istream&>(stream)) {}

void Md5::init()
{
    mState[0] = 0x67452301;
    mState[1] = 0xefcdab89;
    mState[2] = 0x98badcfe;
    mState[3] = 0x10325476;
    mBitCount = 0;
    std::memset(mBuffer, 0, sizeof mBuffer);
    mDigest.fill(0);
    mFinalized = false;
}

void Md5::update(const unsigned char* data, unsigned int length)
{
    if (!refusesUpdate()) {
        add(data, length);
    }
}

void Md5::update(std::FILE* file)
{
    if (file != nullptr) {
        updateFrom([file](unsigned char* buffer, std::size_t size) { return std::fread(buffer, 1, size, file); });
    }
}

void Md5::update(std::istream& stream)
{
    updateFrom([&stream](unsigned char* buffer, std::size_t size) {
        try {
            stream.read(reinterpret_cast<char*>(buffer), static_cast<std::streamsize>(size));
        } catch (const std::exception&) { // the end, for a stream that reports it so; the count holds nevertheless
        }
        return static_cast<std::size_t>(stream.gcount());
    });
}

void Md5::update(std::ifstream& stream)
{
    update(static_cast<std::istream&>(stream));
}

template <class Read>
void Md5::updateFrom(Read read)
{
    if (refusesUpdate()) {
        return;
    }
    unsigned char buffer[16384];
    std::size_t count = 0;
    do {
        count = read(buffer, sizeof buffer);
        add(buffer, count);
    } while (count == sizeof buffer);
}

bool Md5::refusesUpdate() const
{
    if (mFinalized) {
        std::fputs("Md5::update:  Can't update a finalized digest!\n", stderr);
    }
    return mFinalized;
}

void Md5::add(const unsigned char* data, std::size_t length)
{
    if (data == nullptr || length == 0) {
        return;
    }
    const std::size_t buffered = mBitCount / 8 % BlockSize;
    mBitCount += static_cast<std::uint64_t>(length) * 8;
    if (buffered > 0) {
        const std::size_t taken = std::min(length, BlockSize - buffered);
        std::memcpy(mBuffer + buffered, data, taken);
        if (buffered + taken < BlockSize) {
            return;
        }
        addBlocks(mState, mBuffer, 1);
        data += taken;
        length -= taken;
    }
    addBlocks(mState, data, length / BlockSize);
    std::memcpy(mBuffer, data + length / BlockSize * BlockSize, length % BlockSize);
}

void Md5::finalize()
{
    if (mFinalized) {
        std::fputs("Md5::finalize:  Already finalized this digest!\n", stderr);
        return;
    }
    const std::uint64_t bitCount = mBitCount;
    const std::size_t buffered = bitCount / 8 % BlockSize;
    const unsigned char padding[BlockSize] = {0x80};
    add(padding, (buffered < LengthOffset ? LengthOffset : LengthOffset + BlockSize) - buffered);
    unsigned char length[8];
    storeLittleEndian(static_cast<std::uint32_t>(bitCount), length);
    storeLittleEndian(static_cast<std::uint32_t>(bitCount >> 32), length + 4);
    add(length, sizeof length);
    for (std::size_t i = 0; i < 4; ++i) {
        storeLittleEndian(mState[i], mDigest.data() + 4 * i);
    }
    mFinalized = true;
}

unsigned char* Md5::raw_digest() const
{
    if (!mFinalized) {
        std::fputs("Md5::raw_digest:  Can't get digest if you haven't finalized the digest!\n", stderr);
    }
    auto* digest = new (std::nothrow) unsigned char[mDigest.size()];
    if (digest != nullptr) {
        std::copy(mDigest.begin(), mDigest.end(), digest); // zeros until it is finalized
    }
    return digest;
}

std::string Md5::hex_digest() const
{
    if (!mFinalized) {
        std::fputs("Md5::hex_digest:  Can't get digest if you haven't finalized the digest!\n", stderr);
        return {};
    }
    std::string digits;
    for (const unsigned char byte : mDigest) {
        digits += "0123456789abcdef"[byte >> 4];
        digits += "0123456789abcdef"[byte & 15];
    }
    return digits;
}

std::array<unsigned char, 16> Md5::getMd5(const unsigned char* data, unsigned int length)
{
    init();
    update(data, length);
    finalize();
    return mDigest;
}
