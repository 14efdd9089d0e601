#include <moving_map/Simulation.h>

#include <algorithm>
#include <cmath>

namespace MovingMap {

namespace {

constexpr double SmallestFactor = 1.0 / 16.0;
constexpr double LargestFactor = 256.0;

} // namespace

Simulation::Simulation(const RoutePath& path, double speedMetresPerSecond, double startSeconds)
    : mPath(path), mSpeedMetresPerSecond(speedMetresPerSecond)
{
    fly(mSpeedMetresPerSecond * startSeconds);
}

void Simulation::advance(double seconds)
{
    if (!mPaused) {
        fly(mSpeedMetresPerSecond * mSpeedFactor * seconds);
    }
}

void Simulation::setSpeedFactor(double factor)
{
    mSpeedFactor = std::clamp(factor, SmallestFactor, LargestFactor);
}

void Simulation::fly(double metres)
{
    mDistanceMetres = std::fmod(mDistanceMetres + metres, mPath.length());
}

} // namespace MovingMap
