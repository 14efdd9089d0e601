#pragma once

#include <tavik/Export.h>

/// Filters for sampled signals. Safe from any thread, each state belonging to one thread at a time.
namespace Tavik::Math::Filter {

/// First-order low-pass (lag): moves the state towards the input, by dt / (dt + timeConstant) of the difference.
///
///     double smoothed = firstSample;
///     ...
///     Filter::pt1(sample, 0.5, secondsSinceLastSample, &smoothed);
///
/// @param input         new sample
/// @param timeConstant  seconds, not negative; 0 follows the input at once
/// @param dt            seconds since the last sample, not negative; taken as 1 where it is more, so that the first
///                      sample after a pause does not jump
/// @param state         the filtered value, read and updated; must not be null. Set it to the first sample.
/// @return the updated state; unchanged when dt + timeConstant is 0. A NaN once in the state stays there.
TAVIK_API double pt1(double input, double timeConstant, double dt, double* state);

} // namespace Tavik::Math::Filter
