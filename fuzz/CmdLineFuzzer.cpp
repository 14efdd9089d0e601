// Command lines: the lines of the input are the arguments.

#include <fuzz/Arguments.h>
#include <fuzz/Require.h>
#include <tavik/misc/CmdLine.h>

#include <algorithm>
#include <string>

using Tavik::Fuzz::Arguments;
using Tavik::Fuzz::require;
using Tavik::Misc::CmdLine;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string names[] = {"-v", "--verbose", "-o", "--output", ""};
    CmdLine& options = CmdLine::instance(); // adding the options anew makes them forget the last input
    options.addSwitch(names[0], "a switch");
    options.addSwitch(names[1], "another");
    options.addParameter(names[2], "a parameter", "default");
    options.addParameter(names[3], "another", "");
    options.addSwitch(names[4], "without a name");

    Arguments arguments(data, size);
    const bool recognised = options.parse(arguments.count(), arguments.values());
    bool occurred = false;
    for (const std::string& name : names) {
        std::string value = "nothing";
        require(options.getParameter(name, value) == options.getSwitch(name));
        require(value != "nothing" || arguments.contains(value));
        require(!options.getSwitch(name) || arguments.contains(name));
        occurred = occurred || options.getSwitch(name);
    }
    require(recognised || arguments.count() > 1);
    require(occurred || !recognised || arguments.count() <= 1);
    require(!options.getSwitch("--unknown"));
    options.printUsage();
    return 0;
}
