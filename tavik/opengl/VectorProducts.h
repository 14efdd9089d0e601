#pragma once

#include <tavik/math/Vector3.h>

namespace Tavik::OpenGL {

// In double precision no component of a product overflows, whatever the vertices, and none is lost to rounding where
// vertices lie far from the origin.

inline Math::Vector3<double> difference(Math::Vector3<float> a, Math::Vector3<float> b)
{
    return {static_cast<double>(a.x) - b.x, static_cast<double>(a.y) - b.y, static_cast<double>(a.z) - b.z};
}

inline Math::Vector3<double> crossProduct(Math::Vector3<double> a, Math::Vector3<double> b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double dotProduct(Math::Vector3<double> a, Math::Vector3<double> b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

} // namespace Tavik::OpenGL
