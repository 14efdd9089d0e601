#pragma once

#include <tavik/math/Vector4.h>

#include <vector>

namespace MovingMap {

using Color = Tavik::Math::Vector4<float>;

/// Colour of a height: blue for the sea, from the coast on greens, ochres, browns and white.
Color heightColor(double metres);

/// The heights in metres, from the coast upwards, between which colours change evenly.
const std::vector<double>& tintHeights();

/// From here up a height is land: radar heights of the sea are not quite even. The coast is drawn at this height.
constexpr double CoastMetres = 1.0;

/// Whether a height is taken for the sea, which is flat and blue. Land below sea level lies lower, or is taken for it.
bool isSea(double metres);

/// Brighter or darker: the components are multiplied, and kept within [0, 1].
Color shaded(Color color, float factor);

/// The colour with another opacity.
constexpr Color translucent(Color color, float opacity)
{
    return {color.x, color.y, color.z, opacity};
}

/// Colours that are the user's choice.
struct MapColors
{
    Color background{0.035f, 0.047f, 0.063f, 1.0f}; ///< where the map knows no terrain
    Color activeLeg{1.0f, 0.25f, 0.95f, 1.0f};
    Color otherLeg{0.94f, 0.96f, 0.98f, 1.0f};
    Color flownLeg{0.55f, 0.58f, 0.62f, 1.0f};
    Color rings{0.74f, 0.82f, 0.90f, 0.9f};
    Color projectedTrack{0.35f, 0.95f, 0.45f, 1.0f};
    Color aircraft{1.0f, 0.92f, 0.25f, 1.0f};
    Color station{0.30f, 0.85f, 0.95f, 1.0f};
    Color obstacle{1.0f, 0.62f, 0.40f, 1.0f};
};

/// The others.
namespace Palette {

constexpr Color PanelBackground(0.024f, 0.033f, 0.045f, 1.0f);
constexpr Color Frame(0.30f, 0.36f, 0.42f, 1.0f);
constexpr Color Grid(0.16f, 0.20f, 0.24f, 1.0f);
constexpr Color Casing(0.02f, 0.03f, 0.04f, 0.75f); // dark edge beneath lines that cross the contours
constexpr Color SeaLevel(0.26f, 0.55f, 0.88f, 1.0f);
constexpr Color Traffic(0.55f, 1.0f, 1.0f, 1.0f);
constexpr Color OldTraffic(0.52f, 0.66f, 0.68f, 1.0f);
constexpr Color Attention(1.0f, 0.69f, 0.0f, 1.0f); // what the pilot should look at

constexpr Color Panel(0.02f, 0.03f, 0.045f, 0.86f); // below figures on the map
constexpr Color RangeText(0.74f, 0.86f, 0.96f, 1.0f);
constexpr Color Halo(0.02f, 0.03f, 0.04f, 1.0f); // about text
constexpr Color Text(0.96f, 0.97f, 0.98f, 1.0f);
constexpr Color Caption(0.62f, 0.70f, 0.78f, 1.0f);

} // namespace Palette

} // namespace MovingMap
