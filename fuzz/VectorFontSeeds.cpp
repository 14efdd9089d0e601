// Writes small character sets for VectorFontFuzzer: VectorFontFuzzerSeeds <folder>

#include <tavik/opengl/VectorCharset.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

using Tavik::OpenGL::CHARDEF_STRUCT;

namespace {

template <typename Value>
void write(std::ofstream& file, const Value& value)
{
    file.write(reinterpret_cast<const char*>(&value), sizeof(value));
}

void writeSeed(const std::string& path, unsigned int characterCount, const std::vector<CHARDEF_STRUCT>& records)
{
    std::ofstream file(path, std::ios::binary);
    write(file, characterCount);
    write(file, 13.0f);
    for (const CHARDEF_STRUCT& record : records) {
        write(file, record);
    }
    file << "text";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        return EXIT_FAILURE;
    }
    const std::string folder = argv[1];
    writeSeed(folder + "/glyphs", 3,
              {{0, 0, 1}, {0, 10, 2}, {0, 10, 1}, {8, 10, 3}, {0, 0, 3}, {1, 1, 1}, {2, 2, 7}, {3, 3, 1}, {4, 4, 3}});
    writeSeed(folder + "/endless", 128, {{0, 0, 1}, {5, 5, 2}, {1, 1, 1}});
    writeSeed(folder + "/empty", 0, {});
}
