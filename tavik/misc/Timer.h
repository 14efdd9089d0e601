#pragma once

#include <tavik/Export.h>

#include <string>

namespace Tavik::Misc {

/// Prints how long a scope took.
///
///     {
///         Timer timer("load");
///         ...
///     } // prints "load : 12.5 ms"
///
/// The line goes to std::cout in default formatting (six significant digits), whatever the stream is set
/// to. Time is the wall clock: setting the clock meanwhile shows in the result.
class TAVIK_API Timer
{
public:
    /// Starts the time.
    explicit Timer(const std::string& name);
    ~Timer();

    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// Seconds since 1970-01-01 00:00 UTC, with a resolution of a microsecond. Safe from any thread.
    static double getTime();

private:
    double mStartTime; // seconds, as from getTime
    double mEndTime = 0.0;
    std::string mName;
};

} // namespace Tavik::Misc
