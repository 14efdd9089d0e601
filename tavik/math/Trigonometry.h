#pragma once

#include <cmath>

/// Angle constants and the paired sine and cosine; for the library's own sources only.
namespace Tavik::Math {

constexpr double DegreesToRadians = 0.017453292519943295;
constexpr double RadiansToDegrees = 57.29577951308232;

struct SinCos
{
    double sin;
    double cos;
};

/// Both functions of one angle in radians, for little more than the price of one.
inline SinCos sinCos(double radians)
{
#ifdef __GLIBC__
    // One argument reduction instead of two; the bits are those of sin() and cos().
    // Not side by side, or compilers fetch both by one load, which waits until both stores have left for the cache.
    double results[3];
    ::sincos(radians, &results[0], &results[2]);
    return {results[0], results[2]};
#else
    return {std::sin(radians), std::cos(radians)};
#endif
}

inline SinCos sinCosDegrees(double degrees)
{
    return sinCos(degrees * DegreesToRadians);
}

} // namespace Tavik::Math
