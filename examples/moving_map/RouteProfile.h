#pragma once

#include <moving_map/RoutePath.h>
#include <moving_map/TerrainWorker.h>

#include <cstddef>
#include <map>
#include <vector>

namespace MovingMap {

/// Heights of the terrain under a path, made in pieces as they are needed.
class RouteProfile
{
public:
    static constexpr double SpacingMetres = 60.0;

    /// Path and worker must outlive the profile.
    RouteProfile(const RoutePath& path, TerrainWorker& worker) : mPath(path), mWorker(worker) {}

    /// Orders what is missing of a part of the path. To be called once a frame.
    void update(double fromMetres, double toMetres);

    /// Whether everything that the last update wanted is there.
    bool isComplete() const { return mComplete; }

    /// Counts up whenever heights have arrived: what was drawn at one count will do at the same.
    std::size_t version() const { return mVersion; }

    struct Point
    {
        double distanceMetres; ///< flown
        float heightMetres;    ///< NaN where it is unknown or not made yet
    };

    /// The ground under a part of the path. The points lie at the same places of the path whatever the part, so that
    /// the line through them does not change its shape while the aircraft flies on; each has the highest ground of its
    /// surroundings.
    /// @param fromMetres,toMetres  flown; the points begin and end just outside, or where the path does
    /// @param samplesPerPoint      distance of the points in units of SpacingMetres, at least 1
    void surface(double fromMetres, double toMetres, int samplesPerPoint, std::vector<Point>& points) const;

private:
    void request(int chunk);
    int lastSample() const;

    const RoutePath& mPath;
    TerrainWorker& mWorker;
    std::map<int, std::vector<float>> mChunks; // an empty one is being made
    std::size_t mUnderWay = 0;
    std::size_t mVersion = 0;
    bool mComplete = false;
};

} // namespace MovingMap
