#include <tavik/crypto/Md5.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>

#include <sys/mman.h>

namespace {

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

void add(Md5& md5, const std::string& text)
{
    md5.update(bytesOf(text), static_cast<unsigned int>(text.size()));
}

std::string digestOf(const std::string& text)
{
    Md5 md5;
    add(md5, text);
    md5.finalize();
    return md5.hex_digest();
}

} // namespace

// The test suite of RFC 1321, A.5; then lengths around the end of the padding and of a block, from md5sum.
TEST(Md5, DigestsInPiecesOfAnySize)
{
    const struct
    {
        std::string message;
        const char* digest;
    } cases[] = {{"", "d41d8cd98f00b204e9800998ecf8427e"},
                 {"a", "0cc175b9c0f1b6a831c399e269772661"},
                 {"abc", "900150983cd24fb0d6963f7d28e17f72"},
                 {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
                 {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
                 {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789", "d174ab98d277d9f5a5611c2c9f419d9f"},
                 {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
                  "57edf4a22be3c955ac49da2e2107b67a"},
                 {std::string(55, 'a'), "ef1772b6dff9a122358552954ad0df65"},
                 {std::string(56, 'a'), "3b0c8ac703f828b04c6c197006d17218"},
                 {std::string(63, 'a'), "b06521f39153d618550606be297466d5"},
                 {std::string(64, 'a'), "014842d480b571495a4a0363793f7367"},
                 {std::string(120, 'a'), "5f61c0ccad4cac44c75ff505e1f1e537"},
                 {std::string(128, 'a'), "e510683b3f5ffe4093d021808bc6ff70"}};
    for (const auto& c : cases) {
        for (std::size_t cut = 0; cut <= c.message.size(); ++cut) {
            Md5 md5;
            add(md5, c.message.substr(0, cut));
            add(md5, c.message.substr(cut));
            md5.finalize();
            EXPECT_EQ(md5.hex_digest(), c.digest) << c.message << " in two pieces, the first of " << cut;
        }
    }
}

// A message of more than 2^32 bits: 2^29 + 100 zero bytes; the digest is from md5sum.
TEST(Md5, CountsBitsBeyondThirtyTwo)
{
    const unsigned int length = (1U << 29) + 100;
    void* zeros = mmap(nullptr, length, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(zeros, MAP_FAILED);
    Md5 md5;
    md5.getMd5(static_cast<unsigned char*>(zeros), length);
    munmap(zeros, length);
    EXPECT_EQ(md5.hex_digest(), "2fd298086ae19f076b408e275af7598c");
}

TEST(Md5, ReadsTheRestOfAStream)
{
    const std::string path = testing::TempDir() + "md5_stream";
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{16384}, std::size_t{50000}}) {
        std::string content = "header";
        for (std::size_t i = 0; i < size; ++i) {
            content += static_cast<char>(i * i >> 5);
        }
        const std::string expected = digestOf(content.substr(6));
        std::ofstream(path, std::ios::binary) << content;

        std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
        ASSERT_NE(file, nullptr);
        ASSERT_EQ(std::fseek(file.get(), 6, SEEK_SET), 0);
        EXPECT_EQ(Md5(file.get()).hex_digest(), expected) << size;

        std::ifstream fileStream(path, std::ios::binary);
        fileStream.seekg(6);
        EXPECT_EQ(Md5(fileStream).hex_digest(), expected) << size;

        std::istringstream throwing(content);
        throwing.seekg(6);
        throwing.exceptions(std::ios::eofbit | std::ios::failbit | std::ios::badbit);
        EXPECT_EQ(Md5(static_cast<std::istream&>(throwing)).hex_digest(), expected) << size;
    }
    std::remove(path.c_str());
    std::ifstream absent(path);
    EXPECT_EQ(Md5(absent).hex_digest(), digestOf(""));
    EXPECT_EQ(Md5(static_cast<std::FILE*>(nullptr)).hex_digest(), digestOf(""));
}

TEST(Md5, TellsMisuseAndGoesOn)
{
    Md5 md5;
    add(md5, "abc");
    testing::internal::CaptureStderr();
    const std::unique_ptr<unsigned char[]> early(md5.raw_digest());
    EXPECT_EQ(md5.hex_digest(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Md5::raw_digest:  Can't get digest if you haven't finalized the digest!\n"
              "Md5::hex_digest:  Can't get digest if you haven't finalized the digest!\n");
    EXPECT_EQ(std::string(early.get(), early.get() + 16), std::string(16, '\0'));

    md5.finalize();
    std::istringstream stream("more");
    testing::internal::CaptureStderr();
    add(md5, "more");
    md5.update(stream);
    md5.finalize();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Md5::update:  Can't update a finalized digest!\n"
                                                      "Md5::update:  Can't update a finalized digest!\n"
                                                      "Md5::finalize:  Already finalized this digest!\n");
    EXPECT_EQ(stream.tellg(), 0);
    EXPECT_EQ(md5.hex_digest(), digestOf("abc"));

    const std::unique_ptr<unsigned char[]> raw(md5.raw_digest());
    const auto again = md5.getMd5(bytesOf("abc"), 3); // forgets the first message
    EXPECT_TRUE(std::equal(again.begin(), again.end(), raw.get()));
    md5.init();
    md5.update(nullptr, 0);
    md5.finalize();
    EXPECT_EQ(md5.hex_digest(), digestOf(""));
}
