#pragma once

#include <moving_map/Terrain.h>

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace MovingMap {

/// Does all work with terrain on a thread of its own, so that reading a tile never holds up a frame.
///
///     worker.post([](Terrain& terrain) {
///         double height = terrain.height(47.25, 11.4);        // on the worker's thread
///         return [height] { std::printf("%f\n", height); };   // on the thread that calls deliver
///     });
///     ...
///     worker.deliver(1); // each frame
class TerrainWorker
{
public:
    using Delivery = std::function<void()>;
    using Job = std::function<Delivery(Terrain&)>;

    /// Starts the thread, which scans the folder first.
    explicit TerrainWorker(const std::string& folder);

    /// Finishes the job in hand and drops the others.
    ~TerrainWorker();

    TerrainWorker(const TerrainWorker&) = delete;
    TerrainWorker& operator=(const TerrainWorker&) = delete;

    /// Jobs are done in the order in which they come.
    void post(Job job);

    /// Calls what finished jobs returned, in the same order.
    /// @param most  the number of calls, to keep a frame short
    /// @return how many were called
    std::size_t deliver(std::size_t most);

    /// Waits until every job is done, and delivers everything.
    void finish();

private:
    void run(const std::string& folder);

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<Job> mJobs;
    std::deque<Delivery> mDeliveries;
    bool mBusy = false;
    bool mStop = false;
    std::thread mThread; // last: starts when everything else is there
};

} // namespace MovingMap
