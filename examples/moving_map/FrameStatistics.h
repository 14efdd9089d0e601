#pragma once

#include <cstddef>

namespace MovingMap {

/// Times of frames, from one to the next.
class FrameStatistics
{
public:
    void add(double seconds);

    /// Prints the number of frames, their mean and worst time, to standard output.
    void print() const;

private:
    std::size_t mFrames = 0;
    double mTotalSeconds = 0.0;
    double mWorstSeconds = 0.0;
};

} // namespace MovingMap
