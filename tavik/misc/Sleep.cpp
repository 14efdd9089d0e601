#include <tavik/misc/Sleep.h>

#include <cstdint>
#include <ctime>

namespace Tavik::Misc {

void sleepMs(unsigned int ms)
{
    constexpr std::uint32_t NanosecondsPerMillisecond = 1000000;
    const std::uint32_t nanoseconds = ms * NanosecondsPerMillisecond;
    timespec request = {};
    request.tv_nsec = static_cast<long>(nanoseconds);
    nanosleep(&request, nullptr); // answers an error, and does not sleep, from 1,000,000,000 ns on
}

} // namespace Tavik::Misc
