#include <moving_map/TrafficTable.h>

#include <moving_map/Units.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace MovingMap {

namespace {

constexpr double SecondsPerMinute = 60.0;

template <typename Value>
void takeWhereTold(std::optional<Value>& value, const std::optional<double>& told, double unit)
{
    if (told) {
        value = *told * unit;
    }
}

} // namespace

void TrafficTable::setCentre(Position centre)
{
    mCentre = centre;
    mEastScale = std::cos(centre.latDegrees * RadiansPerDegree);
}

void TrafficTable::take(const Feeds::Traffic& traffic, double now)
{
    const Feeds::Movement& movement = traffic.movement;
    const Position position = {movement.latDegrees, movement.lonDegrees};
    if (Target* target = findOrAdd(traffic.address, position, now)) {
        target->callsign = traffic.callsign;
        target->motion = {position, movement.altitudeMetres, movement.speedMetresPerSecond, movement.trackDegrees,
                          movement.climbMetresPerSecond};
        target->positionSeconds = now;
        target->isOnGround = false;
    }
}

void TrafficTable::take(const Feeds::SbsMessage& message, double now)
{
    std::optional<Position> position;
    if (message.latDegrees && message.lonDegrees) {
        position = Position{*message.latDegrees, *message.lonDegrees};
    }
    Target* target = findOrAdd(message.address, position, now);
    if (target == nullptr) {
        return;
    }
    if (position) {
        target->motion.position = *position;
        target->positionSeconds = now;
    }
    if (!message.callsign.empty()) {
        target->callsign = message.callsign;
    }
    target->isOnGround = message.isOnGround.value_or(target->isOnGround);
    takeWhereTold(target->motion.altitudeMetres, message.altitudeFeet, MetresPerFoot);
    takeWhereTold(target->motion.speedMetresPerSecond, message.speedKnots, MetresPerNauticalMile / SecondsPerHour);
    takeWhereTold(target->motion.trackDegrees, message.trackDegrees, 1.0);
    takeWhereTold(target->motion.climbMetresPerSecond, message.climbFeetPerMinute, MetresPerFoot / SecondsPerMinute);
}

void TrafficTable::removeOld(double now)
{
    const auto isOld = [now](const Target& target) { return now - target.messageSeconds > LifeSeconds; };
    mTargets.erase(std::remove_if(mTargets.begin(), mTargets.end(), isOld), mTargets.end());
    for (Target& target : mTargets) {
        if (target.positionSeconds && now - *target.positionSeconds > LifeSeconds) {
            target.positionSeconds.reset();
        }
    }
}

/// @return null where a full table has no place for it
Target* TrafficTable::findOrAdd(std::uint32_t address, const std::optional<Position>& position, double now)
{
    auto found = std::find_if(mTargets.begin(), mTargets.end(),
                              [address](const Target& target) { return target.address == address; });
    if (found == mTargets.end()) {
        if (mTargets.size() < MostTargets) {
            mTargets.emplace_back();
            found = mTargets.end() - 1;
        } else {
            found = std::max_element(mTargets.begin(), mTargets.end(), [this](const Target& a, const Target& b) {
                return remoteness(a) < remoteness(b);
            });
            if (remoteness(*found) <= remoteness(position)) {
                return nullptr;
            }
            *found = {};
        }
        found->address = address;
    }
    found->messageSeconds = now;
    return &*found;
}

/// Grows with the distance, and is infinite without a position. Good enough for comparing, and fast.
double TrafficTable::remoteness(const std::optional<Position>& position) const
{
    if (!position) {
        return std::numeric_limits<double>::infinity();
    }
    const double north = position->latDegrees - mCentre.latDegrees;
    const double apart = std::abs(position->lonDegrees - mCentre.lonDegrees);
    const double east = mEastScale * std::min(apart, 360.0 - apart); // also across the antimeridian
    return north * north + east * east;
}

double TrafficTable::remoteness(const Target& target) const
{
    return remoteness(target.positionSeconds ? std::optional(target.motion.position) : std::nullopt);
}

} // namespace MovingMap
