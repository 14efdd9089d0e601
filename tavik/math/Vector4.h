#pragma once

#include <type_traits>

namespace Tavik::Math {

/// Homogeneous vertex (w is 1 for points), or a colour.
///
/// As a colour, x, y, z and w are red, green, blue and alpha, each from 0.0 to 1.0. The four fields are the whole
/// object, so that a std::vector of it is a packed vertex array.
/// Safe from any thread.
template <typename T>
struct Vector4
{
    /// @{
    /// The components, 0 from the start.
    T x = T(0);
    T y = T(0);
    T z = T(0);
    T w = T(0);
    /// @}

    constexpr Vector4() = default;
    /// From the components.
    constexpr Vector4(T xValue, T yValue, T zValue, T wValue) : x(xValue), y(yValue), z(zValue), w(wValue) {}

    /// @{
    /// Component by component.
    constexpr Vector4 operator+(Vector4 b) const { return {x + b.x, y + b.y, z + b.z, w + b.w}; }
    constexpr Vector4 operator-(Vector4 b) const { return {x - b.x, y - b.y, z - b.z, w - b.w}; }
    constexpr Vector4 operator*(T factor) const { return {x * factor, y * factor, z * factor, w * factor}; }
    constexpr Vector4 operator/(T divisor) const { return {x / divisor, y / divisor, z / divisor, w / divisor}; }
    /// @}

    /// @{
    /// Whether all components are equal, or not: exactly, so that a NaN is unequal to itself.
    constexpr bool operator==(Vector4 b) const { return x == b.x && y == b.y && z == b.z && w == b.w; }
    constexpr bool operator!=(Vector4 b) const { return !(*this == b); }
    /// @}
};

/// The vector v, each component times the factor.
template <typename T>
constexpr Vector4<T> operator*(T factor, Vector4<T> v)
{
    return v * factor;
}

static_assert(std::is_trivially_copyable_v<Vector4<float>> && sizeof(Vector4<float>) == 4 * sizeof(float));
static_assert(std::is_trivially_copyable_v<Vector4<double>> && sizeof(Vector4<double>) == 4 * sizeof(double));

} // namespace Tavik::Math
