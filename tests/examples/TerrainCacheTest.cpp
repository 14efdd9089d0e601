#include <moving_map/TerrainCache.h>

#include <support/TemporaryDirectory.h>

#include <gtest/gtest.h>

#include <set>

using namespace MovingMap;

namespace {

/// Terrain without tiles: blocks are made, and empty.
class TerrainCacheTest : public testing::Test
{
protected:
    TerrainCacheTest() : worker(directory.path()), cache(worker)
    {
        view.setArea(1280, 600, {640.0f, 300.0f});
        view.setCentre({45.3, -31.2});
        view.setMetresPerPixel(150.0);
    }

    void complete()
    {
        for (cache.update(view); !cache.isComplete(); cache.update(view)) {
            worker.finish();
        }
    }

    Tavik::Support::TemporaryDirectory directory;
    TerrainWorker worker;
    TerrainCache cache;
    MapView view;
};

} // namespace

TEST_F(TerrainCacheTest, BlocksCoverTheViewNearestFirst)
{
    for (const double up : {0.0, 37.0}) {
        view.setUp(up);
        const std::vector<BlockKey> blocks = blocksInView(view, 2, 0.0);
        const std::set<BlockKey> set(blocks.begin(), blocks.end());
        EXPECT_EQ(set.size(), blocks.size());
        for (const MapView::Pixel pixel : {MapView::Pixel(0, 0), {1279, 1}, {3, 599}, {1280, 600}, {500, 400}}) {
            const Position place = view.toPosition(pixel);
            bool covered = false;
            for (const BlockKey& key : blocks) {
                const double north = place.latDegrees - key.southDegrees();
                const double east = place.lonDegrees - key.westDegrees();
                covered =
                    covered || (north >= 0.0 && north < key.edgeDegrees() && east >= 0.0 && east < key.edgeDegrees());
            }
            EXPECT_TRUE(covered) << "up " << up << " pixel " << pixel.x << " " << pixel.y;
        }
        const Position centre = view.centre();
        EXPECT_LE(std::abs(blocks.front().southDegrees() + 0.125 - centre.latDegrees), 0.125);
        EXPECT_LE(std::abs(blocks.front().westDegrees() + 0.125 - centre.lonDegrees), 0.125);
        EXPECT_GT(blocksInView(view, 2, 0.5).size(), blocks.size());
    }
}

TEST_F(TerrainCacheTest, OldLevelStaysInViewUntilTheNewOneIsComplete)
{
    complete();
    EXPECT_EQ(cache.shown().front().level, 2);
    view.setMetresPerPixel(300.0);
    cache.update(view);
    EXPECT_EQ(cache.shown().front().level, 2);
    complete();
    EXPECT_EQ(cache.shown().front().level, 3);
}

TEST_F(TerrainCacheTest, WorkIsDoneOnceAndOldBlocksMakeRoom)
{
    complete();
    const std::size_t first = cache.work().blocks;
    EXPECT_EQ(first, blocksInView(view, 2, 0.5).size());
    complete();
    EXPECT_EQ(cache.work().blocks, first);

    // Ten views that do not overlap push the first one out.
    for (int i = 1; i <= 10; ++i) {
        view.setCentre({45.3 - 2.0 * i, -31.2});
        complete();
        EXPECT_LE(cache.size(), TerrainCache::MostBlocks);
    }
    const std::size_t before = cache.work().blocks;
    view.setCentre({45.3, -31.2});
    complete();
    EXPECT_EQ(cache.work().blocks, before + first);
}
