#pragma once

#include <moving_map/Scene.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/Lines.h>

namespace MovingMap {

/// The aircraft on the map, with what is measured from it: range rings with bearing ticks, and the track that it will
/// follow if it flies straight on.
class AircraftLayer
{
public:
    void render(const Scene& scene);

private:
    void renderRings(const Scene& scene, MapView::Pixel place);
    void renderProjectedTrack(const Scene& scene, MapView::Pixel place);
    void renderSymbol(const Scene& scene, MapView::Pixel place);

    Tavik::OpenGL::LineLoops mOuterRing;
    Tavik::OpenGL::LineLoops mInnerRing;
    Tavik::OpenGL::Lines mTicks;
    Tavik::OpenGL::LineLoops mPointers;
    Tavik::OpenGL::LineStrips mTrack;
    Tavik::OpenGL::Lines mMinutes;
    Tavik::OpenGL::LineLoops mSymbol;
};

} // namespace MovingMap
