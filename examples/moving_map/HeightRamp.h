#pragma once

namespace MovingMap {

/// The map's colours of heights as a texture for Tavik's TextureTerrain: the sea, and a shore without a transition.
///
/// Drawing thread only.
class HeightRamp
{
public:
    HeightRamp() = default;
    ~HeightRamp();

    HeightRamp(const HeightRamp&) = delete;
    HeightRamp& operator=(const HeightRamp&) = delete;

    /// OpenGL's name of the texture, which is made when it is first asked for.
    unsigned int name();

private:
    unsigned int mName = 0;
};

} // namespace MovingMap
