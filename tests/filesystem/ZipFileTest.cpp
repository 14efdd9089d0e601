#include <tavik/filesystem/ZipFile.h>

#include <support/TemporaryDirectory.h>
#include <support/ZipWriter.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>

#include <sys/stat.h>

using Tavik::FileSystem::ZipFile;
using namespace Tavik::Support;

namespace {

using Content = std::optional<std::string>;

const std::string Text = "0123456789";

/// The contents of a member, by default the first; nothing where the archive answers null.
Content read(ZipFile& archive, const std::string& name = "")
{
    unsigned int size = 99;
    const std::unique_ptr<unsigned char[]> bytes(name.empty() ? archive.readFirstFile(size)
                                                              : archive.readFile(name, size));
    if (bytes == nullptr) {
        EXPECT_EQ(size, 0u);
        return std::nullopt;
    }
    return std::string(bytes.get(), bytes.get() + size);
}

class ZipFileTest : public testing::Test
{
protected:
    TemporaryDirectory mDirectory;
    std::string mPath = mDirectory.path() + "/archive.zip";
};

} // namespace

TEST_F(ZipFileTest, ReadsMembersByNameAndInOrder)
{
    // More than one piece of input and of history; neither constant nor random.
    std::string longText;
    for (int i = 0; i < 200000; ++i) {
        longText += std::to_string(i * 7919 % 100003) + ' ';
    }
    const std::string odd("a\0b", 3);
    const std::string longest(65535, 'n');
    writeZip(mPath, {{"dir/long.txt", longText, "extra field"},
                     {"empty", ""},
                     {"described", "with data descriptor", "", false, true},
                     {odd, "name with NUL"},
                     {longest, "longest name"}});
    ZipFile archive(mPath);
    EXPECT_EQ(archive.nrFiles(), 0u); // nothing is read before it is needed
    EXPECT_THAT(archive.getFiles(), testing::ElementsAre("dir/long.txt", "empty", "described", odd, longest));
    EXPECT_EQ(read(archive), longText);
    EXPECT_EQ(read(archive, "empty"), "");
    EXPECT_EQ(read(archive, "described"), "with data descriptor");
    EXPECT_EQ(read(archive, odd), "name with NUL");
    EXPECT_EQ(read(archive, longest), "longest name");
    EXPECT_EQ(read(archive, "Empty"), std::nullopt);
}

TEST_F(ZipFileTest, DeceitfulMembersGiveTheirStatedAnswer)
{
    std::string endless;
    for (int i = 0; i < 16000; ++i) {
        endless += std::string("\x00\x00\x00\xFF\xFF", 5); // an empty block, and not the last
    }
    const auto lying = [](std::optional<std::uint32_t> compressed, std::optional<std::uint32_t> uncompressed) {
        return ZipMember{"n", Text, "", false, false, compressed, uncompressed};
    };
    const auto raw = [](const std::string& data) { return ZipMember{"n", Text, "", false, false, {}, {}, data}; };
    const struct
    {
        const char* name;
        ZipMember member;
        Content expected;
    } cases[] = {
        {"promises 4 GiB", lying({}, 0xFFFFFFFF), {}},
        {"promises what deflate cannot reach", lying({}, 20 * 1032), {}},
        {"promises three bytes more", lying({}, 13), Text + std::string(3, '\0')},
        {"promises a byte less", lying({}, 9), {}},
        {"promises nothing", lying({}, 0), {}},
        {"claims data of 4 GiB", lying(0xFFFFFFFF, {}), {}},
        {"claims data beyond the end", lying(10000, {}), {}},
        // 30 bytes of header and one of name: in 32 bits the next header would be the first one.
        {"claims data that lead back to the start", lying(0xFFFFFFFF - 30, {}), {}},
        {"claims a byte less of data", lying(11, {}), {}},
        {"claims no data", lying(0, {}), {}},
        {"stored", {"n", std::string(10, '\x07'), "", true}, {}},
        {"empty blocks without end", raw(endless), {}},
        {"no such block type", raw(std::string(20, '\x07')), {}},
        {"more behind the end of the stream", raw(std::string("\x03\x00 more", 7)), std::string(10, '\0')},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        writeZip(mPath, {c.member});
        ZipFile archive(mPath);
        EXPECT_EQ(archive.getFiles().size(), 1u);
        EXPECT_EQ(read(archive), c.expected);
    }
}

TEST_F(ZipFileTest, ArchiveMayEndAnywhere)
{
    writeZip(mPath, {{"name", Text, "extra"}});
    const std::size_t dataOffset = 30 + 4 + 5;
    const std::size_t dataEnd = dataOffset + ZipFile(mPath).members().at(0).compressedSize;
    for (std::size_t size = dataEnd + 3; size-- > 0;) {
        std::filesystem::resize_file(mPath, size);
        ZipFile archive(mPath);
        EXPECT_EQ(read(archive), size >= dataEnd ? Content(Text) : std::nullopt) << size;
        EXPECT_EQ(archive.nrFiles(), size >= dataOffset ? 1u : 0u) << size;
    }
}

TEST_F(ZipFileTest, StopsAtMembersBeyondFourGibibytes)
{
    const std::uint32_t hole = 0xFFFFFFF0;
    const std::string far = mDirectory.path() + "/far.zip";
    writeZip(far, {{"far", Text}});
    writeZip(mPath, {{"n", "", "", false, false, hole, {}, ""}});
    std::filesystem::resize_file(mPath, 31 + std::uintmax_t{hole}); // sparse: occupies a few blocks
    std::ofstream(mPath, std::ios::app) << std::ifstream(far).rdbuf();
    EXPECT_THAT(ZipFile(mPath).getFiles(), testing::ElementsAre("n"));
}

TEST_F(ZipFileTest, WhatIsNoArchiveHasNoMembers)
{
    std::ofstream(mPath) << "#!/bin/sh self-extracting stub, longer than a header" << std::string(100, ' ');
    const std::string pipe = mDirectory.path() + "/pipe";
    const std::string missing = mDirectory.path() + "/missing";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    testing::internal::CaptureStdout();
    for (const std::string& path : {mPath, mDirectory.path(), pipe, missing}) {
        ZipFile archive(path);
        EXPECT_EQ(archive.exists(), path != missing);
        EXPECT_EQ(read(archive), std::nullopt);
        EXPECT_THAT(archive.getFiles(), testing::IsEmpty()); // and does not try, or complain, again
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "could not open <" + missing + ">\n");
}
