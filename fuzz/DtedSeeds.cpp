// Writes small DTED files for DtedFuzzer, without their second and third header record: DtedFuzzerSeeds <folder>

#include <support/DtedWriter.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

using namespace Tavik::Support;

namespace {

constexpr std::size_t UserHeaderSize = 80;
constexpr std::size_t OtherHeadersSize = 648 + 2700;

void writeSeed(const std::string& path, const DtedGrid& grid, const DtedHeights& height)
{
    writeDted(path, grid, height);
    std::ifstream whole(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(whole), {}};
    content.erase(UserHeaderSize, OtherHeadersSize);
    std::ofstream(path, std::ios::binary) << content;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        return EXIT_FAILURE;
    }
    const std::string folder = argv[1];
    const auto hills = [](unsigned int i, unsigned int j) { return static_cast<int>(100 * i + 10 * j); };
    const auto terraces = [](unsigned int i, unsigned int j) { return static_cast<int>((i / 2) * 5 + j); };
    const auto voids = [](unsigned int i, unsigned int j) { return (i + j) % 2 == 0 ? DtedVoid : -7; };
    writeSeed(folder + "/hills.dt1", {47, 11, 5, 4, 9000, 9000}, hills);
    writeSeed(folder + "/terraces.dt1", {-34, -71, 12, 3, 3000, 9000}, terraces);
    writeSeed(folder + "/voids.dt1", {0, 0, 3, 3, 9999, 9999}, voids);
    writeSeed(folder + "/column.dt1", {89, 179, 8, 1, 30, 30}, hills);
    writeSeed(folder + "/row.dt1", {-90, -180, 1, 8, 30, 60}, hills);
}
