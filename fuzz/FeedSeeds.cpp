// Writes messages of the traffic feed for FeedFuzzer: FeedFuzzerSeeds <folder>

#include <feeds/Messages.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

template <typename Bytes>
void writeSeed(const std::string& path, const Bytes& bytes)
{
    std::ofstream(path, std::ios::binary) << std::string(bytes.begin(), bytes.end());
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        return EXIT_FAILURE;
    }
    const std::string folder = argv[1];
    const Feeds::Movement movement = {47.25, 11.5, 3000.0f, 120.0f, 271.5f, -2.5f};
    writeSeed(folder + "/own_ship", encode(Feeds::OwnShip{7, movement}));
    writeSeed(folder + "/traffic", encode(Feeds::Traffic{0x4CA1FA, "TVK123", movement}));
}
