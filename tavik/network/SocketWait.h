#pragma once

#include <cstdint>

namespace Tavik::Network {

/// What a descriptor is waited for.
enum class Readiness
{
    Readable, ///< also at the end of the stream and after errors, which a receive then reports
    Writable  ///< also after errors and hang-ups, which a send then reports
};

constexpr std::int64_t WithoutLimit = -1;

/// Waits until a descriptor is ready; a signal does not cut the wait short.
/// @param fd  any number; what is not open fails at once
/// @param microseconds  the longest wait, 0 to look only, WithoutLimit for as long as it takes
/// @return 1 when ready, 0 when the time is over, −1 on failure with the reason in errno
int waitFor(int fd, Readiness readiness, std::int64_t microseconds);

} // namespace Tavik::Network
