// Distances and bearings along a route; no window.

#include <tavik/geodetic/EarthModel.h>
#include <tavik/misc/CmdLine.h>

#include <cstdio>
#include <cstdlib>

using namespace Tavik;

struct Waypoint
{
    const char* name;
    double lat; // degrees
    double lon;
};

int main(int argc, char** argv)
{
    Misc::CmdLine& options = Misc::CmdLine::instance();
    options.addSwitch("--metres", "print metres instead of nautical miles");
    if (!options.parse(argc, argv)) {
        options.printUsage();
        return EXIT_FAILURE;
    }
    const bool inMetres = options.getSwitch("--metres");

    const Waypoint route[] = {{"Nice", 43.6584, 7.2159},
                              {"Turin", 45.2008, 7.6496},
                              {"Geneva", 46.2381, 6.1090},
                              {"Zurich", 47.4647, 8.5492}};
    double total = 0.0;
    const Waypoint* from = nullptr;
    for (const Waypoint& to : route) {
        if (from != nullptr) {
            const double metres = Geodetic::calcDistance(from->lat, from->lon, to.lat, to.lon);
            const double bearing = Geodetic::calcBearing(from->lat, from->lon, to.lat, to.lon);
            std::printf("%-8s %-8s %03.0f°  %9.1f %s\n", from->name, to.name, bearing,
                        inMetres ? metres : metres / Geodetic::MetresPerArcMinute, inMetres ? "m" : "NM");
            total += metres;
        }
        from = &to;
    }
    std::printf("total %26.1f %s\n", inMetres ? total : total / Geodetic::MetresPerArcMinute, inMetres ? "m" : "NM");
    return EXIT_SUCCESS;
}
