#include <moving_map/FeedWorker.h>

#include <chrono>
#include <utility>

namespace MovingMap {

namespace {

constexpr auto Pause = std::chrono::milliseconds(20);

double secondsNow()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

PerFeed<bool> feedsOf(const FeedSettings& settings)
{
    return {{{settings.ownShipPort.has_value(), settings.nmeaPort.has_value(), settings.traffic.has_value(),
              settings.sbs.has_value()}}};
}

} // namespace

FeedWorker::FeedWorker(const FeedSettings& settings) : mData(feedsOf(settings), settings.silenceSeconds)
{
    if (settings.ownShipPort) {
        mOwnShipPort = openPort<OwnShipLink>(FeedKind::OwnShip, *settings.ownShipPort);
    }
    if (settings.nmeaPort) {
        mNmeaPort = openPort<NmeaLink>(FeedKind::Nmea, *settings.nmeaPort);
    }
    if (settings.traffic) {
        add(FeedKind::Traffic,
            std::make_unique<TrafficLink>(*settings.traffic, settings.silenceSeconds[FeedKind::Traffic],
                                          settings.retrySeconds));
    }
    if (settings.sbs) {
        add(FeedKind::Sbs,
            std::make_unique<SbsLink>(*settings.sbs, settings.silenceSeconds[FeedKind::Sbs], settings.retrySeconds));
    }
}

FeedWorker::~FeedWorker()
{
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mStop = true;
    }
    mStopped.notify_all();
    for (Reader& reader : mReaders) {
        reader.thread.join();
    }
}

void FeedWorker::show(FeedPicture& picture)
{
    const std::unique_lock<std::mutex> lock(mMutex, std::try_to_lock);
    if (lock.owns_lock()) {
        mData.show(secondsNow(), picture);
    }
}

template <typename Link>
int FeedWorker::openPort(FeedKind kind, int port)
{
    auto link = std::make_unique<Link>(port);
    const int opened = link->port();
    if (opened < 0) {
        mError = "UDP port " + std::to_string(port) + " cannot be had";
    }
    add(kind, std::move(link));
    return opened;
}

void FeedWorker::add(FeedKind kind, std::unique_ptr<FeedLink> link)
{
    mReaders.push_back({kind, std::move(link), {}});
    Reader& reader = mReaders.back();
    reader.thread = std::thread([this, &reader] { run(reader.kind, *reader.link); });
}

void FeedWorker::run(FeedKind kind, FeedLink& link)
{
    std::vector<FeedReport> reports;
    for (;;) {
        reports.clear();
        const bool stands = link.poll(secondsNow(), reports);
        handOver(kind, stands, reports, secondsNow());
        std::unique_lock<std::mutex> lock(mMutex);
        if (mStopped.wait_for(lock, Pause, [this] { return mStop; })) {
            return;
        }
    }
}

void FeedWorker::handOver(FeedKind kind, bool stands, const std::vector<FeedReport>& reports, double now)
{
    mReportCount += reports.size();
    const std::lock_guard<std::mutex> lock(mMutex);
    for (const FeedReport& report : reports) {
        mData.take(kind, report, now);
    }
    if (!stands) {
        mData.disconnect(kind);
    }
}

} // namespace MovingMap
