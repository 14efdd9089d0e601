#include <support/ZipWriter.h>

#include <zlib.h>

#include <cstdlib>

namespace Tavik::Support {

namespace {

constexpr std::uint32_t LocalHeaderSignature = 0x04034B50;
constexpr std::uint32_t CentralHeaderSignature = 0x02014B50;
constexpr std::uint32_t EndSignature = 0x06054B50;
constexpr std::uint16_t VersionNeeded = 20; // deflate
constexpr std::uint16_t DataDescriptorFlag = 0x0008;
constexpr std::uint16_t Stored = 0;
constexpr std::uint16_t Deflated = 8;
constexpr std::uint16_t FirstOfJanuary1980 = 0x0021; // the same bytes in every run
constexpr int RawDeflate = -15;
constexpr int MemoryLevel = 8; // zlib's default

/// Appends little-endian numbers.
class Record
{
public:
    Record& u16(std::size_t value)
    {
        bytes += static_cast<char>(value & 0xFF);
        bytes += static_cast<char>(value >> 8 & 0xFF);
        return *this;
    }
    Record& u32(std::size_t value) { return u16(value & 0xFFFF).u16(value >> 16 & 0xFFFF); }
    Record& text(const std::string& value)
    {
        bytes += value;
        return *this;
    }

    std::string bytes;
};

const Bytef* zlibBytes(const void* bytes)
{
    return static_cast<const Bytef*>(bytes);
}

/// Empty where zlib fails; even an empty content deflates to two bytes.
std::string deflated(const void* content, std::size_t size, int level)
{
    z_stream stream = {};
    if (deflateInit2(&stream, level, Z_DEFLATED, RawDeflate, MemoryLevel, Z_DEFAULT_STRATEGY) != Z_OK) {
        return {};
    }
    std::string data(deflateBound(&stream, static_cast<uLong>(size)), '\0');
    stream.next_in = const_cast<Bytef*>(zlibBytes(content)); // zlib declares its input so, and only reads it
    stream.avail_in = static_cast<uInt>(size);
    stream.next_out = reinterpret_cast<Bytef*>(data.data());
    stream.avail_out = static_cast<uInt>(data.size());
    const int result = deflate(&stream, Z_FINISH);
    data.resize(result == Z_STREAM_END ? stream.total_out : 0);
    deflateEnd(&stream);
    return data;
}

std::uint32_t checksum(const void* content, std::size_t size)
{
    return static_cast<std::uint32_t>(crc32(0, zlibBytes(content), static_cast<uInt>(size)));
}

} // namespace

struct ZipWriter::Entry
{
    std::string name;
    std::string extraField;
    std::string data;
    std::uint16_t method;
    std::uint16_t flags;
    std::uint32_t checksum;
    std::size_t compressedSize;
    std::size_t uncompressedSize;
};

ZipWriter::ZipWriter(const std::string& path) : mFile(std::fopen(path.c_str(), "wb")), mGood(mFile != nullptr) {}

ZipWriter::~ZipWriter()
{
    close();
}

void ZipWriter::add(const std::string& name, const void* content, std::size_t size, int level)
{
    const std::string data = deflated(content, size, level);
    mGood = mGood && !data.empty();
    write({name, "", data, Deflated, 0, checksum(content, size), data.size(), size});
}

void ZipWriter::add(const ZipMember& member)
{
    const std::string& content = member.content;
    std::string data = content;
    if (member.rawData) {
        data = *member.rawData;
    } else if (!member.stored) {
        data = deflated(content.data(), content.size(), Z_DEFAULT_COMPRESSION);
    }
    const std::uint16_t flags = member.dataDescriptor ? DataDescriptorFlag : 0;
    const std::size_t compressedSize = member.claimedCompressedSize.value_or(static_cast<std::uint32_t>(data.size()));
    const std::size_t uncompressedSize =
        member.claimedUncompressedSize.value_or(static_cast<std::uint32_t>(content.size()));
    write({member.name, member.extraField, std::move(data), member.stored ? Stored : Deflated, flags,
           checksum(content.data(), content.size()), compressedSize, uncompressedSize});
}

void ZipWriter::write(const Entry& entry)
{
    Record shared; // by the local and the central header
    shared.u16(VersionNeeded).u16(entry.flags).u16(entry.method).u16(0).u16(FirstOfJanuary1980);
    shared.u32(entry.checksum).u32(entry.compressedSize).u32(entry.uncompressedSize);
    shared.u16(entry.name.size()).u16(entry.extraField.size());

    Record central;
    central.u32(CentralHeaderSignature).u16(VersionNeeded).text(shared.bytes);
    central.u16(0).u16(0).u16(0).u32(0); // comment, disk, attributes
    central.u32(mOffset).text(entry.name).text(entry.extraField);
    mCentralHeaders.push_back(std::move(central.bytes));

    Record local;
    local.u32(LocalHeaderSignature).text(shared.bytes).text(entry.name).text(entry.extraField);
    write(local.bytes);
    write(entry.data);
    if ((entry.flags & DataDescriptorFlag) != 0) {
        write(Record().u32(entry.checksum).u32(entry.compressedSize).u32(entry.uncompressedSize).bytes);
    }
}

bool ZipWriter::close()
{
    if (mFile == nullptr) {
        return mGood;
    }
    const std::size_t directoryOffset = mOffset;
    for (const std::string& header : mCentralHeaders) {
        write(header);
    }
    const std::size_t count = mCentralHeaders.size();
    Record end;
    end.u32(EndSignature).u16(0).u16(0).u16(count).u16(count);
    end.u32(mOffset - directoryOffset).u32(directoryOffset).u16(0);
    write(end.bytes);
    mGood = std::fclose(mFile) == 0 && mGood;
    mFile = nullptr;
    return mGood;
}

void ZipWriter::write(const std::string& bytes)
{
    mGood = mGood && mFile != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), mFile) == bytes.size();
    mOffset += static_cast<std::uint32_t>(bytes.size());
}

void writeZip(const std::string& path, const std::vector<ZipMember>& members)
{
    ZipWriter writer(path);
    for (const ZipMember& member : members) {
        writer.add(member);
    }
    if (!writer.close()) {
        std::perror(path.c_str());
        std::exit(EXIT_FAILURE);
    }
}

} // namespace Tavik::Support
