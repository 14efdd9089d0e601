#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace Tavik::Support {

/// One member of an archive to be written. What is left as it is gives a member that every program reads.
struct ZipMember
{
    std::string name;
    std::string content;
    std::string extraField = {};
    bool stored = false;         ///< not compressed
    bool dataDescriptor = false; ///< flag bit 3, and 12 bytes behind the data that repeat checksum and sizes

    /// Lies for tests of readers, in the local header; the central directory tells the same ones.
    std::optional<std::uint32_t> claimedCompressedSize = {};
    std::optional<std::uint32_t> claimedUncompressedSize = {};
    /// Written in place of the compressed content; its length is the compressed size.
    std::optional<std::string> rawData = {};
};

/// Writes ZIP archives: deflated members with their sizes in the local headers, then the central directory.
///
///     ZipWriter writer("N47E011.SRTMGL3.hgt.zip");
///     writer.add("N47E011.hgt", heights.data(), heights.size());
///     if (!writer.close()) { ... }
///
/// No member and no archive may reach 4 GiB or 65536 members.
class ZipWriter
{
public:
    explicit ZipWriter(const std::string& path);
    ~ZipWriter();

    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    /// @param level  of zlib's compression, 1 (fast) to 9 (small)
    void add(const std::string& name, const void* content, std::size_t size, int level = 6);
    void add(const ZipMember& member);

    /// Writes the central directory and closes the file.
    /// @return whether everything since the opening succeeded
    bool close();

private:
    struct Entry;

    void write(const Entry& entry);
    void write(const std::string& bytes);

    std::FILE* mFile;
    std::uint32_t mOffset = 0;
    std::vector<std::string> mCentralHeaders;
    bool mGood;
};

/// An archive of these members at path; ends the program where it cannot be written.
void writeZip(const std::string& path, const std::vector<ZipMember>& members);

} // namespace Tavik::Support
