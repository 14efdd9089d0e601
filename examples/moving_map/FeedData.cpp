#include <moving_map/FeedData.h>

#include <moving_map/Units.h>

#include <algorithm>

namespace MovingMap {

namespace {

constexpr double LongestAltitudeSeconds = 10.0; // receivers tell the height each second, in a sentence of its own

constexpr std::uint32_t HalfOfNumbers = 0x80000000;

std::optional<Position> positionOf(const std::optional<double>& latDegrees, const std::optional<double>& lonDegrees)
{
    return latDegrees && lonDegrees ? std::optional(Position{*latDegrees, *lonDegrees}) : std::nullopt;
}

} // namespace

void FeedData::take(FeedKind kind, const FeedReport& report, double now)
{
    bool isUseful = true;
    if (const auto* told = std::get_if<Feeds::OwnShip>(&report)) {
        isUseful = takeOwnShip(*told, now);
    } else if (const auto* rmc = std::get_if<Feeds::NmeaRmc>(&report)) {
        isUseful = takeRmc(*rmc, now);
    } else if (const auto* gga = std::get_if<Feeds::NmeaGga>(&report)) {
        isUseful = takeGga(*gga, now);
    } else if (const auto* traffic = std::get_if<Feeds::Traffic>(&report)) {
        mTraffic.take(*traffic, now);
    } else if (const auto* message = std::get_if<Feeds::SbsMessage>(&report)) {
        mTraffic.take(*message, now);
    }
    if (isUseful) {
        mLastSeconds[kind] = now;
    }
}

void FeedData::show(double now, FeedPicture& picture)
{
    picture.hasOwnShip = mIsOn[FeedKind::OwnShip] || mIsOn[FeedKind::Nmea];
    for (std::size_t i = 0; i < FeedCount; ++i) {
        picture.isLost[i] = mIsOn[i] && !isAlive(static_cast<FeedKind>(i), now);
    }
    chooseOwnShip(now);
    const OwnShip& followed = mFollowed == FeedKind::Nmea ? mNmea : mTold;
    picture.isOwnShipLost = picture.hasOwnShip && !isAlive(mFollowed, now);
    picture.ownShip.reset();
    if (followed.motion) {
        picture.ownShip =
            flownOn(*followed.motion, std::min(now - followed.positionSeconds, mSilenceSeconds[mFollowed]));
        mTraffic.setCentre(picture.ownShip->position);
    }
    mTraffic.removeOld(now);
    showTraffic(now, picture.traffic);
}

bool FeedData::isAlive(FeedKind kind, double now) const
{
    return mLastSeconds[kind] && now - *mLastSeconds[kind] < mSilenceSeconds[kind];
}

/// @return false for one that has been overtaken by another on its way. A sender that has begun anew is heard when the
///         feed has been lost
bool FeedData::takeOwnShip(const Feeds::OwnShip& told, double now)
{
    const std::uint32_t step = told.sequence - mSequence;
    if (isAlive(FeedKind::OwnShip, now) && (step == 0 || step >= HalfOfNumbers)) {
        return false;
    }
    mSequence = told.sequence;
    const Feeds::Movement& movement = told.movement;
    mTold.motion = Motion{{movement.latDegrees, movement.lonDegrees},
                          movement.altitudeMetres,
                          movement.speedMetresPerSecond,
                          movement.trackDegrees,
                          movement.climbMetresPerSecond};
    mTold.positionSeconds = now;
    return true;
}

/// @return false where the receiver does not know its position
bool FeedData::takeRmc(const Feeds::NmeaRmc& rmc, double now)
{
    const std::optional<Position> position = positionOf(rmc.latDegrees, rmc.lonDegrees);
    if (!rmc.isValid || !position) {
        return false;
    }
    Motion motion = mNmea.motion.value_or(Motion{});
    motion.position = *position;
    motion.speedMetresPerSecond.reset();
    if (rmc.speedKnots) {
        motion.speedMetresPerSecond = *rmc.speedKnots * MetresPerNauticalMile / SecondsPerHour;
    }
    if (rmc.trackDegrees) { // left out by receivers that stand still
        motion.trackDegrees = rmc.trackDegrees;
    }
    mNmea.motion = motion;
    mNmea.positionSeconds = now;
    return true;
}

bool FeedData::takeGga(const Feeds::NmeaGga& gga, double now)
{
    const std::optional<Position> position = positionOf(gga.latDegrees, gga.lonDegrees);
    if (gga.quality == 0 || !position) {
        return false;
    }
    Motion motion = mNmea.motion.value_or(Motion{});
    motion.position = *position;
    if (gga.altitudeMetres) {
        motion.altitudeMetres = gga.altitudeMetres;
        mNmea.altitudeSeconds = now;
    }
    mNmea.motion = motion;
    mNmea.positionSeconds = now;
    return true;
}

void FeedData::chooseOwnShip(double now)
{
    for (const FeedKind kind : {FeedKind::Nmea, FeedKind::OwnShip}) {
        if (isAlive(kind, now)) {
            mFollowed = kind;
        }
    }
    if (mNmea.motion && now - mNmea.altitudeSeconds > LongestAltitudeSeconds) {
        mNmea.motion->altitudeMetres.reset();
    }
}

void FeedData::showTraffic(double now, std::vector<FeedPicture::Aircraft>& aircraft) const
{
    aircraft.clear();
    for (const Target& target : mTraffic.targets()) {
        if (target.positionSeconds && !target.isOnGround) {
            const double age = now - *target.positionSeconds;
            aircraft.push_back({target.callsign, flownOn(target.motion, age), age > OldSeconds});
        }
    }
}

} // namespace MovingMap
