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

// Half a megabyte: larger than one piece of input or of history; neither constant nor random.
std::string longText()
{
    std::string text;
    for (int i = 0; i < 100000; ++i) {
        text += std::to_string(i * 7919 % 100003) + ' ';
    }
    return text;
}

/// What a read handed out, its buffer released; nothing where it answered null, and then the size must be 0.
Content taken(unsigned char* bytes, unsigned int size)
{
    const std::unique_ptr<unsigned char[]> owner(bytes);
    if (bytes == nullptr) {
        EXPECT_EQ(size, 0u);
        return std::nullopt;
    }
    EXPECT_EQ(bytes[size], 0);
    return std::string(bytes, bytes + size);
}

Content readFirst(ZipFile& archive)
{
    unsigned int size = 99;
    unsigned char* bytes = archive.readFirstFile(size);
    return taken(bytes, size);
}

Content readNamed(ZipFile& archive, const std::string& name)
{
    unsigned int size = 99;
    unsigned char* bytes = archive.readFile(name, size);
    return taken(bytes, size);
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
    const std::string odd("a\0b", 3);
    writeZip(mPath, {{"dir/long.txt", longText(), "extra field"},
                     {"empty", ""},
                     {"described", "with data descriptor", "", false, true},
                     {odd, "name with NUL"},
                     {std::string(65535, 'n'), "longest name"}});
    ZipFile archive(mPath);
    EXPECT_TRUE(archive.exists());
    EXPECT_EQ(archive.nrFiles(), 0u); // nothing is read before it is needed
    EXPECT_THAT(archive.getFiles(),
                testing::ElementsAre("dir/long.txt", "empty", "described", odd, std::string(65535, 'n')));
    EXPECT_EQ(archive.nrFiles(), 5u);
    EXPECT_EQ(archive.members()[0].headerOffset, 0u);
    EXPECT_EQ(archive.members()[0].dataOffset, 30u + 12u + 11u);

    EXPECT_EQ(readFirst(archive), longText());
    EXPECT_EQ(readNamed(archive, "empty"), "");
    EXPECT_EQ(readNamed(archive, "described"), "with data descriptor");
    EXPECT_EQ(readNamed(archive, odd), "name with NUL");
    EXPECT_EQ(readNamed(archive, std::string(65535, 'n')), "longest name");
    EXPECT_EQ(readNamed(archive, "Empty"), std::nullopt);
}

TEST_F(ZipFileTest, DeceitfulMembersGiveTheirStatedAnswer)
{
    const std::string text = "0123456789";
    // A deflate stream of 16000 empty blocks without end, and one whose block type does not exist.
    std::string emptyBlocks;
    for (int i = 0; i < 16000; ++i) {
        emptyBlocks += std::string("\x00\x00\x00\xFF\xFF", 5);
    }
    const auto lying = [&](std::optional<std::uint32_t> compressed, std::optional<std::uint32_t> uncompressed) {
        return ZipMember{"n", text, "", false, false, compressed, uncompressed, std::nullopt};
    };
    const auto raw = [&](const std::string& data) {
        return ZipMember{"n", text, "", false, false, std::nullopt, std::nullopt, data};
    };
    const struct
    {
        const char* name;
        ZipMember member;
        Content expected;
    } cases[] = {
        {"promises 4 GiB", lying({}, 0xFFFFFFFF), {}},
        {"promises what deflate cannot reach", lying({}, 20 * 1032), {}},
        {"promises three bytes more", lying({}, 13), text + std::string(3, '\0')},
        {"promises a byte less", lying({}, 9), {}},
        {"promises nothing", lying({}, 0), {}},
        {"claims data of 4 GiB", lying(0xFFFFFFFF, {}), {}},
        {"claims data beyond the end", lying(10000, {}), {}},
        // 30 bytes of header and one of name: in 32 bits the next header would be the first one.
        {"claims data that lead back to the start", lying(0xFFFFFFFF - 30, {}), {}},
        {"claims a byte less of data", lying(11, {}), {}},
        {"claims no data", lying(0, {}), {}},
        {"stored", {"n", std::string(10, '\x07'), "", true}, {}},
        {"empty blocks without end", raw(emptyBlocks), {}},
        {"no such block type", raw(std::string(20, '\x07')), {}},
        {"more behind the end of the stream", raw(std::string("\x03\x00 more", 7)), std::string(10, '\0')},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        writeZip(mPath, {c.member});
        ZipFile archive(mPath);
        EXPECT_EQ(archive.getFiles().size(), 1u);
        EXPECT_EQ(readFirst(archive), c.expected);
    }
}

