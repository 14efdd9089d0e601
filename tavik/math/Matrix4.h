#pragma once

#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>

#include <cstddef>
#include <type_traits>

namespace Tavik::Math {

/// 4 × 4 transform stored column by column, as OpenGL takes it without transposition.
///
/// Elements 0 to 3 are the first column; the translation of an affine transform stands in elements 12, 13 and 14.
/// A matrix starts as the identity.
///
///     Matrix4<float> m;
///     m.translate(100.0f, 50.0f, 0.0f);
///     Vector3<float> moved = m * Vector3<float>(1.0f, 2.0f, 0.0f); // (101, 52, 0)
///
/// Safe from any thread.
template <typename T>
class Matrix4
{
public:
    /// Number of elements.
    static constexpr std::size_t ElementCount = 16;

    /// The identity.
    constexpr Matrix4() = default;

    /// The matrix of these elements.
    /// @param elements  16 values, column by column
    explicit constexpr Matrix4(const T* elements)
    {
        for (std::size_t i = 0; i < ElementCount; ++i) {
            mElements[i] = elements[i];
        }
    }

    /// Makes this the identity.
    constexpr void setIdentity() { *this = Matrix4(); }

    /// @{
    /// The 16 elements, column by column.
    constexpr T* data() { return mElements; }
    constexpr const T* data() const { return mElements; }
    /// @}

    /// @{
    /// An element.
    /// @param index  column × 4 + row, in [0, 15]
    constexpr T& operator[](std::size_t index) { return mElements[index]; }
    constexpr const T& operator[](std::size_t index) const { return mElements[index]; }
    /// @}

    /// The transform that applies b first and this one after it.
    constexpr Matrix4 operator*(const Matrix4& b) const
    {
        Matrix4 result;
        for (std::size_t column = 0; column < ElementCount; column += 4) {
            for (std::size_t row = 0; row < 4; ++row) {
                result.mElements[column + row] =
                    combineRow(row, b[column], b[column + 1], b[column + 2], b[column + 3]);
            }
        }
        return result;
    }

    /// The transformed v.
    constexpr Vector4<T> operator*(const Vector4<T>& v) const
    {
        return {combineRow(0, v.x, v.y, v.z, v.w), combineRow(1, v.x, v.y, v.z, v.w), combineRow(2, v.x, v.y, v.z, v.w),
                combineRow(3, v.x, v.y, v.z, v.w)};
    }

    /// The point v, taken with w = 1; its transformed w is dropped, not divided by.
    constexpr Vector3<T> operator*(const Vector3<T>& v) const
    {
        return {combineRow(0, v.x, v.y, v.z, T(1)), combineRow(1, v.x, v.y, v.z, T(1)),
                combineRow(2, v.x, v.y, v.z, T(1))};
    }

    /// Multiplies a translation on from the right: vertices are moved first and meet the rest of the transform after.
    constexpr void translate(T x, T y, T z)
    {
        for (std::size_t row = 0; row < 4; ++row) {
            mElements[12 + row] = combineRow(row, x, y, z, T(1));
        }
    }

    /// @{
    /// Whether all elements are equal, or not: exactly, so that a NaN is unequal to itself.
    constexpr bool operator==(const Matrix4& b) const
    {
        for (std::size_t i = 0; i < ElementCount; ++i) {
            if (mElements[i] != b.mElements[i]) {
                return false;
            }
        }
        return true;
    }
    constexpr bool operator!=(const Matrix4& b) const { return !(*this == b); }
    /// @}

private:
    constexpr T combineRow(std::size_t row, T x, T y, T z, T w) const
    {
        return mElements[row] * x + mElements[row + 4] * y + mElements[row + 8] * z + mElements[row + 12] * w;
    }

    T mElements[ElementCount] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};

static_assert(std::is_trivially_copyable_v<Matrix4<float>> && sizeof(Matrix4<float>) == 16 * sizeof(float));
static_assert(std::is_trivially_copyable_v<Matrix4<double>> && sizeof(Matrix4<double>) == 16 * sizeof(double));

} // namespace Tavik::Math
