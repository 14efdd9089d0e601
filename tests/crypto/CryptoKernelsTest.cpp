// The ways in which checksums and cipher can be computed, each against standards and against the others.

#include <tavik/crypto/AES.h>
#include <tavik/crypto/Crc32Kernels.h>
#include <tavik/crypto/RijndaelKernel.h>

#include "Bytes.h"

#include <gtest/gtest.h>

using namespace Tavik::Crypto;

namespace {

class PathAES : public AES
{
public:
    PathAES(const RijndaelKernel& kernel, int keyLength, int blockLength, const Bytes& key) : AES(kernel)
    {
        SetParameters(keyLength, blockLength);
        StartEncryption(key.data());
        StartDecryption(key.data());
    }
};

using Finder = const RijndaelKernel* (*)();

class RijndaelPath : public testing::TestWithParam<Finder>
{
protected:
    void SetUp() override
    {
        mKernel = GetParam()();
        if (mKernel == nullptr) {
            GTEST_SKIP() << "this processor lacks the instructions";
        }
    }

    const RijndaelKernel* mKernel = nullptr;
};

/// Every bit by itself, as the polynomial says.
std::uint32_t crc32ByBits(std::uint32_t crc, const unsigned char* data, std::size_t length)
{
    for (std::size_t i = 0; i < length; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit) {
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
        }
    }
    return crc;
}

void compareWithBits(Crc32Kernel kernel)
{
    std::mt19937 generator(1);
    const Bytes data = randomBytes(5000, generator);
    for (std::size_t granules = 0; granules < 300; ++granules) {
        const std::size_t length = granules * Crc32Granule;
        const auto start = static_cast<std::uint32_t>(generator());
        const unsigned char* from = data.data() + granules % 17;
        EXPECT_EQ(kernel(start, from, length), crc32ByBits(start, from, length)) << length;
    }
}

const std::string Key128 = "2b7e151628aed2a6abf7158809cf4f3c";
const std::string Key192 = "8e73b0f7da0e6452c810f32b809079e562f8ead2522c6b7b";
const std::string Key256 = "603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4";
const std::string Counting = "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";
const std::string PiKey = "2b7e151628aed2a6abf7158809cf4f3c762e7160f38b4da56a784d9045190cfe";
const std::string PiText = "3243f6a8885a308d313198a2e03707344a4093822299f31d0082efa98ec4e6c8";
const std::string FourBlocks = "6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51"
                               "30c81c46a35ce411e5fbc1191a0a52eff69f2445df4f9b17ad2b417be66c3710";
// The same with the initialisation vector 000102...0f added to the first block: what a zero vector makes of it.
const std::string FourChained = "6bc0bce12a459991e134741a7f9e1925" + FourBlocks.substr(32);

} // namespace

TEST_P(RijndaelPath, PublishedVectors)
{
    const struct
    {
        const char* source;
        int keyLength;
        int blockLength;
        AES::BlockMode mode;
        std::string key;
        std::string plain;
        std::string encrypted;
    } cases[] = {
        {"FIPS-197 C.1", 128, 128, AES::ECB, Counting, "00112233445566778899aabbccddeeff",
         "69c4e0d86a7b0430d8cdb78070b4c55a"},
        {"FIPS-197 C.2", 192, 128, AES::ECB, Counting, "00112233445566778899aabbccddeeff",
         "dda97ca4864cdfe06eaf70a0ec0d7191"},
        {"FIPS-197 C.3", 256, 128, AES::ECB, Counting, "00112233445566778899aabbccddeeff",
         "8ea2b7ca516745bfeafc49904b496089"},
        {"SP 800-38A F.2.1", 128, 128, AES::CBC, Key128, FourChained,
         "7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"
         "73bed6b8e3c1743b7116e69e222295163ff1caa1681fac09120eca307586e1a7"},
        {"SP 800-38A F.2.3", 192, 128, AES::CBC, Key192, FourChained,
         "4f021db243bc633d7178183a9fa071e8b4d9ada9ad7dedf4e5e738763f69145a"
         "571b242012fb7ae07fa9baac3df102e008b0e27988598881d920a9e64f5615cd"},
        {"SP 800-38A F.2.5", 256, 128, AES::CBC, Key256, FourChained,
         "f58c4c04d6e5f1ba779eabfb5f7bfbd69cfc4e967edb808d679f777bc6702c7d"
         "39f23369a9d9bacfa530e26304231461b2eb05e2c39be9fcda6c19078c6a9d1b"},
        // Larger blocks, of which the standard knows nothing: as libmcrypt 2.5.8 has them.
        {"192-bit block", 128, 192, AES::ECB, PiKey, PiText.substr(0, 48),
         "b24d275489e82bb8f7375e0d5fcdb1f481757c538b65148a"},
        {"192-bit block", 192, 192, AES::ECB, PiKey, PiText.substr(0, 48),
         "725ae43b5f3161de806a7c93e0bca93c967ec1ae1b71e1cf"},
        {"192-bit block", 256, 192, AES::ECB, PiKey, PiText.substr(0, 48),
         "0ebacf199e3315c2e34b24fcc7c46ef4388aa475d66c194c"},
        {"256-bit block", 128, 256, AES::ECB, PiKey, PiText,
         "7d15479076b69a46ffb3b3beae97ad8313f622f67fedb487de9f06b9ed9c8f19"},
        {"256-bit block", 192, 256, AES::ECB, PiKey, PiText,
         "5d7101727bb25781bf6715b0e6955282b9610e23a43c2eb062699f0ebf5887b2"},
        {"256-bit block", 256, 256, AES::ECB, PiKey, PiText,
         "a49406115dfb30a40418aafa4869b7c6a886ff31602a7dd19c889dc64f7e4e7a"},
    };
    for (const auto& c : cases) {
        const PathAES aes(*mKernel, c.keyLength, c.blockLength, fromHex(c.key));
        Bytes data = fromHex(c.plain);
        const auto blockCount = static_cast<unsigned int>(data.size() * 8) / static_cast<unsigned int>(c.blockLength);
        aes.Encrypt(data.data(), data.data(), blockCount, c.mode);
        EXPECT_EQ(data, fromHex(c.encrypted)) << c.source << ", key of " << c.keyLength;
        aes.Decrypt(data.data(), data.data(), blockCount, c.mode);
        EXPECT_EQ(data, fromHex(c.plain)) << c.source << ", key of " << c.keyLength;
    }
}

