#pragma once

#include <feeds/Messages.h>
#include <feeds/Nmea.h>
#include <feeds/Sbs.h>
#include <moving_map/Motion.h>
#include <moving_map/TrafficTable.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

namespace MovingMap {

/// Where the map hears of the own ship and of other aircraft.
enum class FeedKind
{
    OwnShip, ///< positions of traffic_feed
    Nmea,    ///< of a satellite receiver
    Traffic, ///< other aircraft of traffic_feed
    Sbs      ///< of a receiver for transponders
};
constexpr std::size_t FeedCount = 4;

/// A value for each feed.
template <typename Value>
struct PerFeed : std::array<Value, FeedCount>
{
    using std::array<Value, FeedCount>::operator[];
    Value& operator[](FeedKind kind) { return (*this)[static_cast<std::size_t>(kind)]; }
    const Value& operator[](FeedKind kind) const { return (*this)[static_cast<std::size_t>(kind)]; }
};

/// A feed that has nothing to tell is silent for less than this, in seconds; else it is lost. The own ship comes ten
/// times a second, sentences of receivers each second, and so does the heartbeat of traffic_feed. Receivers for
/// transponders are silent under an empty sky, but for a heartbeat each minute.
constexpr PerFeed<double> UsualSilenceSeconds = {{{2.0, 3.0, 4.0, 65.0}}};

/// Something useful that a feed has told.
using FeedReport =
    std::variant<std::monostate, Feeds::OwnShip, Feeds::NmeaRmc, Feeds::NmeaGga, Feeds::Traffic, Feeds::SbsMessage>;

/// What the display shows of the feeds in one frame.
struct FeedPicture
{
    /// Another aircraft in flight.
    struct Aircraft
    {
        std::string callsign;
        Motion motion; ///< flown on to now
        bool isOld = false;
    };

    bool hasOwnShip = false;       ///< whether the own ship comes from a feed at all
    std::optional<Motion> ownShip; ///< flown on to now, or to where its feed was lost; nothing before one has come
    bool isOwnShipLost = false;
    std::vector<Aircraft> traffic;
    PerFeed<bool> isLost = {};
};

/// What the feeds have told: the own ship, other aircraft, and which feed is lost.
///
/// A feed is lost unless something useful has come from it lately. The own ship follows the first feed of its positions
/// that is not lost, and stays where it was when all are. Times are seconds of one steady clock; no thread, no socket.
class FeedData
{
public:
    /// A position from which nothing has been heard for this long is shown as an old one.
    static constexpr double OldSeconds = 6.0;

    /// @param isOn  which feeds there are
    explicit FeedData(const PerFeed<bool>& isOn, const PerFeed<double>& silenceSeconds = UsualSilenceSeconds)
        : mIsOn(isOn), mSilenceSeconds(silenceSeconds)
    {}

    void take(FeedKind kind, const FeedReport& report, double now);

    /// Says that the feed's connection is over: it is lost until it tells something again.
    void disconnect(FeedKind kind) { mLastSeconds[kind].reset(); }

    /// @param picture  its memory is used again
    void show(double now, FeedPicture& picture);

private:
    struct OwnShip
    {
        std::optional<Motion> motion;
        double positionSeconds = 0.0;
        double altitudeSeconds = 0.0;
    };

    bool isAlive(FeedKind kind, double now) const;
    bool takeOwnShip(const Feeds::OwnShip& told, double now);
    bool takeRmc(const Feeds::NmeaRmc& rmc, double now);
    bool takeGga(const Feeds::NmeaGga& gga, double now);
    void chooseOwnShip(double now);
    void showTraffic(double now, std::vector<FeedPicture::Aircraft>& aircraft) const;

    PerFeed<bool> mIsOn;
    PerFeed<double> mSilenceSeconds;
    PerFeed<std::optional<double>> mLastSeconds; // when something useful came

    OwnShip mTold; // by traffic_feed
    OwnShip mNmea;
    std::uint32_t mSequence = 0;
    FeedKind mFollowed = FeedKind::OwnShip;
    TrafficTable mTraffic;
};

} // namespace MovingMap
