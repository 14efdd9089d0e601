#pragma once

#include <cstdlib>

namespace Tavik::Fuzz {

/// Ends the program, which libFuzzer takes as a finding, where something does not hold that must hold for every input.
inline void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

} // namespace Tavik::Fuzz
