#pragma once

#include <moving_map/ForwardView.h>
#include <moving_map/LabelPlacement.h>
#include <moving_map/Scene.h>
#include <moving_map/TerrainWorker.h>
#include <moving_map/Text.h>
#include <tavik/opengl/LineLoops.h>
#include <tavik/opengl/Video.h>

#include <optional>

namespace MovingMap {

/// The view from the aircraft's nose in the upper right corner of the map, as a camera would send it: pictures are
/// drawn on the worker's thread, one at a time, and streamed to the screen.
class CameraLayer
{
public:
    /// The worker must outlive the layer.
    CameraLayer(TerrainWorker& worker, const MapColors& colors);

    /// Orders a picture when the aircraft has moved on since the last one.
    void update(const Scene& scene, bool isWanted);

    /// The same for the very place where the aircraft is; false until its picture is there.
    bool complete(const Scene& scene);

    /// Where it stands on the map; nothing where it is not wanted or the map is too small.
    std::optional<Box> box() const { return mBox; }

    void render();

private:
    void arrange(const Scene& scene);
    void order(const CameraPose& pose);
    void show(const CameraPicture& picture);

    TerrainWorker& mWorker;
    std::optional<Box> mBox;
    CameraPose mPose; // of the last picture that was ordered
    bool mIsOrdered = false;
    bool mIsUnderWay = false;
    Tavik::OpenGL::Video mVideo;
    Tavik::OpenGL::LineLoops mFrame;
    TextBatch mCaption;
};

} // namespace MovingMap
