// PNG files. The checksums of all chunks are put right first: with wrong ones nothing behind the first chunk is read.

#include <fuzz/InputFile.h>
#include <fuzz/Require.h>
#include <tavik/image/PngReader.h>

#include <zlib.h>

#include <cstdlib>
#include <vector>

using Tavik::Fuzz::require;
using Tavik::Image::PngReader;

namespace {

constexpr std::size_t SignatureSize = 8;
constexpr std::size_t ChunkOverhead = 12; // length, type and checksum

// A few bytes of data may fill as many pixels as there is memory for, which only costs time here.
constexpr std::uint64_t MostPixels = 250'000;

std::uint32_t bigEndian(const std::uint8_t* bytes)
{
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
}

void putChecksumsRight(std::vector<std::uint8_t>& file)
{
    std::size_t chunk = SignatureSize;
    while (file.size() >= chunk + ChunkOverhead) {
        const std::uint32_t length = bigEndian(&file[chunk]);
        if (length > file.size() - chunk - ChunkOverhead) {
            return;
        }
        const auto checksum = static_cast<std::uint32_t>(crc32(0, &file[chunk + 4], static_cast<uInt>(length + 4)));
        for (std::size_t i = 0; i < 4; ++i) {
            file[chunk + 8 + length + i] = static_cast<std::uint8_t>(checksum >> (24 - 8 * i));
        }
        chunk += length + ChunkOverhead;
    }
}

bool isTooLarge(const std::vector<std::uint8_t>& file)
{
    constexpr std::size_t WidthOffset = SignatureSize + 8;
    return file.size() >= WidthOffset + 8 &&
           std::uint64_t{bigEndian(&file[WidthOffset])} * bigEndian(&file[WidthOffset + 4]) > MostPixels;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Tavik::Fuzz::InputFile file;
    std::vector<std::uint8_t> content(data, data + size);
    if (isTooLarge(content)) {
        return 0;
    }
    putChecksumsRight(content);
    file.write(content.data(), content.size());

    PngReader::ImageRGBA image;
    if (!PngReader::readFileRGBA(file.path(), image)) {
        require(image.data == nullptr && image.width == 0 && image.height == 0);
        return 0;
    }
    require(image.width > 0 && image.height > 0 && image.data != nullptr);
    // Every pixel is there and has a value, which the sanitizers watch.
    const std::size_t byteCount = std::size_t{image.width} * image.height * 4;
    const auto checksum = adler32(1, image.data, static_cast<uInt>(byteCount));
    require(checksum != 0);
    std::free(image.data);
    return 0;
}
