#include <tavik/crypto/CCRC32.h>

#include "Bytes.h"

#include <gtest/gtest.h>

#include <fstream>

#include <sys/mman.h>

// "123456789" is the check value that catalogues of CRCs give; the others are from zlib.
TEST(CCRC32, KnownValues)
{
    const struct
    {
        std::string message;
        unsigned int crc;
    } cases[] = {{"", 0},
                 {"123456789", 0xCBF43926},
                 {"The quick brown fox jumps over the lazy dog", 0x414FA339},
                 {std::string(32, '\0'), 0x190A55AD},
                 {std::string(32, '\xFF'), 0xFF6CAB0B}};
    const CCRC32 crc32;
    for (const auto& c : cases) {
        const auto* data = reinterpret_cast<const unsigned char*>(c.message.data());
        const auto length = static_cast<unsigned int>(c.message.size());
        EXPECT_EQ(crc32.FullCRC(data, length), c.crc) << c.message;
        unsigned int stored = 1;
        crc32.FullCRC(data, length, &stored);
        EXPECT_EQ(stored, c.crc) << c.message;
    }
    EXPECT_EQ(crc32.FullCRC(nullptr, 0), 0U);
}

TEST(CCRC32, PiecesGiveTheWhole)
{
    std::mt19937 generator(1);
    const Bytes data = randomBytes(700, generator);
    const CCRC32 crc32;
    for (unsigned int cut = 0; cut <= data.size(); ++cut) {
        unsigned int crc = 0xFFFFFFFF;
        crc32.PartialCRC(&crc, data.data(), cut);
        crc32.PartialCRC(&crc, data.data() + cut, static_cast<unsigned int>(data.size()) - cut);
        EXPECT_EQ(~crc, crc32.FullCRC(data.data(), static_cast<unsigned int>(data.size()))) << cut;
    }
}

// 2^32 - 3 zeros between two ones; the CRC is from zlib.
TEST(CCRC32, GreatestLength)
{
    const unsigned int length = 0xFFFFFFFF;
    void* memory = mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    auto* data = static_cast<unsigned char*>(memory);
    data[0] = data[length - 1] = 1;
    EXPECT_EQ(CCRC32().FullCRC(data, length), 0x77073097);
    munmap(memory, length);
}

TEST(CCRC32, Files)
{
    const std::string path = testing::TempDir() + "crc32_file";
    const std::string content = std::string(100000, 'x') + "\r\n\x1A";
    std::ofstream(path, std::ios::binary) << content;
    const CCRC32 crc32;
    const unsigned int expected = crc32.FullCRC(reinterpret_cast<const unsigned char*>(content.data()),
                                                static_cast<unsigned int>(content.size()));
    for (const unsigned int bufferSize : {1U, 1000U, 100003U, 1000000U}) {
        unsigned int crc = 0;
        EXPECT_TRUE(crc32.FileCRC(path.c_str(), &crc, bufferSize)) << bufferSize;
        EXPECT_EQ(crc, expected) << bufferSize;
    }
    unsigned int crc = 0;
    EXPECT_TRUE(crc32.FileCRC(path.c_str(), &crc));
    EXPECT_EQ(crc, expected);
    EXPECT_FALSE(crc32.FileCRC(path.c_str(), &crc, 0));
    std::ofstream(path, std::ios::trunc).close();
    EXPECT_TRUE(crc32.FileCRC(path.c_str(), &crc));
    EXPECT_EQ(crc, 0U);
    std::remove(path.c_str());
    // No file, and a folder, which opens but cannot be read.
    const std::string folder = testing::TempDir();
    for (const char* bad : {path.c_str(), folder.c_str(), static_cast<const char*>(nullptr)}) {
        crc = 0;
        EXPECT_FALSE(crc32.FileCRC(bad, &crc));
        EXPECT_EQ(crc, 0xFFFFFFFF);
    }
}
