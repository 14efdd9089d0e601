#pragma once

namespace MovingMap {

constexpr double MetresPerNauticalMile = 1852.0;
constexpr double MetresPerFoot = 0.3048;
constexpr double SecondsPerHour = 3600.0;
constexpr double RadiansPerDegree = 0.017453292519943295;
constexpr double DegreesPerRadian = 57.29577951308232;

/// Length of a degree of latitude in the local plane of Tavik::Geodetic::latLong2Grid, in metres.
constexpr double MetresPerDegree = 111319.49079327358;

} // namespace MovingMap
