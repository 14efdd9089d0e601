#pragma once

#include <moving_map/LabelPlacement.h>
#include <moving_map/ProfileChart.h>
#include <moving_map/Scene.h>
#include <moving_map/Text.h>

#include <optional>
#include <tuple>
#include <vector>

namespace MovingMap {

/// What is written into the profile: the scale of heights in feet, distances from the aircraft in miles, and the names
/// of the fixes at their planned heights.
///
/// The text is made anew when the chart has changed.
class ProfileLabels
{
public:
    /// The path must outlive the labels.
    ProfileLabels(const RoutePath& path, const MapColors& colors);

    /// Draws over the chart, in the area that the chart has activated.
    void render(const Scene& scene, const ProfileChart& chart, const Area& area);

private:
    // Distance flown, next fix, pixels of sea level and of a height, area.
    using Shown = std::tuple<double, std::size_t, float, float, int, int>;

    void write(const Scene& scene, const ProfileChart& chart, const Area& area);
    void writeScale(const ProfileChart& chart, const Area& area);
    void writeDistances(const Scene& scene, const ProfileChart& chart, const Area& area);
    void writeFixes(const Scene& scene, const ProfileChart& chart, const Area& area);

    std::optional<Shown> mShown;
    LabelPlacement mPlacement;
    std::vector<PlacedLabel> mFixes; // of the path, in its order
    TextBatch mScale;
    TextBatch mNames;
    TextBatch mActiveName;
};

} // namespace MovingMap
