#pragma once

#include <tavik/math/Vector2.h>
#include <tavik/math/Vector4.h>

namespace Gallery {

using Point = Tavik::Math::Vector2<float>;
using Color = Tavik::Math::Vector4<float>;

constexpr Color Background(0.06f, 0.08f, 0.11f, 1.0f);
constexpr Color White(0.94f, 0.96f, 0.98f, 1.0f);
constexpr Color Grey(0.52f, 0.58f, 0.64f, 1.0f);
constexpr Color Magenta(0.95f, 0.35f, 0.90f, 1.0f);
constexpr Color Cyan(0.30f, 0.85f, 0.95f, 1.0f);
constexpr Color Green(0.40f, 0.85f, 0.45f, 1.0f);
constexpr Color Amber(1.0f, 0.75f, 0.25f, 1.0f);
constexpr Color Blue(0.30f, 0.52f, 0.95f, 1.0f);

/// Between a and b, at part 0 to 1 of the way.
inline Color mixed(Color a, Color b, float part)
{
    const float rest = 1.0f - part;
    return {a.x * rest + b.x * part, a.y * rest + b.y * part, a.z * rest + b.z * part, a.w * rest + b.w * part};
}

} // namespace Gallery
