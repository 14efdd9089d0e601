#pragma once

#include <moving_map/AircraftLayer.h>
#include <moving_map/AirspaceLayer.h>
#include <moving_map/Area.h>
#include <moving_map/CameraLayer.h>
#include <moving_map/CompassLayer.h>
#include <moving_map/DataBlock.h>
#include <moving_map/DisplaySettings.h>
#include <moving_map/FeedData.h>
#include <moving_map/LostFeeds.h>
#include <moving_map/MapLabels.h>
#include <moving_map/MapView.h>
#include <moving_map/ProfileChart.h>
#include <moving_map/ProfileLabels.h>
#include <moving_map/RouteLayer.h>
#include <moving_map/RouteProfile.h>
#include <moving_map/RouteProgress.h>
#include <moving_map/Simulation.h>
#include <moving_map/SymbolLayer.h>
#include <moving_map/TerrainCache.h>
#include <moving_map/TerrainWorker.h>
#include <moving_map/TrafficLayer.h>
#include <tavik/opengl/Lines.h>

#include <vector>

namespace MovingMap {

/// The whole picture: the map, and the profile below it.
///
/// For each frame: update, then render.
class Display
{
public:
    /// Route, path and worker must outlive the display. A current OpenGL context is needed from here on.
    Display(const Route& route, const RoutePath& path, TerrainWorker& worker, const MapColors& colors = {});

    /// Arranges the picture and orders terrain that it lacks.
    /// @param feeds  show other aircraft, and the own ship where it comes from a feed instead of the simulation
    void update(const DisplaySettings& settings, const Simulation& simulation, int widthPixels, int heightPixels,
                const FeedPicture& feeds = {});

    /// Waits until the terrain of the last update is there.
    void completeTerrain();

    /// Draws what the last update has arranged.
    void render();

    /// The map as the last update arranged it.
    const MapView& view() const { return mView; }

    const TerrainCache& terrain() const { return mTerrain; }

private:
    void follow(const Simulation& simulation);
    void follow(const Motion& ownShip);
    void arrange(const DisplaySettings& settings, int widthPixels, int heightPixels);
    void placeLabels(const PerFeed<bool>& lostFeeds);
    void buildFrame();

    TerrainWorker& mWorker;

    Area mWindow;
    Area mMap;
    Area mProfileArea;
    MapView mView;
    Scene mScene;
    RouteProgress mProgress;

    TerrainCache mTerrain;
    RouteProfile mProfile;
    AirspaceLayer mAirspaceLayer;
    RouteLayer mRouteLayer;
    SymbolLayer mSymbolLayer;
    CompassLayer mCompassLayer;
    AircraftLayer mAircraftLayer;
    TrafficLayer mTrafficLayer;
    DataBlock mDataBlock;
    LostFeeds mLostFeeds;
    CameraLayer mCamera;
    MapLabels mLabels;
    std::vector<Box> mCovered; // where labels of the map may not stand
    ProfileChart mProfileChart;
    ProfileLabels mProfileLabels;
    Tavik::OpenGL::Lines mFrame;
};

} // namespace MovingMap
