#include <moving_map/MapView.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace MovingMap;

namespace {

MapView viewOf(Position centre, double metresPerPixel, double up)
{
    MapView view;
    view.setArea(1280, 600, {640.0f, 180.0f});
    view.setCentre(centre);
    view.setMetresPerPixel(metresPerPixel);
    view.setUp(up);
    return view;
}

struct Case
{
    const char* name;
    Position centre;
    double metresPerPixel;
    double up;
};

const Case Cases[] = {
    {"north up", {45.0, -31.0}, 100.0, 0.0},
    {"track up", {45.0, -31.0}, 100.0, 235.0},
    {"far north", {79.0, 20.0}, 15.0, 90.0},
    {"far east, far out", {-35.0, 178.0}, 2000.0, 0.0},
};

} // namespace

TEST(MapView, PixelsAndPositionsAreEachOthersInverse)
{
    for (const Case& c : Cases) {
        const MapView view = viewOf(c.centre, c.metresPerPixel, c.up);
        for (const MapView::Pixel pixel : {MapView::Pixel(0, 0), MapView::Pixel(1280, 0), MapView::Pixel(300, 599)}) {
            const MapView::Pixel back = view.toPixel(view.toPosition(pixel));
            EXPECT_NEAR(back.x, pixel.x, 1e-3) << c.name;
            EXPECT_NEAR(back.y, pixel.y, 1e-3) << c.name;
        }
    }
}

TEST(MapView, CoursesPointWhereTheyShould)
{
    struct Direction
    {
        double up;
        double course;
        float x;
        float y;
    };
    for (const Direction& d : {Direction{0, 0, 0, 1}, Direction{0, 90, 1, 0}, Direction{90, 90, 0, 1},
                               Direction{90, 0, -1, 0}, Direction{200, 20, 0, -1}}) {
        const MapView view = viewOf({45.0, -31.0}, 100.0, d.up);
        const MapView::Pixel direction = view.direction(d.course);
        EXPECT_NEAR(direction.x, d.x, 1e-6) << "up " << d.up << " course " << d.course;
        EXPECT_NEAR(direction.y, d.y, 1e-6) << "up " << d.up << " course " << d.course;
        // The same for a place in that direction.
        const LocalPlane plane(view.centre());
        const MapView::Pixel place = view.toPixel(plane.toPosition(directionOf(d.course) * 10000.0));
        EXPECT_NEAR(place.x, 640.0f + 100.0f * d.x, 1e-2) << "up " << d.up << " course " << d.course;
        EXPECT_NEAR(place.y, 180.0f + 100.0f * d.y, 1e-2) << "up " << d.up << " course " << d.course;
    }
}

TEST(MapView, BlocksLieWhereTheirPositionsDo)
{
    for (const Case& c : Cases) {
        const MapView view = viewOf(c.centre, c.metresPerPixel, c.up);
        const int level = blockLevel(c.metresPerPixel);
        const double edge = BlockKey{level, 0, 0}.edgeDegrees();
        const BlockKey key = {level, static_cast<int>(std::floor(c.centre.latDegrees / edge)),
                              static_cast<int>(std::floor(c.centre.lonDegrees / edge))};
        const Position position = {key.southDegrees() + 20 * edge / BlockKey::Cells,
                                   key.westDegrees() + 50 * edge / BlockKey::Cells};
        const MapView::Pixel pixel = view.toPixel(position);
        const auto expected = view.pixelMatrix() * Tavik::Math::Vector3<float>(pixel.x, pixel.y, 0.0f);
        const auto clip = view.blockMatrix(key) * Tavik::Math::Vector3<float>(50.0f, 20.0f, 0.0f);
        EXPECT_NEAR(clip.x, expected.x, 1e-4) << c.name;
        EXPECT_NEAR(clip.y, expected.y, 1e-4) << c.name;
    }
}

TEST(MapView, PlanesLieWhereTheirPositionsDo)
{
    for (const Case& c : Cases) {
        const MapView view = viewOf(c.centre, c.metresPerPixel, c.up);
        const Position reference = {c.centre.latDegrees - 0.7, c.centre.lonDegrees + 0.4};
        const Position position = {c.centre.latDegrees + 0.3, c.centre.lonDegrees - 0.2};
        const LocalPlane::Point point = LocalPlane(reference).toPoint(position);
        const auto clip = view.planeMatrix(reference) *
                          Tavik::Math::Vector3<float>(static_cast<float>(point.x), static_cast<float>(point.y), 0.0f);
        const MapView::Pixel pixel = view.toPixel(position);
        const auto expected = view.pixelMatrix() * Tavik::Math::Vector3<float>(pixel.x, pixel.y, 0.0f);
        EXPECT_NEAR(clip.x, expected.x, 1e-3) << c.name;
        EXPECT_NEAR(clip.y, expected.y, 1e-3) << c.name;
    }
}

TEST(MapView, BoundsHoldTheWholeScreen)
{
    for (const Case& c : Cases) {
        const MapView view = viewOf(c.centre, c.metresPerPixel, c.up);
        const GeoBounds bounds = view.bounds();
        for (const MapView::Pixel pixel : {MapView::Pixel(640, 599), MapView::Pixel(1, 300), MapView::Pixel(900, 20)}) {
            const Position position = view.toPosition(pixel);
            EXPECT_TRUE(position.latDegrees > bounds.south && position.latDegrees < bounds.north) << c.name;
            EXPECT_TRUE(position.lonDegrees > bounds.west && position.lonDegrees < bounds.east) << c.name;
        }
    }
}

TEST(MapView, LevelsKeepCellsBetweenTwoAndFourPixels)
{
    for (int step = 0; step < 60; ++step) {
        const double metresPerPixel = 50.0 * std::pow(1.07, step); // to 2700
        const double cellMetres = BlockKey{blockLevel(metresPerPixel), 0, 0}.edgeDegrees() * 111319.5 / BlockKey::Cells;
        EXPECT_GE(cellMetres / metresPerPixel, 2.0) << metresPerPixel;
        EXPECT_LT(cellMetres / metresPerPixel, 4.0) << metresPerPixel;
    }
    EXPECT_EQ(blockLevel(1e-9), 0);
    EXPECT_EQ(blockLevel(1e9), BlockKey::HighestLevel);
}
