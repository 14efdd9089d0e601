#include <traffic_feed/Flights.h>

#include <moving_map/Units.h>
#include <tavik/geodetic/EarthModel.h>

#include <algorithm>
#include <cmath>

namespace TrafficFeed {

namespace {

using namespace MovingMap;

constexpr double UnplannedMetres = 1500.0; // where the plan has no heights
constexpr double AheadMetres = 4.0 * MetresPerNauticalMile;
constexpr double StepAboveMetres = 1000.0 * MetresPerFoot;

constexpr double CircleSpeed = 90.0;
constexpr double SmallestRadius = 2.0 * MetresPerNauticalMile;
constexpr double RadiusStep = 0.8 * MetresPerNauticalMile;
constexpr double SwingMetres = 1200.0 * MetresPerFoot; // up and down
constexpr double SwingSeconds = 300.0;
constexpr double LowestMetres = 300.0;

constexpr std::uint32_t FirstAddress = 0x700001;
constexpr int FirstFlightNumber = 101;

} // namespace

Flights::Flights(const RoutePath& path, double speedMetresPerSecond, int trafficCount) : mPath(path)
{
    mOwnShip = alongPath(0.0, speedMetresPerSecond, 0.0);
    for (int i = 0; i < std::clamp(trafficCount, 0, MostTraffic); ++i) {
        mTraffic.push_back(i == 0   ? alongPath(AheadMetres, speedMetresPerSecond, StepAboveMetres)
                           : i == 1 ? alongPath(3.0 * AheadMetres, -speedMetresPerSecond, -StepAboveMetres)
                                    : aroundPath(i - 2, trafficCount - 2));
    }
}

Feeds::Movement Flights::ownShip(double seconds) const
{
    return movementAt(mOwnShip, seconds);
}

std::vector<Feeds::Traffic> Flights::traffic(double seconds) const
{
    std::vector<Feeds::Traffic> traffic;
    for (std::size_t i = 0; i < mTraffic.size(); ++i) {
        traffic.push_back({FirstAddress + static_cast<std::uint32_t>(i),
                           "TVK" + std::to_string(FirstFlightNumber + static_cast<int>(i)),
                           movementAt(mTraffic[i], seconds)});
    }
    return traffic;
}

Flights::Place Flights::onPath(double distanceMetres) const
{
    const double around = std::fmod(distanceMetres, mPath.length());
    const double distance = around < 0.0 ? around + mPath.length() : around;
    const double planned = mPath.altitudeMetres(distance);
    return {mPath.at(distance).position, std::isnan(planned) ? UnplannedMetres : planned};
}

/// @param speed  negative against the plan
Flights::Flight Flights::alongPath(double aheadMetres, double speed, double aboveMetres) const
{
    return [this, aheadMetres, speed, aboveMetres](double seconds) {
        Place place = onPath(aheadMetres + speed * seconds);
        place.altitudeMetres += aboveMetres;
        return place;
    };
}

/// Circles are spread along the plan; each is wider than the one before, and flown the other way round.
Flights::Flight Flights::aroundPath(int number, int count) const
{
    const Place centre = onPath(mPath.length() * (number + 0.5) / count);
    const double radius = SmallestRadius + RadiusStep * (number % 5);
    const double turnPerSecond = (number % 2 == 0 ? 1.0 : -1.0) * CircleSpeed / radius * DegreesPerRadian;
    return [centre, radius, turnPerSecond, number](double seconds) {
        Place place = centre;
        Tavik::Geodetic::calcPointFromBrgDistance(centre.position.latDegrees, centre.position.lonDegrees,
                                                  turnPerSecond * seconds + 75.0 * number, radius,
                                                  place.position.latDegrees, place.position.lonDegrees);
        const double swing = std::sin(2.0 * M_PI * seconds / SwingSeconds + number);
        place.altitudeMetres = std::max(centre.altitudeMetres + SwingMetres * swing, LowestMetres);
        return place;
    };
}

/// Speed, track and climb are those of one second about that time.
Feeds::Movement Flights::movementAt(const Flight& flight, double seconds)
{
    const Place before = flight(seconds - 0.5);
    const Place place = flight(seconds);
    const Place behind = flight(seconds + 0.5);
    Feeds::Movement movement;
    movement.latDegrees = place.position.latDegrees;
    movement.lonDegrees = std::remainder(place.position.lonDegrees, 360.0);
    movement.altitudeMetres = static_cast<float>(place.altitudeMetres);
    const double metres = planeDistance(before.position, behind.position);
    if (metres < Feeds::LargestSpeedMetresPerSecond) { // else it has just begun its plan again
        movement.speedMetresPerSecond = static_cast<float>(metres);
        movement.trackDegrees = static_cast<float>(planeCourse(before.position, behind.position));
        movement.climbMetresPerSecond = static_cast<float>(behind.altitudeMetres - before.altitudeMetres);
    }
    return movement;
}

} // namespace TrafficFeed
