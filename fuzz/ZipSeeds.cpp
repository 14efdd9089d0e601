// Writes small archives for ZipFuzzer into a folder: ZipFuzzerSeeds <folder>

#include <support/ZipWriter.h>

#include <cstdlib>
#include <string>

using Tavik::Support::writeZip;

int main(int argc, char** argv)
{
    if (argc != 2) {
        return EXIT_FAILURE;
    }
    const std::string folder = argv[1];
    writeZip(folder + "/one.zip", {{"N47E011.hgt", std::string(300, 'h')}});
    writeZip(folder + "/two.zip", {{"readme.txt", "terrain"}, {"data/height.txt", "0123456789 0123456789"}});
    writeZip(folder + "/empty_member.zip", {{"empty", ""}, {"folder/", ""}});
    writeZip(folder + "/stored.zip", {{"stored.txt", "as it is", {}, true}});
    writeZip(folder + "/descriptor.zip",
             {{"first", "with a descriptor", "extra", false, true}, {"second", "behind it"}});
}
