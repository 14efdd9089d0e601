// Checksums of 1 MiB and ciphers over 256 KiB, in bytes per second of processor time.
//
// The rows `ours_tables` are to be compared with OpenSSL without the AES instructions, for which it is told so:
//     OPENSSL_ia32cap=~0x200000000000000 CryptoBenchmark --benchmark_filter=aes
// It then turns to vector code; with ~0x200020000000000 that is gone too, and tables are left.

#include <tavik/crypto/AES.h>
#include <tavik/crypto/CCRC32.h>
#include <tavik/crypto/Crc32Kernels.h>
#include <tavik/crypto/Md5.h>
#include <tavik/crypto/RijndaelKernel.h>

#include <benchmark/benchmark.h>

#ifdef TAVIK_PEER_OPENSSL
#include <openssl/evp.h>
#endif
#ifdef TAVIK_PEER_LIBDEFLATE
#include <libdeflate.h>
#endif
#ifdef __x86_64__
#include <immintrin.h>
#endif
#include <zlib.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

constexpr unsigned int ChecksumSize = 1 << 20;
constexpr unsigned int CipherSize = 1 << 18;

const Bytes& data()
{
    static const Bytes random = [] {
        std::mt19937 generator(1);
        Bytes bytes(ChecksumSize);
        for (unsigned char& byte : bytes) {
            byte = static_cast<unsigned char>(generator());
        }
        return bytes;
    }();
    return random;
}

template <class Word>
Word wordAt(std::size_t offset)
{
    Word word;
    std::memcpy(&word, data().data() + offset, sizeof word);
    return word;
}

void finishBytes(benchmark::State& state, std::size_t size)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(size));
}

/// Times a function of the data that returns its checksum.
template <class Checksum>
void measureChecksum(const char* name, Checksum checksum)
{
    benchmark::RegisterBenchmark(name, [checksum](benchmark::State& state) {
        data();
        for (auto _ : state) {
            benchmark::DoNotOptimize(checksum());
        }
        finishBytes(state, ChecksumSize);
    });
}

/// Reads everything once.
std::uint64_t sumOfWords()
{
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < ChecksumSize; i += sizeof sum) {
        sum += wordAt<std::uint64_t>(i);
    }
    return sum;
}

/// What waits in MD5: each word takes part in four steps, and each step needs at least a logical operation, two
/// additions and a rotation after the one before.
std::uint32_t chainOfSteps()
{
    std::uint32_t value = 1;
    for (std::size_t i = 0; i < ChecksumSize; i += sizeof value) {
        const auto word = wordAt<std::uint32_t>(i);
        for (int step = 0; step < 4; ++step) {
            const std::uint32_t sum = (value ^ 0x67452301) + word;
            value = (sum << 7 | sum >> 25) + value;
        }
    }
    return value;
}

void registerChecksums()
{
    measureChecksum("crc32/ours", [] { return CCRC32().FullCRC(data().data(), ChecksumSize); });
    measureChecksum("crc32/ours_tables",
                    [] { return Tavik::Crypto::crc32BySlicing(~0U, data().data(), ChecksumSize); });
    measureChecksum("crc32/limit", sumOfWords);
#ifdef TAVIK_PEER_LIBDEFLATE
    measureChecksum("crc32/peer_libdeflate", [] { return libdeflate_crc32(0, data().data(), ChecksumSize); });
#endif
    measureChecksum("crc32/peer_zlib", [] { return crc32(0, data().data(), ChecksumSize); });

    measureChecksum("md5/ours", [] { return Md5().getMd5(data().data(), ChecksumSize); });
    measureChecksum("md5/limit", chainOfSteps);
#ifdef TAVIK_PEER_OPENSSL
    measureChecksum("md5/peer_openssl", [] {
        std::array<unsigned char, 16> digest{};
        EVP_Digest(data().data(), ChecksumSize, digest.data(), nullptr, EVP_md5(), nullptr);
        return digest;
    });
#endif
}

struct Cipher
{
    int keyLength;
    int blockLength;
    AES::BlockMode mode;
    bool encrypts;

    std::string row(const char* who) const
    {
        return "aes" + std::to_string(keyLength) + "_block" + std::to_string(blockLength) +
               (mode == AES::CBC ? "_cbc" : "_ecb") + (encrypts ? "_encrypt/" : "_decrypt/") + who;
    }
};

