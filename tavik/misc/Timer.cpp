#include <tavik/misc/Timer.h>

#include <sys/time.h>

#include <iostream>
#include <locale>
#include <sstream>

namespace Tavik::Misc {

Timer::Timer(const std::string& name) : mStartTime(getTime()), mName(name) {}

Timer::~Timer()
{
    mEndTime = getTime();
    // A stream of its own: std::cout may be set to another precision, width or base.
    std::ostringstream line;
    line.imbue(std::locale::classic());
    line << mName << " : " << (mEndTime - mStartTime) * 1000.0 << " ms\n";
    const std::string text = line.str();
    std::cout.write(text.data(), static_cast<std::streamsize>(text.size()));
}

double Timer::getTime()
{
    timeval now = {};
    gettimeofday(&now, nullptr);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_usec) * 1e-6;
}

} // namespace Tavik::Misc
