#include <moving_map/Palette.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace MovingMap {

namespace {

struct Tint
{
    double metres;
    Color color;
};

constexpr double DeepestSeaMetres = -30.0;

// Where two tints have the same height, colours change at once.
constexpr std::array<Tint, 10> Tints = {{
    {-400.0, {0.30f, 0.30f, 0.62f, 1.0f}},
    {DeepestSeaMetres, Palette::SeaLevel},
    {CoastMetres, Palette::SeaLevel},
    {CoastMetres, {0.21f, 0.52f, 0.29f, 1.0f}},
    {300.0, {0.36f, 0.62f, 0.30f, 1.0f}},
    {800.0, {0.66f, 0.66f, 0.30f, 1.0f}},
    {1400.0, {0.78f, 0.57f, 0.28f, 1.0f}},
    {2100.0, {0.70f, 0.42f, 0.26f, 1.0f}},
    {2900.0, {0.72f, 0.60f, 0.54f, 1.0f}},
    {3800.0, {0.98f, 0.98f, 1.00f, 1.0f}},
}};

} // namespace

Color heightColor(double metres)
{
    std::size_t above = 1;
    while (above + 1 < Tints.size() && Tints[above].metres <= metres) {
        ++above;
    }
    const Tint& low = Tints[above - 1];
    const Tint& high = Tints[above];
    const double part = std::clamp((metres - low.metres) / (high.metres - low.metres), 0.0, 1.0);
    return low.color + (high.color - low.color) * static_cast<float>(part);
}

const std::vector<double>& tintHeights()
{
    static const std::vector<double> heights = [] {
        std::vector<double> result;
        for (const Tint& tint : Tints) {
            if (tint.metres >= CoastMetres && (result.empty() || tint.metres > result.back())) {
                result.push_back(tint.metres);
            }
        }
        return result;
    }();
    return heights;
}

bool isSea(double metres)
{
    return metres < CoastMetres && metres > DeepestSeaMetres;
}

Color shaded(Color color, float factor)
{
    return {std::clamp(color.x * factor, 0.0f, 1.0f), std::clamp(color.y * factor, 0.0f, 1.0f),
            std::clamp(color.z * factor, 0.0f, 1.0f), color.w};
}

} // namespace MovingMap