/// Times a function from input to output.
template <class Run>
void measureCipher(const std::string& name, Run run)
{
    benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        Bytes out(CipherSize);
        for (auto _ : state) {
            run(data().data(), out.data());
            benchmark::ClobberMemory();
        }
        finishBytes(state, CipherSize);
    });
}

class PathAES : public AES
{
public:
    explicit PathAES(const Tavik::Crypto::RijndaelKernel& kernel) : AES(kernel) {}
};

auto ourCipher(AES aes, const Cipher& cipher)
{
    aes.SetParameters(cipher.keyLength, cipher.blockLength);
    aes.StartEncryption(data().data());
    aes.StartDecryption(data().data());
    return [aes, cipher](const unsigned char* in, unsigned char* out) {
        const auto blockCount = CipherSize * 8 / static_cast<unsigned int>(cipher.blockLength);
        cipher.encrypts ? aes.Encrypt(in, out, blockCount, cipher.mode) : aes.Decrypt(in, out, blockCount, cipher.mode);
    };
}

/// One way of ours, where the processor can do it.
void measureKernel(const Cipher& cipher, const char* who, const Tavik::Crypto::RijndaelKernel* kernel)
{
    if (kernel != nullptr) {
        measureCipher(cipher.row(who), ourCipher(PathAES(*kernel), cipher));
    }
}

void copyAll(const unsigned char* in, unsigned char* out)
{
    std::memcpy(out, in, CipherSize);
}

#ifdef __x86_64__
/// What waits in CBC encryption: ten rounds to a block, each block added to the one before.
[[gnu::target("aes")]] void chainOfRounds(const unsigned char* in, unsigned char* out)
{
    const auto* from = reinterpret_cast<const __m128i*>(in);
    auto* to = reinterpret_cast<__m128i*>(out);
    const __m128i key = _mm_loadu_si128(from);
    __m128i block = _mm_setzero_si128();
    for (std::size_t i = 0; i < CipherSize / 16; ++i) {
        block = _mm_xor_si128(block, _mm_loadu_si128(from + i));
        for (int round = 0; round < 10; ++round) {
            block = _mm_aesenc_si128(block, key);
        }
        _mm_storeu_si128(to + i, block);
    }
}
#endif

void measureLimit(const Cipher& cipher)
{
    if (cipher.mode == AES::ECB || !cipher.encrypts) {
        measureCipher(cipher.row("limit"), copyAll);
    }
#ifdef __x86_64__
    else if (cipher.keyLength == 128 && cipher.blockLength == 128 && __builtin_cpu_supports("aes")) {
        measureCipher(cipher.row("limit"), chainOfRounds);
    }
#endif
}

#ifdef TAVIK_PEER_OPENSSL
void measureOpenSsl(const Cipher& cipher)
{
    if (cipher.blockLength != 128) {
        return; // OpenSSL has no others
    }
    const std::string name = "AES-" + std::to_string(cipher.keyLength) + (cipher.mode == AES::CBC ? "-CBC" : "-ECB");
    const std::shared_ptr<EVP_CIPHER_CTX> context(EVP_CIPHER_CTX_new(), EVP_CIPHER_CTX_free);
    const unsigned char zeroVector[16] = {};
    EVP_CipherInit(context.get(), EVP_get_cipherbyname(name.c_str()), data().data(), zeroVector, cipher.encrypts);
    EVP_CIPHER_CTX_set_padding(context.get(), 0);
    measureCipher(cipher.row("peer_openssl"), [context](const unsigned char* in, unsigned char* out) {
        int length = 0;
        EVP_CipherUpdate(context.get(), out, &length, in, CipherSize);
    });
}
#else
void measureOpenSsl(const Cipher&) {}
#endif

void registerCiphers()
{
    constexpr int Lengths[][2] = {{128, 128}, {256, 128}, {256, 192}, {256, 256}};
    for (const auto& [keyLength, blockLength] : Lengths) {
        for (const AES::BlockMode mode : {AES::ECB, AES::CBC}) {
            for (const bool encrypts : {true, false}) {
                const Cipher cipher = {keyLength, blockLength, mode, encrypts};
                measureCipher(cipher.row("ours"), ourCipher(AES(), cipher));
                measureKernel(cipher, "ours_instructions", Tavik::Crypto::instructionRijndaelKernel());
                measureKernel(cipher, "ours_tables", &Tavik::Crypto::tableRijndaelKernel());
                measureLimit(cipher);
                measureOpenSsl(cipher);
            }
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    registerChecksums();
    registerCiphers();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
