// The moving map's command line: the lines of the input are the arguments.

#include <fuzz/Arguments.h>
#include <fuzz/Require.h>
#include <moving_map/Options.h>

using namespace MovingMap;
using Tavik::Fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Tavik::Fuzz::Arguments arguments(data, size);
    Options options;
    std::string error;
    Settings settings;
    const bool isGood =
        readOptions(arguments.count(), arguments.values(), options, error) && overrideSettings(settings, error);
    require(isGood == error.empty());
    if (isGood) {
        const double range = settings.display.rangeMiles;
        require(range >= SmallestRangeMiles && range <= LargestRangeMiles);
        require(settings.widthPixels >= 64 && settings.heightPixels >= 64 && options.frames >= 0);
        require(options.startSeconds >= 0.0 && options.speedFactor > 0.0);
    }
    return 0;
}
