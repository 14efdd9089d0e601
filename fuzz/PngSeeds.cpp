// Writes a small PNG file of every colour type, depth and interlacing for PngFuzzer: PngFuzzerSeeds <folder>

#include <zlib.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

const std::string Signature = "\x89PNG\r\n\x1a\n";

constexpr unsigned int Side = 9; // the passes of interlacing all have pixels, and rows of bits end within a byte

std::string bigEndian(std::uint32_t value)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(value >> shift & 0xFF);
    }
    return bytes;
}

std::string chunk(const std::string& type, const std::string& data)
{
    const std::string checked = type + data;
    const auto* bytes = reinterpret_cast<const Bytef*>(checked.data());
    const auto checksum = crc32(0, bytes, static_cast<uInt>(checked.size()));
    return bigEndian(static_cast<std::uint32_t>(data.size())) + checked +
           bigEndian(static_cast<std::uint32_t>(checksum));
}

std::string deflated(const std::string& data)
{
    std::string output(compressBound(static_cast<uLong>(data.size())), '\0');
    auto length = static_cast<uLongf>(output.size());
    compress2(reinterpret_cast<Bytef*>(output.data()), &length, reinterpret_cast<const Bytef*>(data.data()),
              static_cast<uLong>(data.size()), Z_BEST_COMPRESSION);
    output.resize(length);
    return output;
}

// Rows with their filter bytes; of an interlaced picture more than it needs, which a reader leaves.
std::string rows(unsigned int bitsPerPixel, bool interlaced)
{
    std::string result;
    for (unsigned int row = 0; row < Side * (interlaced ? 2 : 1); ++row) {
        result += static_cast<char>(interlaced ? 0 : row % 5); // each of the filters
        for (unsigned int byte = 0; byte < (Side * bitsPerPixel + 7) / 8; ++byte) {
            result += static_cast<char>(interlaced ? 0 : row * 31 + byte * 7);
        }
    }
    return result;
}

struct Kind
{
    char colorType;
    unsigned int channels;
    std::string depths;
};

void writePng(const std::string& path, const Kind& kind, char depth, bool interlaced)
{
    const std::string header =
        bigEndian(Side) + bigEndian(Side) + depth + kind.colorType + '\0' + '\0' + static_cast<char>(interlaced);
    std::string file = Signature + chunk("IHDR", header);
    if (kind.colorType == 3) {
        std::string palette;
        for (int i = 0; i < 3 << depth; ++i) {
            palette += static_cast<char>(i * 5);
        }
        file += chunk("PLTE", palette) + chunk("tRNS", "\x40\x80");
    }
    file += chunk("IDAT", deflated(rows(kind.channels * static_cast<unsigned int>(depth), interlaced)));
    std::ofstream(path, std::ios::binary) << file + chunk("IEND", "");
}

// A comment that claims a length of 1 GB.
void writeLongChunk(const std::string& path)
{
    const std::string header = bigEndian(Side) + bigEndian(Side) + '\10' + '\2' + std::string(3, '\0');
    std::ofstream(path, std::ios::binary) << Signature + chunk("IHDR", header) + bigEndian(1 << 30) + "tEXt";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        return EXIT_FAILURE;
    }
    const std::string folder = argv[1];
    const Kind kinds[] = {
        {0, 1, "\1\2\4\10\20"}, {2, 3, "\10\20"}, {3, 1, "\1\2\4\10"}, {4, 2, "\10\20"}, {6, 4, "\10\20"}};
    for (const Kind& kind : kinds) {
        for (const char depth : kind.depths) {
            for (const bool interlaced : {false, true}) {
                const std::string name = "/type" + std::to_string(kind.colorType) + "_depth" + std::to_string(depth) +
                                         (interlaced ? "_interlaced" : "");
                writePng(folder + name + ".png", kind, depth, interlaced);
            }
        }
    }
    writeLongChunk(folder + "/long_chunk.png");
}
