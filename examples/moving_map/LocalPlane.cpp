#include <moving_map/LocalPlane.h>

#include <moving_map/Units.h>
#include <tavik/geodetic/EarthModel.h>

#include <cmath>

namespace MovingMap {

LocalPlane::Point LocalPlane::toPoint(Position position) const
{
    Point point;
    Tavik::Geodetic::latLong2Grid(mReference.latDegrees, mReference.lonDegrees, position.latDegrees,
                                  position.lonDegrees, point.x, point.y);
    return point;
}

Position LocalPlane::toPosition(Point point) const
{
    Position position;
    Tavik::Geodetic::grid2LatLong(mReference.latDegrees, mReference.lonDegrees, point.x, point.y, position.latDegrees,
                                  position.lonDegrees);
    return position;
}

double planeDistance(Position from, Position to)
{
    return LocalPlane(from).toPoint(to).length();
}

double planeCourse(Position from, Position to)
{
    return courseOf(LocalPlane(from).toPoint(to));
}

double courseOf(LocalPlane::Point vector)
{
    const double course = std::atan2(vector.x, vector.y) * DegreesPerRadian;
    return course < 0.0 ? course + 360.0 : course;
}

LocalPlane::Point directionOf(double courseDegrees)
{
    const double course = courseDegrees * RadiansPerDegree;
    return {std::sin(course), std::cos(course)};
}

} // namespace MovingMap
