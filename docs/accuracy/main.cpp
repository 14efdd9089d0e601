// Prints one of the tables of docs/accuracy.md, or all of them.
//
//     accuracy [TABLE]

#include "EarthTables.h"
#include "TerrainTables.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

struct Entry
{
    const char* name;
    void (*print)();
};

constexpr Entry Tables[] = {{"distance", Accuracy::printDistance},
                            {"bearing", Accuracy::printBearing},
                            {"step", Accuracy::printStep},
                            {"plane-distance", Accuracy::printPlaneDistance},
                            {"plane-bearing", Accuracy::printPlaneBearing},
                            {"round-trip", Accuracy::printRoundTrip},
                            {"outbound", Accuracy::printOutbound},
                            {"fly-by", Accuracy::printFlyBy},
                            {"dme", Accuracy::printDme},
                            {"intersection", Accuracy::printIntersection},
                            {"cartesian", Accuracy::printCartesian},
                            {"single-precision", Accuracy::printSinglePrecision},
                            {"hills", Accuracy::printHills},
                            {"terraces", Accuracy::printTerraces}};

} // namespace

int main(int argc, char** argv)
{
    const std::string wanted = argc > 1 ? argv[1] : "";
    bool found = false;
    for (const Entry& table : Tables) {
        if (wanted.empty()) {
            std::printf("\n%s\n", table.name);
        }
        if (wanted.empty() || wanted == table.name) {
            table.print();
            found = true;
        }
    }
    if (!found) {
        std::fprintf(stderr, "there is no table <%s>\n", wanted.c_str());
    }
    return found ? EXIT_SUCCESS : EXIT_FAILURE;
}
