#include <moving_map/TerrainWorker.h>

#include <limits>
#include <utility>

namespace MovingMap {

TerrainWorker::TerrainWorker(const std::string& folder) : mThread([this, folder] { run(folder); }) {}

TerrainWorker::~TerrainWorker()
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mStop = true;
    }
    mChanged.notify_all();
    mThread.join();
}

void TerrainWorker::post(Job job)
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mJobs.push_back(std::move(job));
    }
    mChanged.notify_all();
}

std::size_t TerrainWorker::deliver(std::size_t most)
{
    std::size_t count = 0;
    for (; count < most; ++count) {
        Delivery delivery;
        {
            const std::lock_guard<std::mutex> lock(mMutex);
            if (mDeliveries.empty()) {
                break;
            }
            delivery = std::move(mDeliveries.front());
            mDeliveries.pop_front();
        }
        delivery();
    }
    return count;
}

void TerrainWorker::finish()
{
    {
        std::unique_lock<std::mutex> lock(mMutex);
        mChanged.wait(lock, [this] { return mJobs.empty() && !mBusy; });
    }
    deliver(std::numeric_limits<std::size_t>::max());
}

void TerrainWorker::run(const std::string& folder)
{
    Terrain terrain(folder);
    std::unique_lock<std::mutex> lock(mMutex);
    while (true) {
        mChanged.wait(lock, [this] { return mStop || !mJobs.empty(); });
        if (mStop) {
            return;
        }
        const Job job = std::move(mJobs.front());
        mJobs.pop_front();
        mBusy = true;
        lock.unlock();
        Delivery delivery = job(terrain);
        lock.lock();
        mBusy = false;
        mDeliveries.push_back(std::move(delivery));
        mChanged.notify_all();
    }
}

} // namespace MovingMap
