#include <tavik/filesystem/ZipFile.h>

#include <tavik/filesystem/ArchiveFile.h>
#include <tavik/filesystem/Directory.h>
#include <tavik/filesystem/MemberInflater.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace Tavik::FileSystem {

namespace {

constexpr std::uint32_t LocalHeaderSignature = 0x04034B50; // "PK" 3 4
constexpr std::uint64_t LocalHeaderSize = 30;              // without name and extra field
constexpr unsigned int DataDescriptorFlag = 0x0008;
constexpr std::uint64_t DataDescriptorSize = 12; // without its optional signature

// Offsets are kept in 32 bits; an archive is walked no farther than they reach.
constexpr std::uint64_t MaximumOffset = std::numeric_limits<std::uint32_t>::max();

using Buffer = std::unique_ptr<unsigned char[]>;

/// The file's position moves on by length bytes, whether they are wanted or not.
bool skip(std::FILE* file, unsigned int length)
{
    return length == 0 || Buffer(ZipFile::getData(file, length)) != nullptr;
}

/// A number of so many bytes; 0 where the file ends first.
template <std::size_t Length>
unsigned int littleEndian(std::FILE* file)
{
    unsigned char bytes[Length] = {};
    if (std::fread(bytes, 1, Length, file) != Length) {
        return 0;
    }
    unsigned int value = 0;
    for (std::size_t i = Length; i-- > 0;) {
        value = value << 8 | bytes[i];
    }
    return value;
}

} // namespace

ZipFile::ZipFile(const std::string& path) : mPath(path) {}

bool ZipFile::exists() const
{
    return Directory::exists(mPath);
}

void ZipFile::readAllHeaders()
{
    mHeadersRead = true;
    mFiles.clear();
    std::uint64_t archiveSize = 0;
    const ArchiveFile file = openArchive(mPath, archiveSize);
    if (file == nullptr) {
        return;
    }
    std::uint64_t headerOffset = 0;
    std::uint64_t nextHeaderOffset = 0;
    while (headerOffset + LocalHeaderSize <= archiveSize && headerOffset <= MaximumOffset &&
           readHeader(file.get(), headerOffset, nextHeaderOffset)) {
        // A member without data ends where the file stands; seeking would throw stdio's buffer away.
        const bool there = nextHeaderOffset == mFiles.back().dataOffset;
        if (!there && fseeko(file.get(), static_cast<off_t>(nextHeaderOffset), SEEK_SET) != 0) {
            return;
        }
        headerOffset = nextHeaderOffset;
    }
}

/// Records the member whose local header starts at the file's position.
/// @return false where there is no whole header
bool ZipFile::readHeader(std::FILE* file, std::uint64_t headerOffset, std::uint64_t& nextHeaderOffset)
{
    if (getUInt(file) != LocalHeaderSignature) {
        return false;
    }
    getUShort(file); // version needed
    const unsigned int flags = getUShort(file);
    getUShort(file); // compression method
    getUShort(file); // modification time
    getUShort(file); // modification date
    getUInt(file);   // CRC-32
    FileData data;
    data.compressedSize = getUInt(file);
    data.uncompressedSize = getUInt(file);
    const unsigned int nameLength = getUShort(file);
    const unsigned int extraLength = getUShort(file);
    data.name = getString(file, nameLength);
    const std::uint64_t dataOffset = headerOffset + LocalHeaderSize + nameLength + extraLength;
    if (data.name.size() != nameLength || !skip(file, extraLength) || dataOffset > MaximumOffset) {
        return false;
    }
    data.headerOffset = static_cast<std::uint32_t>(headerOffset);
    data.dataOffset = static_cast<std::uint32_t>(dataOffset);
    nextHeaderOffset = dataOffset + data.compressedSize;
    if ((flags & DataDescriptorFlag) != 0) {
        nextHeaderOffset += DataDescriptorSize;
    }
    mFiles.push_back(std::move(data));
    return true;
}

unsigned int ZipFile::nrFiles() const
{
    return static_cast<unsigned int>(mFiles.size());
}

std::vector<std::string> ZipFile::getFiles()
{
    std::vector<std::string> names;
    for (const FileData& data : members()) {
        names.push_back(data.name);
    }
    return names;
}

const std::vector<ZipFile::FileData>& ZipFile::members()
{
    if (!mHeadersRead) {
        readAllHeaders();
    }
    return mFiles;
}

unsigned char* ZipFile::readFile(const std::string& name, unsigned int& size)
{
    size = 0;
    members();
    const auto found =
        std::find_if(mFiles.begin(), mFiles.end(), [&](const FileData& data) { return data.name == name; });
    return found == mFiles.end() ? nullptr : readFileContent(*found, size);
}

unsigned char* ZipFile::readFirstFile(unsigned int& size)
{
    size = 0;
    return members().empty() ? nullptr : readFileContent(mFiles.front(), size);
}

unsigned char* ZipFile::readFileContent(FileData& data, unsigned int& size)
{
    size = 0;
    MemberInflater inflater(mPath, data);
    if (!inflater.isOpen()) {
        return nullptr;
    }
    const std::size_t bufferSize = std::size_t{data.uncompressedSize} + 1;
    Buffer content(new (std::nothrow) unsigned char[bufferSize]);
    if (content == nullptr) {
        return nullptr;
    }
    const std::size_t length = inflater.read(content.get(), data.uncompressedSize);
    if (!inflater.finish()) {
        return nullptr;
    }
    std::memset(content.get() + length, 0, bufferSize - length);
    size = data.uncompressedSize;
    return content.release();
}

unsigned int ZipFile::getUInt(std::FILE* file)
{
    return littleEndian<4>(file);
}

unsigned short ZipFile::getUShort(std::FILE* file)
{
    return static_cast<unsigned short>(littleEndian<2>(file));
}

std::string ZipFile::getString(std::FILE* file, unsigned int length)
{
    const Buffer bytes(getData(file, length));
    return bytes == nullptr ? std::string() : std::string(bytes.get(), bytes.get() + length);
}

unsigned char* ZipFile::getData(std::FILE* file, unsigned int length)
{
    Buffer bytes(new (std::nothrow) unsigned char[std::size_t{length} + 1]);
    if (bytes == nullptr || std::fread(bytes.get(), 1, length, file) != length) {
        return nullptr;
    }
    bytes[length] = 0;
    return bytes.release();
}

} // namespace Tavik::FileSystem
