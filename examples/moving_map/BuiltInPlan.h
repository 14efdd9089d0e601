#pragma once

namespace MovingMap {

/// Text of a flight plan for the made region, and an example of the format.
extern const char* const BuiltInPlan;

} // namespace MovingMap