TEST_F(ZipFileTest, ArchiveMayEndAnywhere)
{
    const std::string text = "0123456789";
    writeZip(mPath, {{"name", text, "extra"}});
    const std::size_t dataOffset = 30 + 4 + 5;
    const std::size_t dataEnd = dataOffset + ZipFile(mPath).members().at(0).compressedSize;
    for (std::size_t size = dataEnd + 3; size-- > 0;) {
        SCOPED_TRACE(size);
        std::filesystem::resize_file(mPath, size);
        ZipFile archive(mPath);
        EXPECT_EQ(readFirst(archive), size >= dataEnd ? Content(text) : std::nullopt);
        EXPECT_EQ(archive.nrFiles(), size >= dataOffset ? 1u : 0u);
    }
}

TEST_F(ZipFileTest, ListsThousandsOfEmptyMembers)
{
    const std::size_t count = 20000;
    writeZip(mPath, std::vector<ZipMember>(count, {"n", "", "", true}));
    EXPECT_EQ(ZipFile(mPath).getFiles().size(), count);
}

TEST_F(ZipFileTest, StopsAtMembersBeyondFourGibibytes)
{
    const std::uint32_t hole = 0xFFFFFFF0;
    writeZip(mPath, {{"n", "", "", false, false, hole, {}, ""}});
    writeZip(mPath + "2", {{"far", "text"}});
    std::filesystem::resize_file(mPath, 31 + std::uintmax_t{hole}); // sparse: occupies a few blocks
    std::ofstream(mPath, std::ios::app) << std::ifstream(mPath + "2").rdbuf();
    EXPECT_THAT(ZipFile(mPath).getFiles(), testing::ElementsAre("n"));
}

TEST_F(ZipFileTest, WhatIsNoArchiveHasNoMembers)
{
    std::ofstream(mPath) << "#!/bin/sh self-extracting stub, longer than a header" << std::string(100, ' ');
    const std::string pipe = mDirectory.path() + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {mPath, mDirectory.path(), pipe}) {
        SCOPED_TRACE(path);
        ZipFile archive(path);
        EXPECT_TRUE(archive.exists());
        EXPECT_EQ(readFirst(archive), std::nullopt);
    }
}

TEST_F(ZipFileTest, SaysOnceThatAnArchiveIsMissing)
{
    ZipFile archive(mPath);
    EXPECT_FALSE(archive.exists());
    testing::internal::CaptureStdout();
    EXPECT_EQ(readFirst(archive), std::nullopt);
    EXPECT_THAT(archive.getFiles(), testing::IsEmpty());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "could not open <" + mPath + ">\n");
}

TEST_F(ZipFileTest, FieldsBehindTheEndOfAFileAreEmpty)
{
    std::ofstream(mPath) << "\x01\x02\x03\x04tex";
    std::FILE* file = std::fopen(mPath.c_str(), "rb");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(ZipFile::getUInt(file), 0x04030201u);
    EXPECT_EQ(ZipFile::getUInt(file), 0u); // three bytes are left: no half of a number either
    std::fseek(file, 6, SEEK_SET);
    EXPECT_EQ(ZipFile::getUShort(file), 0);
    std::fseek(file, 4, SEEK_SET);
    EXPECT_EQ(ZipFile::getString(file, 2), "te");
    std::rewind(file);
    EXPECT_EQ(ZipFile::getData(file, 0xFFFFFFFF), nullptr);
    EXPECT_EQ(ZipFile::getString(file, 1), "");
    std::fclose(file);
}
