#pragma once

#include <tavik/Export.h>

namespace Tavik::Misc {

/// Lets the calling thread sleep.
/// @param ms  milliseconds in [0, 999]. Longer times do not work: 1000 to 4294 return at once, and from 4295 on the
///            time in nanoseconds wraps at 32 bits. Loop over shorter sleeps for long waits.
/// A signal that is handled ends the sleep early. Safe from any thread.
TAVIK_API void sleepMs(unsigned int ms);

} // namespace Tavik::Misc
