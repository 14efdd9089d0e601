#pragma once

#include <tavik/Export.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace Tavik::FileSystem {

/// Reads deflated members of a ZIP archive (format: PKWARE APPNOTE, local file headers; RFC 1951).
///
///     ZipFile archive("N47E011.SRTMGL1.hgt.zip");
///     unsigned int size = 0;
///     unsigned char* bytes = archive.readFirstFile(size);
///     if (bytes != nullptr) { ... }
///     delete[] bytes;
///
/// The archive is walked along its local headers from the first byte on; the central directory is never read. Hence
/// an archive that starts with something else lists nothing, and what cannot be read is:
/// - stored (uncompressed) members: every member is inflated, whatever its method says;
/// - members whose local header leaves the sizes zero and gives them in a data descriptor, and descriptors with the
///   optional signature (a descriptor without it is skipped);
/// - members that start beyond 4 GiB, and everything behind them.
/// Checksums are not checked.
///
/// Nothing throws. Anything but a regular file reads as an archive without members. Different objects may be used from
/// different threads.
class TAVIK_API ZipFile
{
public:
    /// What the archive says about one member. Offsets and sizes are in bytes, offsets from the start of the archive.
    struct FileData
    {
        std::uint32_t headerOffset = 0;     ///< of the local header
        std::uint32_t dataOffset = 0;       ///< of the compressed data
        std::uint32_t uncompressedSize = 0; ///< as the header says
        std::uint32_t compressedSize = 0;   ///< as the header says
        std::string name;                   ///< with the path stored in the archive
    };

    /// Remembers the path; nothing is read yet.
    explicit ZipFile(const std::string& path);

    /// Whether the path names anything at all.
    bool exists() const;

    /// Reads all local headers. The other calls do so once when they need them; an archive that could not be read is
    /// not tried again. Where the archive cannot be opened, prints "could not open <path>" to standard output and the
    /// system's reason to standard error.
    void readAllHeaders();

    /// Number of members read by readAllHeaders so far; reads nothing itself.
    unsigned int nrFiles() const;

    /// Names of the members, in the order of the archive.
    std::vector<std::string> getFiles();

    /// The members themselves, in the order of the archive.
    const std::vector<FileData>& members();

    /// Contents of the first member with exactly this name.
    /// @param name  path as stored in the archive; letter case counts
    /// @param size  receives the number of bytes, 0 on failure
    /// @return a buffer of size + 1 bytes that the caller releases with delete[] (the last byte is 0); null when there
    ///         is no such member or it cannot be inflated
    unsigned char* readFile(const std::string& name, unsigned int& size);

    /// Contents of the first member, as from readFile.
    unsigned char* readFirstFile(unsigned int& size);

    /// Contents of a member, as from readFile.
    ///
    /// Data that end early are filled up with zeros to the size the archive promises; data that go on beyond it, end in
    /// the middle or could never become as large (deflate shrinks by 1032 at most) give null. Prints as readAllHeaders
    /// does where the archive cannot be opened.
    unsigned char* readFileContent(FileData& data, unsigned int& size);

    /// @{
    /// Little-endian numbers from the file's current position; 0 where the file ends first.
    static unsigned int getUInt(std::FILE* file);
    static unsigned short getUShort(std::FILE* file);
    /// @}

    /// The next bytes of a file as text, which may contain NUL; empty where the file ends first.
    static std::string getString(std::FILE* file, unsigned int length);

    /// The next bytes of a file, followed by one spare byte of 0.
    /// @return null where the file ends first or memory is short; the caller releases it with delete[]
    static unsigned char* getData(std::FILE* file, unsigned int length);

private:
    bool readHeader(std::FILE* file, std::uint64_t headerOffset, std::uint64_t& nextHeaderOffset);

    std::string mPath;
    std::vector<FileData> mFiles;
    bool mHeadersRead = false;
};

} // namespace Tavik::FileSystem
