#pragma once

#include <moving_map/BlockKey.h>
#include <moving_map/LocalPlane.h>
#include <tavik/math/Matrix4.h>
#include <tavik/math/Vector2.h>

namespace MovingMap {

/// Smallest and largest coordinates of what a map shows, degrees.
struct GeoBounds
{
    double south = 0.0;
    double west = 0.0;
    double north = 0.0;
    double east = 0.0;

    /// Whether a straight line between two places may touch the range; false only where it surely does not.
    bool mayTouch(Position a, Position b) const;
};

/// How the map lies on the screen: which place, how large, which way up.
///
/// The map is the local plane about the place under its anchor point, so that the ground near the aircraft is always
/// true to scale. Screen coordinates are pixels, x right and y up from the lower left corner of the map; all that is
/// far from the anchor is computed in double precision and only then rounded to float.
class MapView
{
public:
    using Pixel = Tavik::Math::Vector2<float>;

    /// @param widthPixels,heightPixels  of the map, at least 1
    /// @param anchor  the pixel at which the centre position appears
    void setArea(int widthPixels, int heightPixels, Pixel anchor);

    void setCentre(Position centre) { mCentre = centre; }
    Position centre() const { return mCentre; }

    void setMetresPerPixel(double metresPerPixel) { mMetresPerPixel = metresPerPixel; }
    double metresPerPixel() const { return mMetresPerPixel; }

    /// @param courseDegrees  that points up on the screen
    void setUp(double courseDegrees);
    double up() const { return mUpDegrees; }

    int width() const { return mWidth; }
    int height() const { return mHeight; }

    Pixel toPixel(Position position) const;
    Position toPosition(Pixel pixel) const;

    /// Direction on the screen of a course: x right and y up, length 1.
    Pixel direction(double courseDegrees) const;

    /// The smallest range of coordinates that holds everything on the screen and this far around it.
    GeoBounds bounds(float marginPixels = 0.0f) const;

    /// Takes pixels to OpenGL's clip coordinates.
    Tavik::Math::Matrix4<float> pixelMatrix() const;

    /// Takes the cells of a block, counted from its south-west corner, to clip coordinates.
    Tavik::Math::Matrix4<float> blockMatrix(const BlockKey& block) const;

    /// Takes metres of the local plane about a position to clip coordinates, exactly as positions go through toPixel.
    Tavik::Math::Matrix4<float> planeMatrix(Position reference) const;

    /// Whether both show the same places at the same pixels: what was drawn for one view will do for an equal one.
    bool operator==(const MapView& other) const;
    bool operator!=(const MapView& other) const { return !(*this == other); }

private:
    LocalPlane::Point toScreen(LocalPlane::Point metres) const;

    int mWidth = 1;
    int mHeight = 1;
    Pixel mAnchor;
    Position mCentre;
    double mMetresPerPixel = 100.0;
    double mUpDegrees = 0.0;
    LocalPlane::Point mUp = {0.0, 1.0}; // as a direction: east, north
};

/// Takes pixels of an area to clip coordinates.
Tavik::Math::Matrix4<float> pixelMatrix(int widthPixels, int heightPixels);

/// The level of blocks that suits a scale.
int blockLevel(double metresPerPixel);

} // namespace MovingMap
