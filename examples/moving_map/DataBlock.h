#pragma once

#include <moving_map/LabelPlacement.h>
#include <moving_map/Scene.h>
#include <moving_map/Text.h>
#include <tavik/opengl/TriangleStrip.h>

#include <optional>

namespace MovingMap {

/// Figures in the upper left corner of the map: ground speed, track, altitude, and the next fix with its bearing,
/// distance along the route, and time.
///
/// The text is made anew only when a figure changes by what can be read.
class DataBlock
{
public:
    explicit DataBlock(const MapColors& colors);

    void update(const Scene& scene, bool isWanted);

    /// Where it stands on the map; nothing where it is not wanted or the map is too small.
    std::optional<Box> box() const { return mBox; }

    void render();

private:
    /// The figures as they are read.
    struct Figures
    {
        int speedKnots = 0;
        int trackDegrees = 0;
        std::optional<int> altitudeFeet;
        std::size_t fix = 0;
        int bearingDegrees = 0;
        int tenthMiles = 0;
        std::optional<int> seconds; // nothing for one that stands still
        float top = 0.0f;           // of the block, in pixels of the map

        bool operator==(const Figures& b) const;
    };

    static Figures figures(const Scene& scene);
    void write(const Figures& figures, const std::string& fixName);
    void writeFigure(int column, int row, const char* caption, const std::string& value);

    std::optional<Box> mBox;
    std::optional<Figures> mFigures; // that are written
    Tavik::OpenGL::TriangleStrip mPanel;
    TextBatch mCaptions;
    TextBatch mValues;
    TextBatch mFixName;
};

} // namespace MovingMap
