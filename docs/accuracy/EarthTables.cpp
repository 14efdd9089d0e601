#include "EarthTables.h"
#include "Table.h"

#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/Intersections.h>
#include <tavik/geodetic/Turns.h>

#include <GeographicLib/Geocentric.hpp>
#include <GeographicLib/Geodesic.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace Accuracy {

namespace {

namespace Geodetic = Tavik::Geodetic;
using Tavik::Math::Vector2;

const std::vector<double> Latitudes = {0.0, 30.0, 45.0, 60.0, 75.0};
const std::vector<double> Kilometres = {1.0, 10.0, 50.0, 100.0, 500.0};
constexpr double StartLon = 10.0; // nothing depends on it
constexpr double NauticalMile = 1852.0;
constexpr int DirectionStep = 15; // degrees

struct Position
{
    double lat = 0.0;
    double lon = 0.0;
};

const GeographicLib::Geodesic& ellipsoid()
{
    return GeographicLib::Geodesic::WGS84();
}

double metresBetween(Position a, Position b)
{
    double metres = 0.0;
    ellipsoid().Inverse(a.lat, a.lon, b.lat, b.lon, metres);
    return metres;
}

double bearingFrom(Position a, Position b)
{
    double start = 0.0;
    double end = 0.0;
    ellipsoid().Inverse(a.lat, a.lon, b.lat, b.lon, start, end);
    return start;
}

Position pointFrom(Position start, double bearing, double metres)
{
    Position end;
    ellipsoid().Direct(start.lat, start.lon, bearing, metres, end.lat, end.lon);
    return end;
}

/// The worst error over all directions from a start.
double worst(const std::function<double(double)>& error)
{
    double result = 0.0;
    for (int bearing = 0; bearing < 360; bearing += DirectionStep) {
        result = std::max(result, std::abs(error(bearing)));
    }
    return result;
}

std::string distanceName(double kilometres)
{
    return std::to_string(static_cast<int>(kilometres)) + " km";
}

std::vector<std::string> latitudeNames()
{
    std::vector<std::string> names;
    names.reserve(Latitudes.size());
    for (const double lat : Latitudes) {
        names.push_back("lat " + std::to_string(static_cast<int>(lat)));
    }
    return names;
}

using Error = std::function<double(Position start, double bearing, double metres)>;

/// The worst error by distance and latitude.
void printByDistance(const std::string& corner, const std::vector<double>& kilometres, const Error& error)
{
    Table table(corner, latitudeNames());
    for (const double distance : kilometres) {
        std::vector<double> row;
        for (const double lat : Latitudes) {
            const Position start = {lat, StartLon};
            row.push_back(worst([&](double bearing) { return error(start, bearing, distance * 1000.0); }));
        }
        table.add(distanceName(distance), row);
    }
    table.print();
}

Vector2<double> inPlane(Position reference, Position p)
{
    Vector2<double> point;
    Geodetic::latLong2Grid(reference.lat, reference.lon, p.lat, p.lon, point.x, point.y);
    return point;
}

Position onEarth(Position reference, Vector2<double> point)
{
    Position p;
    Geodetic::grid2LatLong(reference.lat, reference.lon, point.x, point.y, p.lat, p.lon);
    return p;
}

} // namespace

void printDistance()
{
    printByDistance("metres", {1.0, 10.0, 100.0, 1000.0, 5000.0}, [](Position start, double bearing, double metres) {
        const Position end = pointFrom(start, bearing, metres);
        return Geodetic::calcDistance(start.lat, start.lon, end.lat, end.lon) - metres;
    });
}

void printBearing()
{
    printByDistance("degrees", {1.0, 10.0, 100.0, 1000.0, 5000.0}, [](Position start, double bearing, double metres) {
        const Position end = pointFrom(start, bearing, metres);
        const double found = Geodetic::calcBearing(start.lat, start.lon, end.lat, end.lon);
        return Geodetic::getHeadingDifference(bearing, found);
    });
}

void printStep()
{
    printByDistance("metres", Kilometres, [](Position start, double bearing, double metres) {
        Position end;
        Geodetic::calcPointFromBrgDistance(start.lat, start.lon, bearing, metres, end.lat, end.lon);
        return metresBetween(end, pointFrom(start, bearing, metres));
    });
}

void printPlaneDistance()
{
    printByDistance("metres", Kilometres, [](Position start, double bearing, double metres) {
        return inPlane(start, pointFrom(start, bearing, metres)).length() - metres;
    });
}

void printPlaneBearing()
{
    printByDistance("degrees", Kilometres, [](Position start, double bearing, double metres) {
        const Vector2<double> point = inPlane(start, pointFrom(start, bearing, metres));
        return Geodetic::getHeadingDifference(bearing, std::atan2(point.x, point.y) * 57.29577951308232);
    });
}

void printRoundTrip()
{
    double largest = 0.0;
    for (const double lat : Latitudes) {
        for (const double distance : Kilometres) {
            const Position start = {lat, StartLon};
            largest = std::max(largest, worst([&](double bearing) {
                                   const Position point = pointFrom(start, bearing, distance * 1000.0);
                                   return metresBetween(point, onEarth(start, inPlane(start, point)));
                               }));
        }
    }
    std::printf("%.7f m\n", largest);
}

