#pragma once

#include <moving_map/FeedData.h>
#include <moving_map/FeedLinks.h>
#include <moving_map/FeedSources.h>

#include <atomic>
#include <condition_variable>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace MovingMap {

/// Reads the feeds on threads of its own, one for each, so that neither the drawing nor another feed ever waits for
/// one: a peer may stall, flood, send garbage or die. Each thread reads a bounded share and rests for 20 ms.
///
///     FeedWorker feeds(settings);
///     FeedPicture picture;
///     ...
///     feeds.show(picture); // each frame
class FeedWorker
{
public:
    /// Opens the ports and starts the threads.
    explicit FeedWorker(const FeedSettings& settings);

    /// Ends the threads, which may take half a second where one is about to connect.
    ~FeedWorker();

    FeedWorker(const FeedWorker&) = delete;
    FeedWorker& operator=(const FeedWorker&) = delete;

    /// One sentence when a port could not be had; else empty.
    const std::string& error() const { return mError; }

    /// Whether there is a feed.
    bool hasAny() const { return !mReaders.empty(); }

    /// The UDP ports, −1 without such a feed.
    int ownShipPort() const { return mOwnShipPort; }
    int nmeaPort() const { return mNmeaPort; }

    /// What the feeds have told up to now. Never waits: when a thread is just handing something over, the picture stays
    /// as it is for this frame.
    void show(FeedPicture& picture);

    /// Reports that all feeds have made since the start.
    std::size_t reportCount() const { return mReportCount; }

private:
    struct Reader
    {
        FeedKind kind;
        std::unique_ptr<FeedLink> link;
        std::thread thread;
    };

    template <typename Link>
    int openPort(FeedKind kind, int port);
    void add(FeedKind kind, std::unique_ptr<FeedLink> link);
    void run(FeedKind kind, FeedLink& link);
    void handOver(FeedKind kind, bool stands, const std::vector<FeedReport>& reports, double now);

    std::string mError;
    int mOwnShipPort = -1;
    int mNmeaPort = -1;
    std::atomic<std::size_t> mReportCount = 0;

    std::mutex mMutex;
    std::condition_variable mStopped;
    bool mStop = false;
    FeedData mData;
    std::list<Reader> mReaders; // last: their threads use everything else
};

} // namespace MovingMap
