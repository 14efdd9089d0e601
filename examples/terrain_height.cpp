// Height of the ground at a position, from a folder of terrain tiles; no window.

#include <tavik/filesystem/Directory.h>
#include <tavik/geodetic/HeightMap.h>
#include <tavik/misc/CmdLine.h>

#include <cstdio>
#include <cstdlib>

using namespace Tavik;

int main(int argc, char** argv)
{
    Misc::CmdLine& options = Misc::CmdLine::instance();
    options.addParameter("--terrain", "folder of DTED level 1 or zipped SRTM tiles", ".");
    options.addParameter("--lat", "latitude, degrees", "43.9958");
    options.addParameter("--lon", "longitude, degrees", "7.43");
    if (!options.parse(argc, argv)) {
        options.printUsage();
        return EXIT_FAILURE;
    }
    std::string folder, lat, lon;
    options.getParameter("--terrain", folder);
    options.getParameter("--lat", lat);
    options.getParameter("--lon", lon);
    if (!FileSystem::Directory::exists(folder)) {
        std::fprintf(stderr, "there is no folder <%s>\n", folder.c_str());
        return EXIT_FAILURE;
    }

    Geodetic::HeightMap terrain;
    terrain.setDataPath(folder);
    terrain.loadThread(); // a program with a window calls loadData, which scans in the background
    const double metres = terrain.getAltitude(std::atof(lat.c_str()), std::atof(lon.c_str()), true, false);
    std::printf("%.1f m\n", metres);
    return EXIT_SUCCESS;
}
