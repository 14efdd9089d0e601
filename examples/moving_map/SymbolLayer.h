#pragma once

#include <moving_map/Scene.h>
#include <tavik/opengl/VectorFont.h>

#include <array>
#include <optional>

namespace MovingMap {

/// Symbols of the fixes and stations on the map, each by its kind; the next fix stands out.
///
/// They are made anew only when the view or the next fix changes.
class SymbolLayer
{
public:
    void render(const Scene& scene);

    /// Half the edge of a square about a symbol, pixels.
    static constexpr float SymbolRadius = 11.0f;

private:
    enum Look
    {
        Stations,
        Obstacles,
        Fixes,
        ActiveFix,
        LookCount
    };

    void build(const Scene& scene);
    void add(Look look, const Scene& scene, Position position, char symbol);

    std::array<Tavik::OpenGL::VectorFont, LookCount> mSymbols;
    std::optional<MapView> mView; // for which the symbols were made
    std::size_t mNextFix = 0;     // likewise
    GeoBounds mVisible;           // of the view
};

} // namespace MovingMap
