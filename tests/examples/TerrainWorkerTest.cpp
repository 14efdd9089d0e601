#include <moving_map/RouteProfile.h>
#include <moving_map/TerrainWorker.h>
#include <support/DtedWriter.h>
#include <support/TemporaryDirectory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>

using namespace MovingMap;
using Tavik::Support::TemporaryDirectory;

namespace {

/// A tile at 47 N 11 E that rises by one metre for each post to the north, and one at 48 N 11 E that cannot be read.
void writeTiles(const std::string& directory)
{
    Tavik::Support::writeDted(directory + "/a.DT1", {47, 11},
                              [](unsigned int i, unsigned int) { return 500 + static_cast<int>(i); });
    std::ofstream(directory + "/N48E011.SRTMGL3.hgt.zip") << "this is no archive";
}

} // namespace

TEST(TerrainWorker, AnswersWithHeightsAndTellsWhereThereAreNone)
{
    const TemporaryDirectory directory;
    writeTiles(directory.path());
    TerrainWorker worker(directory.path());
    struct Case
    {
        const char* name;
        double lat;
        double lon;
        double height;
    };
    const double unknown = std::nan("");
    const Case cases[] = {
        {"south-west corner", 47.0, 11.0, 500.0},  {"inside", 47.5, 11.5, 1100.0},
        {"eastern edge", 47.25, 12.0, 800.0},      {"northern edge", 48.0, 11.5, 1700.0},
        {"north-east corner", 48.0, 12.0, 1700.0}, {"unreadable tile", 48.5, 11.5, unknown},
        {"no tile", 46.9, 11.5, unknown},          {"beyond the edge", 47.5, 12.1, unknown},
        {"off the earth", 500.0, 1e30, unknown},   {"no number", unknown, 11.5, unknown},
    };
    int answers = 0;
    for (const Case& c : cases) {
        worker.post([&](Terrain& terrain) -> TerrainWorker::Delivery {
            const double height = terrain.height(c.lat, c.lon);
            return [&answers, &c, height] {
                ++answers;
                EXPECT_TRUE(std::isnan(c.height) ? std::isnan(height) : std::abs(height - c.height) < 0.01)
                    << c.name << ": " << height;
            };
        });
    }
    worker.finish();
    EXPECT_EQ(answers, 10);
}

TEST(Terrain, HolesOfATileAreClosedOnAndBetweenItsPosts)
{
    const TemporaryDirectory directory;
    // A slope of one metre a post with a hole 100 posts wide inside, and a small one at the eastern edge.
    Tavik::Support::writeDted(directory.path() + "/a.DT1", {47, 11}, [](unsigned int i, unsigned int j) {
        const bool hole = (i >= 600 && i < 620 && j >= 500 && j < 600) || (i >= 300 && i < 310 && j > 1195);
        return hole ? 0 : 500 + static_cast<int>(i);
    });
    Terrain terrain(directory.path());
    for (const double row : {300.0, 305.5, 309.0, 320.0, 598.5, 599.5, 610.0, 610.25, 619.6, 700.0}) {
        for (const double column : {500.0, 512.5, 550.0, 599.5, 1194.5, 1199.7, 1200.0}) {
            EXPECT_NEAR(terrain.height(47.0 + row / 1200.0, 11.0 + column / 1200.0), 500.0 + row, 12.0)
                << row << " " << column;
        }
    }
    EXPECT_NEAR(terrain.height(47.0 + 590.5 / 1200.0, 11.5), 1090.5, 0.01); // beside the hole, as the tile has it
}

TEST(TerrainWorker, DeliversInOrderAndNoMoreThanAsked)
{
    const TemporaryDirectory directory;
    TerrainWorker worker(directory.path());
    std::vector<int> order;
    for (int i = 0; i < 5; ++i) {
        worker.post([i, &order](Terrain&) -> TerrainWorker::Delivery { return [i, &order] { order.push_back(i); }; });
    }
    std::size_t delivered = 0;
    while (delivered < 2) {
        delivered += worker.deliver(2 - delivered);
    }
    EXPECT_EQ(order, (std::vector<int>{0, 1}));
    worker.finish();
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(worker.deliver(9), 0u);
}

TEST(TerrainWorker, EndsWithJobsLeft)
{
    const TemporaryDirectory directory;
    int done = 0;
    {
        TerrainWorker worker(directory.path());
        for (int i = 0; i < 1000; ++i) {
            worker.post([&done](Terrain&) -> TerrainWorker::Delivery {
                ++done;
                return [] {};
            });
        }
    }
    EXPECT_LE(done, 1000);
}

TEST(RouteProfile, ShowsTheGroundUnderThePath)
{
    const TemporaryDirectory directory;
    writeTiles(directory.path());
    Route route;
    route.start = {47.9, 11.5};
    RouteLeg leg;
    leg.from = route.start;
    leg.to = {47.1, 11.5};
    route.legs.push_back(leg);
    const RoutePath path(route);
    TerrainWorker worker(directory.path());
    RouteProfile profile(path, worker);
    profile.update(0.0, path.length());
    EXPECT_FALSE(profile.isComplete());
    while (!profile.isComplete()) {
        worker.finish();
        profile.update(0.0, path.length());
    }
    // The ground falls along the path: each point has the height of where its surroundings begin.
    std::vector<RouteProfile::Point> points;
    for (const double from : {-0.5 * path.length(), 0.3 * path.length() + 7.0}) {
        profile.surface(from, 1.5 * path.length(), 16, points);
        const double step = 16 * RouteProfile::SpacingMetres;
        EXPECT_EQ(points.front().distanceMetres, std::floor(std::max(from, 0.0) / step) * step);
        EXPECT_EQ(points.back().distanceMetres, path.length());
        for (const RouteProfile::Point& point : points) {
            const double highest = std::ceil(point.distanceMetres / step) * step - 0.5 * step;
            EXPECT_NEAR(point.heightMetres, 500.0 + 1200.0 * (0.9 - std::max(highest, 0.0) / 111319.49), 3.0)
                << point.distanceMetres;
        }
    }
    profile.surface(1.1 * path.length(), 1.5 * path.length(), 16, points);
    EXPECT_TRUE(points.empty());
}