void printOutbound()
{
    Table table("radius", latitudeNames());
    for (const double kilometres : {1.0, 3.0, 10.0, 30.0}) {
        const double radius = kilometres * 1000.0;
        std::vector<double> row;
        for (const double lat : Latitudes) {
            const Position start = {lat, StartLon};
            row.push_back(worst([&](double course) {
                Position end;
                Geodetic::calcOutboundPoint(start.lat, start.lon, course, radius, course + 90.0, 1, end.lat, end.lon);
                const Position centre = pointFrom(start, course + 90.0, radius);
                // The radius that ends the turn stands at a right angle to the course there.
                const double toStart = bearingFrom(centre, start);
                return metresBetween(end, pointFrom(centre, toStart + 90.0, radius));
            }));
        }
        table.add(distanceName(kilometres), row);
    }
    table.print();
}

void printFlyBy()
{
    Table table("radius", latitudeNames());
    for (const double kilometres : {1.0, 3.0, 10.0, 30.0}) {
        const double radius = kilometres * 1000.0;
        const double leg = 2.5 * radius;
        std::vector<double> row;
        for (const double lat : Latitudes) {
            const Position waypoint = {lat, StartLon};
            row.push_back(worst([&](double course) {
                const Position previous = pointFrom(waypoint, course + 180.0, leg);
                const Position next = pointFrom(waypoint, course + 90.0, leg);
                bool limited = false;
                const auto arc = Geodetic::calcFlyByPoints(inPlane(waypoint, previous), {0.0, 0.0},
                                                           inPlane(waypoint, next), radius, 1, limited);
                // The arc should lie on the ground's circle about the ground's place of its centre.
                const Position first = onEarth(waypoint, arc.front());
                const Position middle = onEarth(waypoint, arc[arc.size() / 2]);
                const Position last = onEarth(waypoint, arc.back());
                const auto centre =
                    inPlane(waypoint, pointFrom(pointFrom(waypoint, course + 180.0, radius), course + 90.0, radius));
                double error = 0.0;
                for (const Position p : {first, middle, last}) {
                    error = std::max(error, std::abs(metresBetween(p, onEarth(waypoint, centre)) - radius));
                }
                return error;
            }));
        }
        table.add(distanceName(kilometres), row);
    }
    table.print();
}

void printDme()
{
    Table table("circle", latitudeNames());
    for (const double miles : {10.0, 30.0, 60.0, 120.0}) {
        std::vector<double> row;
        for (const double lat : Latitudes) {
            const Position station = {lat, StartLon};
            row.push_back(worst([&](double course) {
                Position end;
                Geodetic::calcDmeDistIntersection(station.lat, station.lon, course, station.lat, station.lon,
                                                  miles * NauticalMile, end.lat, end.lon);
                return metresBetween(station, end) - miles * NauticalMile;
            }));
        }
        table.add(std::to_string(static_cast<int>(miles)) + " NM", row);
    }
    table.print();
}

void printIntersection()
{
    // Two stations at a right angle to each other as seen from the crossing: the courses are those of the plane.
    printByDistance("metres", Kilometres, [](Position crossing, double bearing, double metres) {
        const Position first = pointFrom(crossing, bearing + 180.0, metres);
        const Position second = pointFrom(crossing, bearing + 90.0, metres);
        Position found;
        Geodetic::calcIntersection(first.lat, first.lon, bearingFrom(first, crossing), second.lat, second.lon,
                                   bearingFrom(second, crossing), found.lat, found.lon);
        return metresBetween(crossing, found);
    });
}

void printCartesian()
{
    Table table("metres", {"outwards", "northwards"});
    for (const double lat : {0.0, 15.0, 30.0, 45.0, 60.0, 75.0, 90.0}) {
        double x = 0.0, y = 0.0, z = 0.0;
        Geodetic::latLong2Cartesian(lat, 0.0, x, y, z);
        double trueX = 0.0, trueY = 0.0, trueZ = 0.0; // x to longitude 0, z to the pole
        GeographicLib::Geocentric::WGS84().Forward(lat, 0.0, 0.0, trueX, trueY, trueZ);
        const double toNorth = y - trueZ;
        const double toEquator = z - trueX;
        const double up = lat / 57.29577951308232;
        table.add("lat " + std::to_string(static_cast<int>(lat)), {toEquator * std::cos(up) + toNorth * std::sin(up),
                                                                   toNorth * std::cos(up) - toEquator * std::sin(up)});
    }
    table.print();
}

void printSinglePrecision()
{
    // Half the distance of neighbouring floats at the far end.
    const auto halfStep = [](float value) { return 0.5 * double(std::nextafter(value, 1e30f) - value); };
    Table plane("metres", {"in the plane"});
    for (const double kilometres : {10.0, 100.0, 1000.0}) {
        plane.add(distanceName(kilometres), {halfStep(static_cast<float>(kilometres * 1000.0))});
    }
    plane.add("degrees, 50", {halfStep(50.0f) * Geodetic::MetresPerDegree});
    plane.add("degrees, 179", {halfStep(179.0f) * Geodetic::MetresPerDegree});
    plane.print();
}

} // namespace Accuracy
