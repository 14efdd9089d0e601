#include <moving_map/PlanLayout.h>
#include <moving_map/Terrain.h>
#include <support/MadeTerrain.h>
#include <support/TemporaryDirectory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <future>

using namespace Tavik::Support;

TEST(MadeTerrain, ProgramsThatStartTogetherFindOneWholeDirectory)
{
    const TemporaryDirectory cache;
    setenv("XDG_CACHE_HOME", cache.path().c_str(), 1);
    auto other = std::async(std::launch::async, MadeTerrain::cachedDirectory);
    const std::string directory = MadeTerrain::cachedDirectory();
    EXPECT_EQ(other.get(), directory);
    EXPECT_EQ(directory.rfind(cache.path(), 0), 0u) << directory;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(cache.path() + "/tavik"), {}), 1) << "drafts are left";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory), {}), 4);

    // A coast with mountains behind it, read as any other terrain.
    MovingMap::Terrain terrain(directory);
    const int samples = 400;
    int sea = 0;
    double highest = 0.0;
    double seamSteps = 0.0;
    for (int i = 0; i <= samples; ++i) {
        for (int j = 0; j <= samples; ++j) {
            const double lat = MadeTerrain::SouthDegrees + i * (MadeTerrain::SizeDegrees * 1.0 / samples);
            const double lon = MadeTerrain::WestDegrees + j * (MadeTerrain::SizeDegrees * 1.0 / samples);
            const double height = terrain.height(lat, lon);
            ASSERT_FALSE(std::isnan(height)) << lat << " " << lon;
            sea += height == 0.0 ? 1 : 0;
            highest = std::max(highest, height);
            if (i * j > 0 && (i == samples / 2 || j == samples / 2)) { // where DTED and SRTM tiles meet
                seamSteps += std::abs(height - terrain.height(lat - 1e-5, lon - 1e-5));
            }
        }
    }
    EXPECT_GT(sea, samples * samples / 5);
    EXPECT_LT(sea, samples * samples / 2);
    EXPECT_GT(highest, 3000.0);
    EXPECT_LT(highest, 5000.0);
    EXPECT_LT(seamSteps / (2 * samples), 1.0); // metres of height over a metre and a half, on the mean
    EXPECT_EQ(MovingMap::terrainCells(directory).corners.size(), 4u);
}

TEST(MadeTerrain, TakesTheFirstPlaceThatCanBeWritten)
{
    const TemporaryDirectory home;
    const std::string kept = home.path() + "/.cache/tavik/made-terrain-1";
    std::filesystem::create_directories(kept);
    setenv("XDG_CACHE_HOME", "/dev/null/cache", 1);
    setenv("HOME", home.path().c_str(), 1);
    EXPECT_EQ(MadeTerrain::cachedDirectory(), kept);
    setenv("HOME", "/dev/null/home", 1);
    setenv("TMPDIR", "/dev/null/temporary", 1);
    EXPECT_EQ(MadeTerrain::cachedDirectory(), "");
}
