#pragma once

#include <feeds/Messages.h>
#include <feeds/Sbs.h>
#include <moving_map/Motion.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace MovingMap {

/// Another aircraft, as its last messages told.
struct Target
{
    std::uint32_t address = 0; ///< tells aircraft apart
    std::string callsign;      ///< empty where unknown
    Motion motion;             ///< as of positionSeconds
    bool isOnGround = false;
    std::optional<double> positionSeconds; ///< when the position came; nothing before one has
    double messageSeconds = 0.0;           ///< when anything came
};

/// The other aircraft about the own ship, out of messages of any number of feeds.
///
/// Memory and time for a message are bounded: at most 100 aircraft are kept. When the table is full, a new aircraft
/// takes the place of the farthest, or of one whose position has not come; if it is no nearer itself, it is left out.
///
/// Times are seconds of one steady clock.
class TrafficTable
{
public:
    static constexpr std::size_t MostTargets = 100;

    /// Aircraft from which nothing has been heard for this long are removed.
    static constexpr double LifeSeconds = 15.0;

    /// Where the aircraft are that matter most.
    void setCentre(Position centre);

    void take(const Feeds::Traffic& traffic, double now);
    void take(const Feeds::SbsMessage& message, double now);

    /// Removes aircraft that have not been heard for LifeSeconds, and forgets positions of that age.
    void removeOld(double now);

    const std::vector<Target>& targets() const { return mTargets; }

private:
    Target* findOrAdd(std::uint32_t address, const std::optional<Position>& position, double now);
    double remoteness(const std::optional<Position>& position) const;
    double remoteness(const Target& target) const;

    Position mCentre;
    double mEastScale = 1.0; // of longitudes there: the cosine of the latitude
    std::vector<Target> mTargets;
};

} // namespace MovingMap
