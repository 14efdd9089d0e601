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

    /// The highest ground on each of several equal pieces of the path, metres; NaN where it is unknown or not made yet.
    /// @param fromMetres   flown at the beginning of the first piece; what lies off the path is unknown
    /// @param pieceMetres  length of a piece
    std::vector<float> highest(double fromMetres, double pieceMetres, std::size_t pieces) const;

private:
    void request(int chunk);
    float sample(int index) const;

    const RoutePath& mPath;
    TerrainWorker& mWorker;
    std::map<int, std::vector<float>> mChunks; // an empty one is being made
    std::size_t mUnderWay = 0;
    bool mComplete = false;
};

} // namespace MovingMap
