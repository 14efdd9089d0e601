#include <moving_map/Display.h>

#include <moving_map/Pen.h>
#include <moving_map/Units.h>

#include <algorithm>
#include <limits>

namespace MovingMap {

namespace {

constexpr double ProfilePart = 0.24; // of the window's height
constexpr int SmallestProfile = 32;
constexpr int LargestProfile = 240;

// Where the aircraft stands in a map with the track up: in the lower part, since what lies ahead counts.
constexpr float TrackUpAnchor = 0.30f;

constexpr std::size_t DeliveriesPerFrame = 2;

constexpr double LargestLatitude = 85.0; // of the plane map

} // namespace

Display::Display(const Route& route, const RoutePath& path, TerrainWorker& worker, const MapColors& colors)
    : mWorker(worker), mScene{route, path, mView, {}, 0.0, 0.0, 0.0, 1.0, 0, {}, colors}, mProgress(path),
      mTerrain(worker), mProfile(path, worker), mAirspaceLayer(route), mDataBlock(colors), mCamera(worker, colors),
      mLabels(route, path, colors), mProfileLabels(path, colors)
{}

void Display::update(const DisplaySettings& settings, const Simulation& simulation, int widthPixels, int heightPixels,
                     const FeedPicture& feeds)
{
    if (feeds.ownShip) {
        follow(*feeds.ownShip);
    } else {
        follow(simulation);
    }
    mScene.isAircraftLost = feeds.isOwnShipLost;
    mScene.nextFix = mScene.path.nextFix(mScene.distanceMetres);
    mScene.rangeMetres = settings.rangeMiles * MetresPerNauticalMile;
    mScene.layers = settings.layers;
    arrange(settings, widthPixels, heightPixels);
    mTrafficLayer.update(mScene, feeds.traffic);
    placeLabels(feeds.isLost);

    mWorker.deliver(DeliveriesPerFrame);
    mTerrain.update(mView);
    mProfile.update(ProfileChart::begin(mScene), ProfileChart::end(mScene));
}

void Display::follow(const Simulation& simulation)
{
    mScene.aircraft = simulation.state();
    mScene.distanceMetres = simulation.distanceMetres();
    mScene.altitudeMetres = simulation.altitudeMetres();
    mScene.speedMetresPerSecond = simulation.speedMetresPerSecond();
}

void Display::follow(const Motion& ownShip)
{
    Position position = ownShip.position;
    position.latDegrees = std::clamp(position.latDegrees, -LargestLatitude, LargestLatitude);
    mScene.distanceMetres = mProgress.update(position);
    mScene.aircraft = mScene.path.at(mScene.distanceMetres);
    mScene.aircraft.position = position;
    mScene.aircraft.trackDegrees = ownShip.trackDegrees.value_or(mScene.aircraft.trackDegrees);
    mScene.altitudeMetres = ownShip.altitudeMetres.value_or(std::numeric_limits<double>::quiet_NaN());
    mScene.speedMetresPerSecond = ownShip.speedMetresPerSecond.value_or(0.0);
}

void Display::arrange(const DisplaySettings& settings, int widthPixels, int heightPixels)
{
    const int profile = settings.layers.shows(Layer::Profile)
                            ? std::clamp(static_cast<int>(ProfilePart * heightPixels), SmallestProfile, LargestProfile)
                            : 0;
    if (mWindow.width != widthPixels || mWindow.height != heightPixels || mProfileArea.height != profile) {
        mWindow = {0, 0, widthPixels, heightPixels};
        mProfileArea = {0, 0, widthPixels, profile};
        mMap = {0, profile, widthPixels, std::max(heightPixels - profile, 1)};
        buildFrame();
    }

    const auto width = static_cast<float>(mMap.width);
    const auto height = static_cast<float>(mMap.height);
    const float anchor = settings.trackUp ? TrackUpAnchor : 0.5f;
    const float ring =
        settings.trackUp ? std::min(0.48f * width, (0.94f - anchor) * height) : std::min(0.48f * width, 0.43f * height);
    mView.setArea(mMap.width, mMap.height, {0.5f * width, anchor * height});
    mView.setCentre(settings.centre.value_or(mScene.aircraft.position));
    mView.setMetresPerPixel(mScene.rangeMetres / ring);
    mView.setUp(settings.trackUp ? mScene.aircraft.trackDegrees : 0.0);
}

void Display::placeLabels(const PerFeed<bool>& lostFeeds)
{
    mCovered.clear();
    mDataBlock.update(mScene, mScene.layers.shows(Layer::Figures));
    mLostFeeds.update(mScene, lostFeeds, mDataBlock.box());
    mCamera.update(mScene, mScene.layers.shows(Layer::Camera));
    for (const std::optional<Box>& box : {mDataBlock.box(), mLostFeeds.box(), mCamera.box()}) {
        if (box) {
            mCovered.push_back(*box);
        }
    }
    mLabels.update(mScene, mCovered);
}

void Display::completeTerrain()
{
    while (!mTerrain.isComplete() || !mProfile.isComplete() || !mCamera.complete(mScene)) {
        mWorker.finish();
        mTerrain.update(mView);
        mProfile.update(ProfileChart::begin(mScene), ProfileChart::end(mScene));
    }
}

void Display::render()
{
    mMap.fill(mScene.colors.background);
    mMap.activate();
    mTerrain.render(mView, mScene.layers);
    if (mScene.layers.shows(Layer::Airspaces)) {
        mAirspaceLayer.render(mScene);
    }
    mRouteLayer.render(mScene);
    if (mScene.layers.shows(Layer::Symbols)) {
        mSymbolLayer.render(mScene);
    }
    if (mScene.layers.shows(Layer::Compass)) {
        mCompassLayer.render(mScene);
    }
    mLabels.render();
    mTrafficLayer.render();
    mAircraftLayer.render(mScene);
    mDataBlock.render();
    mLostFeeds.render();
    mCamera.render();
    if (mScene.layers.shows(Layer::Profile)) {
        mProfileChart.render(mScene, mProfile, mProfileArea);
        mProfileLabels.render(mScene, mProfileChart, mProfileArea);
    }
    mWindow.activate();
    mFrame.render();
}

/// Lines between the parts of the picture and around it.
void Display::buildFrame()
{
    using Pixel = MapView::Pixel;
    const auto width = static_cast<float>(mWindow.width);
    const auto height = static_cast<float>(mWindow.height);
    const auto separator = static_cast<float>(mMap.y);
    mFrame.clearVertex();
    for (const float y : {1.0f, separator, height - 1.0f}) {
        mFrame.addVertex(Pixel(0.0f, y));
        mFrame.addVertex(Pixel(width, y));
    }
    for (const float x : {1.0f, width - 1.0f}) {
        mFrame.addVertex(Pixel(x, 0.0f));
        mFrame.addVertex(Pixel(x, height));
    }
    applyPen(mFrame, {Palette::Frame, 2.0f});
    mFrame.setAntiAlias(false);
}

} // namespace MovingMap
