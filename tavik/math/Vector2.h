#pragma once

#include <cmath>
#include <type_traits>

namespace Tavik::Math {

/// Point or direction in the plane; also a texture coordinate.
///
/// In the navigation plane x is east and y is north, both in metres. The two fields are the whole object, so that a
/// std::vector of it can be handed to OpenGL as a packed vertex array.
///
///     Vector2<double> leg = waypoint - previous;
///     Vector2<double> direction = leg.normalized();
///
/// Safe from any thread, like every value type.
template <typename T>
struct Vector2
{
    /// @{
    /// The components, 0 from the start.
    T x = T(0);
    T y = T(0);
    /// @}

    constexpr Vector2() = default;
    /// From the components.
    constexpr Vector2(T xValue, T yValue) : x(xValue), y(yValue) {}

    /// @{
    /// Component by component.
    constexpr Vector2 operator+(Vector2 b) const { return {x + b.x, y + b.y}; }
    constexpr Vector2 operator-(Vector2 b) const { return {x - b.x, y - b.y}; }
    constexpr Vector2 operator*(T factor) const { return {x * factor, y * factor}; }
    constexpr Vector2 operator/(T divisor) const { return {x / divisor, y / divisor}; }
    /// @}

    /// @{
    /// Whether all components are equal, or not: exactly, so that a NaN is unequal to itself.
    constexpr bool operator==(Vector2 b) const { return x == b.x && y == b.y; }
    constexpr bool operator!=(Vector2 b) const { return !(*this == b); }
    /// @}

    /// x·b.x + y·b.y.
    constexpr T dot(Vector2 b) const { return x * b.x + y * b.y; }

    /// x·b.y − y·b.x: positive when b lies counter-clockwise of this vector.
    constexpr T cross(Vector2 b) const { return x * b.y - y * b.x; }

    /// The square root of the dot product with itself.
    T length() const { return std::sqrt(dot(*this)); }

    /// This vector divided by its length; not finite when the length is, or rounds to, zero.
    Vector2 normalized() const { return *this / length(); }
};

/// The vector v, each component times the factor.
template <typename T>
constexpr Vector2<T> operator*(T factor, Vector2<T> v)
{
    return v * factor;
}

static_assert(std::is_trivially_copyable_v<Vector2<float>> && sizeof(Vector2<float>) == 2 * sizeof(float));
static_assert(std::is_trivially_copyable_v<Vector2<double>> && sizeof(Vector2<double>) == 2 * sizeof(double));

} // namespace Tavik::Math
