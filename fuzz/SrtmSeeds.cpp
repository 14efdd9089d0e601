// Writes file names with small archives for SrtmFuzzer: SrtmFuzzerSeeds <folder>

#include <support/ZipWriter.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

using namespace Tavik::Support;

namespace {

constexpr std::size_t ThreeSecondsSize = std::size_t{2} * 1201 * 1201;

void writeSeed(const std::string& path, const std::string& name, const ZipMember& member)
{
    writeZip(path, {member});
    std::ifstream archive(path, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(archive), {}};
    std::ofstream(path, std::ios::binary) << name << '\n' << content;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        return EXIT_FAILURE;
    }
    const std::string folder = argv[1];
    writeSeed(folder + "/tile", "N47E011.SRTMGL3.hgt.zip", {"N47E011.hgt", std::string(ThreeSecondsSize, '\0')});
    writeSeed(folder + "/voids", "/data/S34W071.SRTMGL1.hgt.zip",
              {"S34W071.hgt", std::string(ThreeSecondsSize, '\x80')});
    writeSeed(folder + "/short", "E020N40.SRTMGL30.dem.zip", {"E020N40.DEM", std::string(100, '\1')});
}
