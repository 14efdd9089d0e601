#pragma once

#include <chrono>
#include <cstddef>

namespace MovingMap {

/// How long a frame took.
struct FrameTime
{
    double seconds = 0.0;
    double cpuSeconds = 0.0; ///< in which the calling thread was at work
};

/// Measures frames on the thread that makes it.
class Stopwatch
{
public:
    Stopwatch() { restart(); }

    void restart();

    /// Since the last restart.
    FrameTime elapsed() const;

private:
    std::chrono::steady_clock::time_point mBegin;
    double mCpuBegin = 0.0;
};

/// Times of frames, from one to the next.
class FrameStatistics
{
public:
    void add(const FrameTime& time);

    /// Prints the number of frames, their mean and worst times, and how many took longer than a display that shows 60 a
    /// second waits for them, to standard output.
    void print() const;

private:
    std::size_t mFrames = 0;
    std::size_t mLateFrames = 0;
    FrameTime mTotal;
    FrameTime mWorst;
};

} // namespace MovingMap
