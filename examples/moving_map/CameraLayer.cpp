#include <moving_map/CameraLayer.h>

#include <moving_map/Pen.h>
#include <tavik/opengl/MatrixStack.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace MovingMap {

namespace {

using Pixel = MapView::Pixel;

// Of a picture: enough for 320 pixels on the screen, and drawn in a few milliseconds.
constexpr int PictureWidth = 240;
constexpr int PictureHeight = 135;

constexpr float PartOfMap = 0.21f; // the inset's width
constexpr float SmallestWidth = 160.0f;
constexpr float LargestWidth = 320.0f;
constexpr float Margin = 10.0f; // to the edges of the map
constexpr int SmallestMapWidth = 560;
constexpr int SmallestMapHeight = 280;

constexpr int CaptionSize = 11;
constexpr float CaptionMargin = 10.0f;

// A picture for each step of flight or turn: some fifteen a second.
constexpr double StepMetres = 8.0;
constexpr double StepDegrees = 0.2;

constexpr double ClearanceMetres = 30.0;   // the camera is never in the ground
constexpr double UnplannedMetres = 1000.0; // above the ground, where the route has no heights

CameraPose poseOf(const Scene& scene)
{
    return {scene.aircraft.position, scene.altitudeMetres, scene.aircraft.trackDegrees};
}

bool differs(const CameraPose& a, const CameraPose& b)
{
    return planeDistance(a.position, b.position) > StepMetres ||
           std::abs(std::remainder(a.trackDegrees - b.trackDegrees, 360.0)) > StepDegrees;
}

CameraPicture take(CameraPose pose, Terrain& terrain)
{
    const HeightSource source = [&terrain](double lat, double lon) { return terrain.height(lat, lon); };
    const double ground = std::fmax(source(pose.position.latDegrees, pose.position.lonDegrees), 0.0);
    pose.altitudeMetres = std::isnan(pose.altitudeMetres) ? ground + UnplannedMetres
                                                          : std::max(pose.altitudeMetres, ground + ClearanceMetres);
    return drawForwardView(pose, source, PictureWidth, PictureHeight);
}

} // namespace

CameraLayer::CameraLayer(TerrainWorker& worker, const MapColors& colors) : mWorker(worker), mCaption(Palette::Text)
{
    // In the picture's own pixels about its middle.
    const Pixel half(0.5f * PictureWidth, 0.5f * PictureHeight);
    mFrame.addLineLoop(std::vector<Pixel>{half * -1.0f, {half.x, -half.y}, half, {-half.x, half.y}});
    applyPen(mFrame, {colors.rings, 2.0f});
    mCaption.add("FORWARD VIEW", {CaptionMargin, CaptionMargin}, CaptionSize, TextAlign::Left);
}

void CameraLayer::update(const Scene& scene, bool isWanted)
{
    mBox.reset();
    if (!isWanted || scene.view.width() < SmallestMapWidth || scene.view.height() < SmallestMapHeight) {
        return;
    }
    arrange(scene);
    const CameraPose pose = poseOf(scene);
    if (!mIsUnderWay && (!mIsOrdered || differs(mPose, pose))) {
        order(pose);
    }
}

bool CameraLayer::complete(const Scene& scene)
{
    if (mBox && !mIsUnderWay && !(mIsOrdered && mPose == poseOf(scene))) {
        order(poseOf(scene));
    }
    return !mBox || !mIsUnderWay;
}

void CameraLayer::arrange(const Scene& scene)
{
    const auto mapWidth = static_cast<float>(scene.view.width());
    const float width = std::round(std::clamp(PartOfMap * mapWidth, SmallestWidth, LargestWidth));
    const float height = std::round(width * PictureHeight / PictureWidth);
    const Pixel corner(mapWidth - Margin, static_cast<float>(scene.view.height()) - Margin);
    mBox = Box{corner - Pixel(width, height), corner};
}

void CameraLayer::order(const CameraPose& pose)
{
    mPose = pose;
    mIsOrdered = true;
    mIsUnderWay = true;
    mWorker.post([this, pose](Terrain& terrain) -> TerrainWorker::Delivery {
        return [this, picture = take(pose, terrain)] { show(picture); };
    });
}

void CameraLayer::show(const CameraPicture& picture)
{
    mIsUnderWay = false;
    if (mVideo.width() == 0) {
        mVideo.init(PictureWidth, PictureHeight);
    }
    mVideo.putFrame(picture.rgb.data());
}

void CameraLayer::render()
{
    if (!mBox) {
        return;
    }
    const Pixel size = mBox->high - mBox->low;
    const Pixel centre = mBox->low + size * 0.5f;
    Tavik::OpenGL::MatrixPush();
    Tavik::OpenGL::MatrixTranslate(centre.x, centre.y, 0.0);
    Tavik::OpenGL::MatrixScale(size.x / PictureWidth, size.y / PictureHeight, 1.0);
    mVideo.render();
    mFrame.render(1.0);
    Tavik::OpenGL::MatrixPop();

    Tavik::OpenGL::MatrixPush();
    Tavik::OpenGL::MatrixTranslate(mBox->low.x, mBox->low.y, 0.0);
    mCaption.render();
    Tavik::OpenGL::MatrixPop();
}

} // namespace MovingMap
