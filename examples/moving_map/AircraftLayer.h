#pragma once

#include <moving_map/Scene.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/Lines.h>
#include <tavik/opengl/Polygon.h>

namespace MovingMap {

/// The aircraft on the map, and the track that it will follow if it flies straight on, with a mark for each minute.
/// One whose feed is lost is hollow, and no track is promised.
///
/// Both are made with the nose up and turned by their matrix; the track is made anew only when its length changes.
class AircraftLayer
{
public:
    AircraftLayer();

    void render(const Scene& scene);

    /// Half the edge of a square about the symbol, pixels.
    static constexpr float SymbolSize = 19.0f;

private:
    void buildTrack(float minute);

    float mMinute = -1.0f; // pixels flown in a minute, for which the track was built
    Tavik::OpenGL::LineStrips mTrack;
    Tavik::OpenGL::Lines mMinutes;
    Tavik::OpenGL::LineLoops mOutline;
    Tavik::OpenGL::Polygon mSymbol;
};

} // namespace MovingMap
