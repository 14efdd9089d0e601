#pragma once

#include <tavik/math/Vector2.h>

namespace MovingMap {

/// A place on the earth, in degrees; south and west are negative.
struct Position
{
    double latDegrees = 0.0;
    double lonDegrees = 0.0;

    bool operator==(const Position& other) const
    {
        return latDegrees == other.latDegrees && lonDegrees == other.lonDegrees;
    }
};

/// The plane about one position in which turns and arcs are circles: x east and y north, in metres.
///
/// Straight lines stay straight from one plane to another, so that each turn may be computed in the plane about its own
/// waypoint and still meets its legs.
class LocalPlane
{
public:
    using Point = Tavik::Math::Vector2<double>;

    explicit LocalPlane(Position reference) : mReference(reference) {}

    Point toPoint(Position position) const;
    Position toPosition(Point point) const;

private:
    Position mReference;
};

/// Length of the line between two positions in metres, in the plane about the first.
double planeDistance(Position from, Position to);

/// Course of that line, clockwise from true north, in [0, 360] degrees; 0 where the positions coincide.
double planeCourse(Position from, Position to);

/// Course of a vector of the plane, clockwise from north, in [0, 360] degrees; 0 for a vector without length.
double courseOf(LocalPlane::Point vector);

/// Vector of length 1 along a course in degrees.
LocalPlane::Point directionOf(double courseDegrees);

} // namespace MovingMap
