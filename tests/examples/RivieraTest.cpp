#include <moving_map/Contours.h>
#include <moving_map/LocalPlane.h>
#include <moving_map/Terrain.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

using namespace MovingMap;

namespace {

constexpr int Level = 2; // blocks of a quarter of a degree
constexpr double Interval = 100.0;

struct Line
{
    double heightMetres;
    std::vector<Position> points;
};

/// All contour lines of the tile at 43 N 7 E.
std::vector<Line> rivieraLines(Terrain& terrain)
{
    std::vector<Line> lines;
    for (int row = 4 * 43; row < 4 * 44; ++row) {
        for (int column = 4 * 7; column < 4 * 8; ++column) {
            const BlockKey key = {Level, row, column};
            const double cell = key.edgeDegrees() / BlockKey::Cells;
            const HeightGrid grid(HeightRaster(key, [&](double lat, double lon) { return terrain.height(lat, lon); }));
            for (const ContourLine& contour : traceContours(grid, contourHeights(grid, Interval))) {
                Line line = {contour.heightMetres, {}};
                for (const auto& point : contour.points) {
                    line.points.push_back({key.southDegrees() + point.y * cell, key.westDegrees() + point.x * cell});
                }
                lines.push_back(line);
            }
        }
    }
    return lines;
}

} // namespace

TEST(Riviera, CoastRunsAlongItsCapesAndTheSeaIsEmpty)
{
    const char* data = std::getenv("TAVIK_TERRAIN_DATA");
    if (data == nullptr) {
        GTEST_SKIP() << "TAVIK_TERRAIN_DATA does not name a folder of genuine tiles";
    }
    Terrain terrain(std::string(data) + "/srtm");
    const std::vector<Line> lines = rivieraLines(terrain);

    struct Cape
    {
        const char* name;
        Position position; // to a hundredth of a degree, from charts
    };
    const Cape capes[] = {
        {"Cap d'Antibes", {43.545, 7.125}},
        {"Cap Ferrat", {43.675, 7.330}},
        {"Cap Martin", {43.745, 7.490}},
        {"Capo Sant'Ampelio", {43.775, 7.674}},
    };
    for (const Cape& cape : capes) {
        double nearest = 1e9;
        for (const Line& line : lines) {
            for (const Position& point : line.points) {
                if (line.heightMetres == CoastMetres) {
                    nearest = std::min(nearest, planeDistance(cape.position, point));
                }
            }
        }
        EXPECT_LT(nearest, 1000.0) << cape.name;
    }

    double highest = 0.0;
    for (const Line& line : lines) {
        highest = std::max(highest, line.heightMetres);
        for (const Position& point : line.points) {
            EXPECT_FALSE(point.latDegrees < 43.45 && point.lonDegrees > 7.2)
                << "a line of " << line.heightMetres << " m at sea";
            EXPECT_FALSE(line.heightMetres > 500.0 && point.latDegrees < 43.7) << "mountains at the coast";
        }
    }
    EXPECT_GE(highest, 1900.0); // the highest sample of the tile is 2064 m
    EXPECT_LE(highest, 2000.0);
}
