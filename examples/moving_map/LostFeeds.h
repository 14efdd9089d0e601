#pragma once

#include <moving_map/FeedData.h>
#include <moving_map/LabelPlacement.h>
#include <moving_map/Scene.h>
#include <moving_map/Text.h>
#include <tavik/opengl/TriangleStrip.h>

#include <optional>

namespace MovingMap {

/// Says which feeds are lost, such as "TRAFFIC LOST": one line for each in the left upper part of the map, below the
/// figures where there are any.
class LostFeeds
{
public:
    LostFeeds();

    /// @param figures  the box of the figures
    void update(const Scene& scene, const PerFeed<bool>& isLost, const std::optional<Box>& figures);

    /// Where it stands on the map; nothing where no feed is lost.
    std::optional<Box> box() const { return mBox; }

    void render();

private:
    std::optional<Box> mBox;
    PerFeed<bool> mShown = {}; // for which the text was made
    Tavik::OpenGL::TriangleStrip mPanel;
    TextBatch mText;
};

} // namespace MovingMap
