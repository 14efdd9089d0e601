#include <moving_map/FrameStatistics.h>

#include <time.h>

#include <algorithm>
#include <cstdio>

namespace MovingMap {

namespace {

constexpr double LongestSeconds = 1.0 / 60.0;

double threadCpuSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

} // namespace

void Stopwatch::restart()
{
    mBegin = std::chrono::steady_clock::now();
    mCpuBegin = threadCpuSeconds();
}

FrameTime Stopwatch::elapsed() const
{
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - mBegin;
    return {seconds.count(), threadCpuSeconds() - mCpuBegin};
}

void FrameStatistics::add(const FrameTime& time)
{
    ++mFrames;
    if (time.seconds > LongestSeconds) {
        ++mLateFrames;
    }
    mTotal.seconds += time.seconds;
    mTotal.cpuSeconds += time.cpuSeconds;
    mWorst.seconds = std::max(mWorst.seconds, time.seconds);
    mWorst.cpuSeconds = std::max(mWorst.cpuSeconds, time.cpuSeconds);
}

void FrameStatistics::print() const
{
    const double perFrame = 1e3 / static_cast<double>(std::max<std::size_t>(mFrames, 1));
    std::printf("frames %zu, mean %.2f ms, worst %.2f ms; CPU mean %.3f ms, worst %.3f ms; late %zu\n", mFrames,
                perFrame * mTotal.seconds, 1e3 * mWorst.seconds, perFrame * mTotal.cpuSeconds, 1e3 * mWorst.cpuSeconds,
                mLateFrames);
}

} // namespace MovingMap
