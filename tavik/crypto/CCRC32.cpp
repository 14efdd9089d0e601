#include <tavik/crypto/CCRC32.h>
#include <tavik/crypto/Crc32Kernels.h>

#include <cstdio>
#include <memory>
#include <new>

namespace Crypto = Tavik::Crypto;

namespace {

constexpr unsigned int Polynomial = 0x04C11DB7;
constexpr unsigned int InitialCrc = 0xFFFFFFFF;
constexpr unsigned int DefaultBufferSize = 1048576;

Crypto::Crc32Kernel chooseKernel()
{
    if (const Crypto::Crc32Kernel pairwise = Crypto::pairwiseCrc32Kernel()) {
        return pairwise;
    }
    if (const Crypto::Crc32Kernel carryLess = Crypto::carryLessCrc32Kernel()) {
        return carryLess;
    }
    return Crypto::crc32BySlicing;
}

struct CloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};

} // namespace

CCRC32::CCRC32()
{
    Initialize();
}

CCRC32::~CCRC32() = default;

void CCRC32::Initialize()
{
    const unsigned int polynomial = Reflect(Polynomial, 32);
    mTable[0] = 0;
    // The byte of one bit after the other, from its own remainder the ones of all bytes with higher bits set as well:
    // remainders add up without carry.
    unsigned int remainder = 1;
    for (unsigned int bit = 128; bit > 0; bit >>= 1) {
        remainder = remainder >> 1 ^ (remainder & 1 ? polynomial : 0);
        for (unsigned int higher = 0; higher < 256; higher += 2 * bit) {
            mTable[higher + bit] = mTable[higher] ^ remainder;
        }
    }
}

/// Reverses the order of the low `bits` bits; the others are dropped.
unsigned int CCRC32::Reflect(unsigned int value, char bits)
{
    unsigned int reflected = 0;
    for (int bit = 0; bit < bits; ++bit) {
        reflected = reflected << 1 | (value >> bit & 1);
    }
    return reflected;
}

bool CCRC32::FileCRC(const char* path, unsigned int* out, unsigned int bufferSize) const
{
    if (out != nullptr) {
        *out = InitialCrc;
    }
    const std::unique_ptr<std::FILE, CloseFile> file(path != nullptr ? std::fopen(path, "rb") : nullptr);
    if (file == nullptr || bufferSize == 0) {
        return false;
    }
    const std::unique_ptr<unsigned char[]> buffer(new (std::nothrow) unsigned char[bufferSize]);
    if (buffer == nullptr) {
        return false;
    }
    unsigned int crc = InitialCrc;
    while (const std::size_t count = std::fread(buffer.get(), 1, bufferSize, file.get())) {
        PartialCRC(&crc, buffer.get(), static_cast<unsigned int>(count));
    }
    if (std::ferror(file.get()) != 0) {
        return false;
    }
    if (out != nullptr) {
        *out = ~crc;
    }
    return true;
}

bool CCRC32::FileCRC(const char* path, unsigned int* out) const
{
    return FileCRC(path, out, DefaultBufferSize);
}

unsigned int CCRC32::FullCRC(const unsigned char* data, unsigned int length) const
{
    unsigned int crc = InitialCrc;
    PartialCRC(&crc, data, length);
    return ~crc;
}

void CCRC32::FullCRC(const unsigned char* data, unsigned int length, unsigned int* out) const
{
    if (out != nullptr) {
        *out = FullCRC(data, length);
    }
}

void CCRC32::PartialCRC(unsigned int* crc, const unsigned char* data, unsigned int length) const
{
    if (crc == nullptr || data == nullptr) {
        return;
    }
    static const Crypto::Crc32Kernel kernel = chooseKernel();
    const unsigned char* const end = data + length;
    const std::size_t whole = length - length % Crypto::Crc32Granule;
    unsigned int running = kernel(*crc, data, whole);
    for (data += whole; data != end; ++data) {
        running = mTable[(running & 0xFF) ^ *data] ^ running >> 8;
    }
    *crc = running;
}
