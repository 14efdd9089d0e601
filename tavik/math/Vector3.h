#pragma once

#include <type_traits>

namespace Tavik::Math {

/// Point or direction in space, such as a vertex or the direction of light.
///
/// The three fields are the whole object, so that a std::vector of it is a packed vertex array.
/// Safe from any thread.
template <typename T>
struct Vector3
{
    /// @{
    /// The components, 0 from the start.
    T x = T(0);
    T y = T(0);
    T z = T(0);
    /// @}

    constexpr Vector3() = default;
    /// From the components.
    constexpr Vector3(T xValue, T yValue, T zValue) : x(xValue), y(yValue), z(zValue) {}

    /// @{
    /// Component by component.
    constexpr Vector3 operator+(Vector3 b) const { return {x + b.x, y + b.y, z + b.z}; }
    constexpr Vector3 operator-(Vector3 b) const { return {x - b.x, y - b.y, z - b.z}; }
    constexpr Vector3 operator*(T factor) const { return {x * factor, y * factor, z * factor}; }
    constexpr Vector3 operator/(T divisor) const { return {x / divisor, y / divisor, z / divisor}; }
    /// @}

    /// @{
    /// Whether all components are equal, or not: exactly, so that a NaN is unequal to itself.
    constexpr bool operator==(Vector3 b) const { return x == b.x && y == b.y && z == b.z; }
    constexpr bool operator!=(Vector3 b) const { return !(*this == b); }
    /// @}
};

/// The vector v, each component times the factor.
template <typename T>
constexpr Vector3<T> operator*(T factor, Vector3<T> v)
{
    return v * factor;
}

static_assert(std::is_trivially_copyable_v<Vector3<float>> && sizeof(Vector3<float>) == 3 * sizeof(float));
static_assert(std::is_trivially_copyable_v<Vector3<double>> && sizeof(Vector3<double>) == 3 * sizeof(double));

} // namespace Tavik::Math
