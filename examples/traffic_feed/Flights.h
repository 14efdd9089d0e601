#pragma once

#include <feeds/Messages.h>
#include <moving_map/RoutePath.h>

#include <functional>
#include <string>
#include <vector>

namespace TrafficFeed {

/// Aircraft about a flight plan: one flies it, the others fly ahead on it, against it, and in circles about places on
/// it, climbing and descending.
///
/// Where each is depends on the time alone.
class Flights
{
public:
    static constexpr int MostTraffic = 30;

    /// @param path  of the plan; must outlive this
    /// @param trafficCount  aircraft besides the own ship, 0 to MostTraffic
    Flights(const MovingMap::RoutePath& path, double speedMetresPerSecond, int trafficCount);

    /// @param seconds  of flight; behind the end of the plan it begins again
    Feeds::Movement ownShip(double seconds) const;

    std::vector<Feeds::Traffic> traffic(double seconds) const;

private:
    struct Place
    {
        MovingMap::Position position;
        double altitudeMetres;
    };
    using Flight = std::function<Place(double seconds)>;

    Place onPath(double distanceMetres) const;
    Flight alongPath(double aheadMetres, double speed, double aboveMetres) const;
    Flight aroundPath(int number, int count) const;
    static Feeds::Movement movementAt(const Flight& flight, double seconds);

    const MovingMap::RoutePath& mPath;
    Flight mOwnShip;
    std::vector<Flight> mTraffic;
};

} // namespace TrafficFeed
