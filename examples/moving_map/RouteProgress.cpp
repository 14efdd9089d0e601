#include <moving_map/RouteProgress.h>

#include <algorithm>
#include <limits>

namespace MovingMap {

namespace {

// More than an aircraft flies from one position to the next.
constexpr double JumpMetres = 5'000.0;
constexpr double SearchMetres = 20'000.0;

} // namespace

double RouteProgress::update(Position aircraft)
{
    const bool hasJumped = !mAircraft || planeDistance(*mAircraft, aircraft) > JumpMetres;
    if (hasJumped) {
        mDistanceMetres = nearestBetween(aircraft, 0.0, mPath.length());
    } else if (!(*mAircraft == aircraft)) {
        mDistanceMetres = nearestBetween(aircraft, mDistanceMetres - SearchMetres, mDistanceMetres + SearchMetres);
    }
    mAircraft = aircraft;
    return mDistanceMetres;
}

double RouteProgress::nearestBetween(Position aircraft, double beginMetres, double endMetres)
{
    const std::vector<PathPoint>& points = mPath.points();
    const LocalPlane plane(aircraft);
    double nearest = std::numeric_limits<double>::infinity();
    double distance = mDistanceMetres;
    auto point = std::lower_bound(points.begin() + 1, points.end() - 1, beginMetres,
                                  [](const PathPoint& p, double metres) { return p.distanceMetres < metres; });
    for (LocalPlane::Point from = plane.toPoint((point - 1)->position);
         point != points.end() && (point - 1)->distanceMetres <= endMetres; ++point) {
        const LocalPlane::Point to = plane.toPoint(point->position);
        const LocalPlane::Point along = to - from;
        const double square = along.dot(along);
        const double part = square > 0.0 ? std::clamp(-from.dot(along) / square, 0.0, 1.0) : 0.0;
        const LocalPlane::Point place = from + along * part;
        if (const double apart = place.dot(place); apart < nearest) {
            nearest = apart;
            const double begin = (point - 1)->distanceMetres;
            distance = begin + part * (point->distanceMetres - begin);
        }
        from = to;
    }
    return distance;
}

} // namespace MovingMap
