#pragma once

#include <moving_map/LabelPlacement.h>
#include <moving_map/Scene.h>
#include <moving_map/Text.h>

#include <optional>
#include <string>
#include <vector>

namespace MovingMap {

/// What is written on the map: the numbers of the compass rose, the names of fixes, stations and airspaces, these with
/// their class and limits, and the ranges of the rings.
///
/// They are placed anew only when something has moved. The numbers come first, then the next fix, the other fixes,
/// stations, ranges and airspaces.
class MapLabels
{
public:
    MapLabels(const Route& route, const RoutePath& path, const MapColors& colors);

    MapLabels(const MapLabels&) = delete;
    MapLabels& operator=(const MapLabels&) = delete;

    /// @param covered  what else the map shows that no label may cover, in pixels of the map
    void update(const Scene& scene, const std::vector<Box>& covered);

    void render();

private:
    /// What one label says, and of what.
    struct Entry
    {
        Layer layer; // that it belongs to
        std::vector<std::string> lines;
        int textSize;
        TextBatch* batch;
        Position position;                 // of a fix or station
        std::vector<InteriorPoint> points; // of an airspace
        double acrossMetres = 0.0;         // of an airspace, its smaller extent
        double ringPart = 0.0;             // of a ring, its radius as a part of the range
        std::optional<int> bearing;        // of a number of the rose
    };

    /// What the labels depend on.
    struct State
    {
        MapView view;
        Position aircraft;
        std::size_t nextFix;
        double rangeMetres;
        Layers layers;
        std::vector<Box> covered;
    };

    void add(Entry entry, int priority);
    void addAirspace(const Airspace& airspace);
    static bool isWanted(const Layers& layers, const Entry& entry);
    bool isUpToDate(const Scene& scene, const std::vector<Box>& covered) const;
    void addObstacles(const Scene& scene, const std::vector<Box>& covered);
    static void setPlacesOnRing(const Scene& scene, const Entry& entry, PlacedLabel& label);
    static void setPlacesInside(const Scene& scene, const Entry& entry, PlacedLabel& label);
    void fillBatches(const Scene& scene);
    void measure(std::size_t index);

    TextBatch mFixText;
    TextBatch mActiveText;
    TextBatch mStationText;
    TextBatch mObstacleText;
    TextBatch mRangeText;
    TextBatch mNumberText;
    std::vector<TextBatch> mAirspaceTexts; // by class

    std::vector<Entry> mEntries;      // of the fixes first, in their order
    std::vector<PlacedLabel> mLabels; // of the entries
    LabelPlacement mPlacement;
    std::optional<State> mState; // for which the labels were placed
};

} // namespace MovingMap
