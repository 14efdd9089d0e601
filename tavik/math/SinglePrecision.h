#pragma once

#include <tavik/math/Vector2.h>

/// Steps that are rounded to single precision on purpose; for the library's own sources only.
namespace Tavik::Math {

/// value rounded to single precision, also where the compiler would rather not.
///
/// GCC 12 vectorises two neighbouring conversions from double to float and back to double, and then drops both of
/// them. A volatile variable keeps the rounding; so use this function, or toFloat(), wherever a float is read again as
/// a double.
inline float roundToFloat(double value)
{
    volatile float rounded = static_cast<float>(value);
    return rounded;
}

inline Vector2<float> toFloat(Vector2<double> v)
{
    return {roundToFloat(v.x), roundToFloat(v.y)};
}

inline Vector2<double> toDouble(Vector2<float> v)
{
    return {v.x, v.y};
}

} // namespace Tavik::Math
