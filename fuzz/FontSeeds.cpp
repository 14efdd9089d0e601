// Writes a small TrueType font for FontFuzzer: FontFuzzerSeeds <folder>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace {

std::string bytes16(const std::vector<int>& values)
{
    std::string result;
    for (const int value : values) {
        result += static_cast<char>(value >> 8 & 0xFF);
        result += static_cast<char>(value & 0xFF);
    }
    return result;
}

std::string bytes32(std::size_t value)
{
    return bytes16({static_cast<int>(value >> 16 & 0xFFFF), static_cast<int>(value & 0xFFFF)});
}

struct Table
{
    std::string name; // in the order of the alphabet
    std::string data;
};

// Offsets, versions and sizes are those of the OpenType format; 1000 units to the em.
std::vector<Table> tables()
{
    const std::string box = bytes16({1, 0, 0, 600, 700, 3, 0}) + "\1\1\1\1" // one contour of four points on the curve
                            + bytes16({0, 600, 0, -600, 0, 0, 700, 0});     // steps in x, then in y
    const std::string twoBoxes = bytes16({-1, 0, 0, 600, 700}) +            // the first glyph, and again moved
                                 bytes16({0x23, 1, 0, 0, 0x03, 1, 100, 50});
    return {
        {"cmap", bytes16({0, 1, 3, 1}) + bytes32(12) + bytes16({6, 14, 0, 65, 2, 1, 2})}, // A and B
        {"glyf", box + twoBoxes},
        {"head", bytes16({1, 0, 1, 0, 0, 0, 0x5F0F, 0x3CF5, 0, 1000, 0, 0, 0, 0,
                          0, 0, 0, 0, 0, 0, 600,    700,    0, 8,    2, 1, 0})}, // long offsets in loca
        {"hhea", bytes16({1, 0, 800, -200, 0, 650, 0, 0, 600, 1, 0, 0, 0, 0, 0, 0, 0, 3})},
        {"hmtx", bytes16({500, 0, 650, 0, 650, 0})},
        {"loca", bytes32(0) + bytes32(0) + bytes32(box.size()) + bytes32(box.size() + twoBoxes.size())},
        {"maxp", bytes16({1, 0, 3, 4, 1, 8, 2, 1, 0, 0, 0, 0, 0, 0, 2, 1})},
    };
}

std::string fontFile()
{
    const std::vector<Table> all = tables();
    std::string directory = bytes16({1, 0, static_cast<int>(all.size()), 64, 2, 48});
    const std::size_t start = directory.size() + 16 * all.size();
    std::string data;
    for (const Table& table : all) {
        directory += table.name + bytes32(0) + bytes32(start + data.size()) + bytes32(table.data.size());
        data += table.data;
        data.resize((data.size() + 3) / 4 * 4);
    }
    return directory + data;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        return EXIT_FAILURE;
    }
    const std::string folder = argv[1];
    std::ofstream(folder + "/coverage.ttf", std::ios::binary) << fontFile() << '\0';
    std::ofstream(folder + "/distances.ttf", std::ios::binary) << fontFile() << '\3'; // see FontFuzzer.cpp
}