// Against block after block by the tables, chained here: every number of blocks up to several times what is in flight
// at once, at any address, in place and not, and nothing written behind the end.
TEST_P(RijndaelPath, AgreesWithTablesBlockByBlock)
{
    std::mt19937 generator(2);
    for (int run = 0; run < 9 * 2 * 40; ++run) {
        const int keyLength = 128 + 64 * (run % 3);
        const int blockLength = 128 + 64 * (run / 3 % 3);
        const AES::BlockMode mode = run / 9 % 2 == 0 ? AES::ECB : AES::CBC;
        const auto blockCount = static_cast<unsigned int>(run / 18);
        const std::size_t blockSize = static_cast<std::size_t>(blockLength) / 8;
        const Bytes key = randomBytes(32, generator);
        const Bytes plain = randomBytes(blockCount * blockSize, generator);
        const PathAES byTables(tableRijndaelKernel(), keyLength, blockLength, key);
        Bytes expected = plain;
        for (std::size_t at = 0; at < expected.size(); at += blockSize) {
            for (std::size_t i = at; mode == AES::CBC && at > 0 && i < at + blockSize; ++i) {
                expected[i] ^= expected[i - blockSize];
            }
            byTables.EncryptBlock(&expected[at], &expected[at]);
        }
        const PathAES aes(*mKernel, keyLength, blockLength, key);
        const std::size_t offset = generator() % 16;
        Bytes buffer(offset + plain.size() + 1, 0xA5);
        unsigned char* data = buffer.data() + offset;
        const auto content = [&] { return Bytes(data, data + plain.size()); };
        SCOPED_TRACE(testing::Message() << keyLength << " " << blockLength << " " << mode << " " << blockCount);
        aes.Encrypt(plain.data(), data, blockCount, mode);
        EXPECT_EQ(content(), expected);
        aes.Decrypt(data, data, blockCount, mode);
        EXPECT_EQ(content(), plain) << "in place";
        aes.Encrypt(data, data, blockCount, mode);
        EXPECT_EQ(content(), expected) << "in place";
        aes.Decrypt(expected.data(), data, blockCount, mode);
        EXPECT_EQ(content(), plain);
        EXPECT_EQ(buffer.back(), 0xA5);
    }
}

INSTANTIATE_TEST_SUITE_P(Tables, RijndaelPath, testing::Values(Finder([] { return &tableRijndaelKernel(); })));
INSTANTIATE_TEST_SUITE_P(Instructions, RijndaelPath, testing::Values(instructionRijndaelKernel));
INSTANTIATE_TEST_SUITE_P(Pairs, RijndaelPath, testing::Values(pairwiseRijndaelKernel));

TEST(Crc32Kernels, Slicing)
{
    compareWithBits(crc32BySlicing);
}

TEST(Crc32Kernels, CarryLess)
{
    if (carryLessCrc32Kernel() == nullptr) {
        GTEST_SKIP() << "this processor has no PCLMULQDQ";
    }
    compareWithBits(carryLessCrc32Kernel());
}

TEST(Crc32Kernels, Pairwise)
{
    if (pairwiseCrc32Kernel() == nullptr) {
        GTEST_SKIP() << "this processor has no VPCLMULQDQ";
    }
    compareWithBits(pairwiseCrc32Kernel());
}
