#include <moving_map/Motion.h>

#include <algorithm>
#include <cmath>

namespace MovingMap {

namespace {

constexpr double LargestLatitude = 89.0; // farther on, a step along a parallel may go round the earth many times

} // namespace

Motion flownOn(Motion motion, double seconds)
{
    if (motion.speedMetresPerSecond && motion.trackDegrees && std::abs(motion.position.latDegrees) < LargestLatitude) {
        const LocalPlane::Point step = directionOf(*motion.trackDegrees) * (*motion.speedMetresPerSecond * seconds);
        motion.position = LocalPlane(motion.position).toPosition(step);
        motion.position.latDegrees = std::clamp(motion.position.latDegrees, -90.0, 90.0);
        motion.position.lonDegrees = std::remainder(motion.position.lonDegrees, 360.0);
    }
    return motion;
}

} // namespace MovingMap
