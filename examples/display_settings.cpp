// The settings of a program: read with defaults, changed, and kept for the next start.

#include <tavik/misc/CmdLine.h>
#include <tavik/misc/Property.h>

#include <cstdio>
#include <cstdlib>

using namespace Tavik;

int main(int argc, char** argv)
{
    Misc::CmdLine& options = Misc::CmdLine::instance();
    options.addParameter("--config", "file of the settings", "display.xml");
    options.addParameter("--range", "range of the display, nautical miles; empty for the one of last time", "");
    if (!options.parse(argc, argv)) {
        options.printUsage();
        return EXIT_FAILURE;
    }
    std::string file, range;
    options.getParameter("--config", file);

    Misc::Property& settings = Misc::Property::instance();
    if (!settings.setConfigFile(file)) {
        std::printf("no settings yet, going on with the defaults\n");
    }
    if (options.getParameter("--range", range)) {
        settings.setDouble("display.range", std::atof(range.c_str()));
    }
    std::printf("range %g NM, altitudes in %s, traffic %s\n", settings.getDouble("display.range", 40.0),
                settings.getString("display.units.altitude", "ft").c_str(),
                settings.getSwitch("feeds.traffic", true) ? "shown" : "hidden");

    settings.setInt("starts", settings.getInt("starts", 0) + 1);
    return settings.writeXmlFile() ? EXIT_SUCCESS : EXIT_FAILURE;
}
