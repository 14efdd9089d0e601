// Writes small streams for MessageFuzzer into a folder: MessageFuzzerSeeds <folder>

#include <tavik/network/MsgHeader.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

using Tavik::Network::MsgHeader;

namespace {

std::string message(unsigned int type, const std::string& payload, unsigned short version = MsgHeader::Version)
{
    MsgHeader header;
    header.version = version;
    header.msgType = type;
    header.dataLength = static_cast<unsigned int>(payload.size());
    std::string bytes(sizeof header, '\0');
    std::memcpy(bytes.data(), &header, sizeof header);
    return bytes + payload;
}

/// In pieces of so many bytes.
void write(const std::string& file, const std::string& stream, std::size_t piece)
{
    std::ofstream out(file, std::ios::binary);
    for (std::size_t i = 0; i < stream.size(); i += piece) {
        const std::string bytes = stream.substr(i, piece);
        out << static_cast<char>(bytes.size()) << bytes;
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        return EXIT_FAILURE;
    }
    const std::string folder = argv[1];
    const std::string three = message(1, "hello") + message(2, "") + message(3, std::string(100, 'x'));
    write(folder + "/whole", three, 255);
    write(folder + "/bytes", three, 1);
    write(folder + "/pieces", three, 23);
    write(folder + "/other_version", message(1, "hello") + message(2, "drop", 0x1204) + message(3, "behind"), 50);
    MsgHeader endless;
    endless.dataLength = 0xFFFFFFFF;
    write(folder + "/endless", std::string(reinterpret_cast<const char*>(&endless), sizeof endless), 24);
    std::ofstream full(folder + "/full", std::ios::binary | std::ios::app);
    full << '\x18' << std::string(reinterpret_cast<const char*>(&endless), sizeof endless) << std::string(17, '\0');
    MsgHeader large;
    large.dataLength = 130'000;
    std::ofstream zeros(folder + "/large", std::ios::binary);
    zeros << '\x18' << std::string(reinterpret_cast<const char*>(&large), sizeof large) << std::string(2, '\0');
}
