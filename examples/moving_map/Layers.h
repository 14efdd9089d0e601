#pragma once

#include <bitset>
#include <cstddef>

namespace MovingMap {

/// Parts of the picture that can be switched on and off. The route and the aircraft are always there.
enum class Layer
{
    Relief,
    Contours,
    Airspaces,
    Symbols, ///< of fixes, stations and obstacles
    Compass, ///< rose and rings
    Names,   ///< of fixes, stations, obstacles and airspaces that are shown
    Figures,
    Profile,
    Camera
};

constexpr std::size_t LayerCount = 9;

/// Which parts are shown; all, to begin with.
class Layers
{
public:
    bool shows(Layer layer) const { return mShown[index(layer)]; }
    void show(Layer layer, bool isShown) { mShown[index(layer)] = isShown; }
    void toggle(Layer layer) { mShown.flip(index(layer)); }

    bool operator==(const Layers& other) const { return mShown == other.mShown; }

private:
    static std::size_t index(Layer layer) { return static_cast<std::size_t>(layer); }

    std::bitset<LayerCount> mShown = ~std::bitset<LayerCount>();
};

} // namespace MovingMap
