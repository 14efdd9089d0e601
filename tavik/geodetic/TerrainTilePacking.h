#pragma once

// Unit normals in three bytes. Internal.

namespace Tavik::Geodetic {

constexpr float PackScale = 127.5f;

/// A component of a unit vector on the scale of its byte: [0, 255], a little beyond by rounding.
inline float scaled(float component)
{
    return (component + 1.0f) * PackScale;
}

/// The byte of a component; 0 for NaN.
inline unsigned char packed(float component)
{
    const float value = scaled(component);
    return value > 0.0f ? static_cast<unsigned char>(value) : 0;
}

} // namespace Tavik::Geodetic
