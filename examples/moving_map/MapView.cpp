#include <moving_map/MapView.h>

#include <moving_map/Units.h>

#include <algorithm>
#include <cmath>

namespace MovingMap {

namespace {

using Matrix = Tavik::Math::Matrix4<float>;
using Point = LocalPlane::Point;

// Cells of a level are shown from this many pixels up to twice as many.
constexpr double SmallestCellPixels = 2.0;

} // namespace

void MapView::setArea(int widthPixels, int heightPixels, Pixel anchor)
{
    mWidth = widthPixels;
    mHeight = heightPixels;
    mAnchor = anchor;
}

void MapView::setUp(double courseDegrees)
{
    mUpDegrees = courseDegrees;
    mUp = directionOf(courseDegrees);
}

/// From east and north in metres to right and up in pixels.
Point MapView::toScreen(Point metres) const
{
    const Point right(mUp.y, -mUp.x);
    return Point(metres.dot(right), metres.dot(mUp)) / mMetresPerPixel;
}

MapView::Pixel MapView::toPixel(Position position) const
{
    const Point pixels = toScreen(LocalPlane(mCentre).toPoint(position));
    return {static_cast<float>(pixels.x) + mAnchor.x, static_cast<float>(pixels.y) + mAnchor.y};
}

Position MapView::toPosition(Pixel pixel) const
{
    const Point metres = Point(pixel.x - mAnchor.x, pixel.y - mAnchor.y) * mMetresPerPixel;
    const Point right(mUp.y, -mUp.x);
    return LocalPlane(mCentre).toPosition(right * metres.x + mUp * metres.y);
}

MapView::Pixel MapView::direction(double courseDegrees) const
{
    const Point direction = directionOf(courseDegrees - mUpDegrees);
    return {static_cast<float>(direction.x), static_cast<float>(direction.y)};
}

bool GeoBounds::mayTouch(Position a, Position b) const
{
    return std::max(a.latDegrees, b.latDegrees) >= south && std::min(a.latDegrees, b.latDegrees) <= north &&
           std::max(a.lonDegrees, b.lonDegrees) >= west && std::min(a.lonDegrees, b.lonDegrees) <= east;
}

GeoBounds MapView::bounds(float marginPixels) const
{
    GeoBounds bounds = {90.0, 360.0, -90.0, -360.0};
    for (const float x : {-marginPixels, static_cast<float>(mWidth) + marginPixels}) {
        for (const float y : {-marginPixels, static_cast<float>(mHeight) + marginPixels}) {
            const Position corner = toPosition({x, y});
            bounds.south = std::min(bounds.south, corner.latDegrees);
            bounds.north = std::max(bounds.north, corner.latDegrees);
            bounds.west = std::min(bounds.west, corner.lonDegrees);
            bounds.east = std::max(bounds.east, corner.lonDegrees);
        }
    }
    return bounds;
}

Matrix MapView::pixelMatrix() const
{
    return MovingMap::pixelMatrix(mWidth, mHeight);
}

Matrix MapView::blockMatrix(const BlockKey& block) const
{
    const Position corner = {block.southDegrees(), block.westDegrees()};
    const double cellDegrees = block.edgeDegrees() / BlockKey::Cells;
    const double cellMetres = cellDegrees * MetresPerDegree;
    const LocalPlane plane(mCentre);
    const Point origin = toScreen(plane.toPoint(corner));
    const Point north = toScreen({0.0, cellMetres});
    const Point east = toScreen({cellMetres * std::cos(mCentre.latDegrees * RadiansPerDegree), 0.0});
    const double toClipX = 2.0 / mWidth;
    const double toClipY = 2.0 / mHeight;

    Matrix matrix;
    matrix[0] = static_cast<float>(east.x * toClipX);
    matrix[1] = static_cast<float>(east.y * toClipY);
    matrix[4] = static_cast<float>(north.x * toClipX);
    matrix[5] = static_cast<float>(north.y * toClipY);
    matrix[12] = static_cast<float>((origin.x + mAnchor.x) * toClipX - 1.0);
    matrix[13] = static_cast<float>((origin.y + mAnchor.y) * toClipY - 1.0);
    return matrix;
}

Matrix MapView::planeMatrix(Position reference) const
{
    const Pixel origin = toPixel(reference);
    // A metre to the east is another difference of longitude on another latitude.
    const double stretch =
        std::cos(mCentre.latDegrees * RadiansPerDegree) / std::cos(reference.latDegrees * RadiansPerDegree);
    const Pixel east = direction(90.0) * static_cast<float>(stretch / mMetresPerPixel);
    const Pixel north = direction(0.0) * static_cast<float>(1.0 / mMetresPerPixel);
    Matrix matrix;
    matrix[0] = east.x;
    matrix[1] = east.y;
    matrix[4] = north.x;
    matrix[5] = north.y;
    matrix[12] = origin.x;
    matrix[13] = origin.y;
    return pixelMatrix() * matrix;
}

bool MapView::operator==(const MapView& other) const
{
    return mWidth == other.mWidth && mHeight == other.mHeight && mAnchor.x == other.mAnchor.x &&
           mAnchor.y == other.mAnchor.y && mCentre.latDegrees == other.mCentre.latDegrees &&
           mCentre.lonDegrees == other.mCentre.lonDegrees && mMetresPerPixel == other.mMetresPerPixel &&
           mUpDegrees == other.mUpDegrees;
}

Matrix pixelMatrix(int widthPixels, int heightPixels)
{
    Matrix matrix;
    matrix[0] = 2.0f / static_cast<float>(widthPixels);
    matrix[5] = 2.0f / static_cast<float>(heightPixels);
    matrix[12] = -1.0f;
    matrix[13] = -1.0f;
    return matrix;
}

int blockLevel(double metresPerPixel)
{
    const double smallestCell = MetresPerDegree / 16.0 / BlockKey::Cells;
    const double level = std::ceil(std::log2(SmallestCellPixels * metresPerPixel / smallestCell));
    return static_cast<int>(std::clamp(level, 0.0, static_cast<double>(BlockKey::HighestLevel)));
}

} // namespace MovingMap
