#pragma once

#include <moving_map/RoutePath.h>

namespace MovingMap {

/// An aircraft on its way along a path; behind the end it begins again.
class Simulation
{
public:
    /// The path must outlive the simulation.
    /// @param startSeconds  flown already
    Simulation(const RoutePath& path, double speedMetresPerSecond, double startSeconds);

    /// Flies on by a time in seconds, multiplied by the speed factor; not at all while paused.
    void advance(double seconds);

    void setPaused(bool paused) { mPaused = paused; }
    bool isPaused() const { return mPaused; }

    /// @param factor  how many times faster than real time; kept within [1/16, 256]
    void setSpeedFactor(double factor);
    double speedFactor() const { return mSpeedFactor; }

    double distanceMetres() const { return mDistanceMetres; }
    double speedMetresPerSecond() const { return mSpeedMetresPerSecond; }
    RoutePath::State state() const { return mPath.at(mDistanceMetres); }
    double altitudeMetres() const { return mPath.altitudeMetres(mDistanceMetres); }

private:
    void fly(double metres);

    const RoutePath& mPath;
    double mSpeedMetresPerSecond;
    double mDistanceMetres = 0.0;
    double mSpeedFactor = 1.0;
    bool mPaused = false;
};

} // namespace MovingMap
