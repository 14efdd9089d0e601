#pragma once

#include <moving_map/FeedData.h>
#include <moving_map/Scene.h>
#include <moving_map/Text.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/Lines.h>
#include <tavik/opengl/TriangleStrip.h>

#include <vector>

namespace MovingMap {

/// Other aircraft on the map, as traffic displays show them: an arrowhead along the track (a diamond where the track is
/// unknown), filled for those within 6 miles and 1200 feet; beside it the height above or below the own ship in
/// hundreds of feet, with an arrow for a climb or descent of 500 feet a minute and more, and the callsign.
///
/// Those whose last position is old are dimmed. Aircraft more than 9900 feet above or below are left out; of one whose
/// height is unknown, or when the own ship's is, no height is told.
class TrafficLayer
{
public:
    TrafficLayer();

    void update(const Scene& scene, const std::vector<FeedPicture::Aircraft>& traffic);

    void render();

private:
    /// What is drawn in one colour.
    struct Batch
    {
        explicit Batch(Color color);

        void clear();
        void add(const Scene& scene, const Motion& motion, MapView::Pixel place);
        void addTag(double metresAbove, MapView::Pixel place);
        void addArrow(MapView::Pixel middle, float up);
        void render();

        Color color;
        bool isEmpty = true;
        TextBatch text;
        Tavik::OpenGL::LineLoops outlines;
        Tavik::OpenGL::Lines arrows;
        Tavik::OpenGL::TriangleStrip fill;
        std::vector<MapView::Pixel> corners; // of one outline
    };

    Batch mOld;
    Batch mFresh;
};

} // namespace MovingMap
