#include <moving_map/FrameStatistics.h>

#include <algorithm>
#include <cstdio>

namespace MovingMap {

void FrameStatistics::add(double seconds)
{
    ++mFrames;
    mTotalSeconds += seconds;
    mWorstSeconds = std::max(mWorstSeconds, seconds);
}

void FrameStatistics::print() const
{
    const double mean = mFrames == 0 ? 0.0 : mTotalSeconds / static_cast<double>(mFrames);
    std::printf("frames %zu, mean %.2f ms, worst %.2f ms\n", mFrames, 1e3 * mean, 1e3 * mWorstSeconds);
}

} // namespace MovingMap
