#pragma once

#include <moving_map/ContourBlock.h>
#include <moving_map/HeightRamp.h>
#include <moving_map/Layers.h>
#include <moving_map/MapView.h>
#include <moving_map/ReliefBlock.h>
#include <moving_map/TerrainWorker.h>

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

namespace MovingMap {

/// Relief and contours of one block.
struct TerrainBlock
{
    explicit TerrainBlock(const HeightRaster& raster);
    TerrainBlock(const HeightRaster& raster, const HeightGrid& grid);

    ReliefBlock relief;
    ContourBlock contours;
};

/// Keeps relief and contours of the blocks in view and around it, and has missing ones made on the worker's thread.
///
/// A frame whose blocks are all there does no such work. While blocks of a new level are being made, the blocks of
/// the level before stay in view, so that the map never goes blank when it is zoomed.
class TerrainCache
{
public:
    explicit TerrainCache(TerrainWorker& worker) : mWorker(worker) {}

    /// Orders missing blocks, nearest to the middle of the view first, and a few at a time: what has left the view by
    /// then is never made. To be called once a frame.
    void update(const MapView& view);

    /// Whether all blocks in view and around it are there, so that a frame like the last one would do no contour work.
    bool isComplete() const { return mComplete; }

    /// The blocks that render draws, as far as they are there.
    const std::vector<BlockKey>& shown() const { return mShown; }

    /// Draws the blocks in view: the relief of all, then their contours.
    void render(const MapView& view, const Layers& layers);

    /// No more blocks than this are kept, with up to 200 kB of relief and about as much of contours each.
    static constexpr std::size_t MostBlocks = 250;
    std::size_t size() const { return mBlocks.size(); }

    struct Work
    {
        std::size_t blocks = 0;
        double totalSeconds = 0.0; ///< on the worker's thread
        double longestSeconds = 0.0;
    };

    /// What has been made so far.
    const Work& work() const { return mWork; }

private:
    struct Entry
    {
        std::shared_ptr<TerrainBlock> block; // null while it is being made
        unsigned long lastFrame = 0;         // in which it was wanted
    };

    void markUsed(const std::vector<BlockKey>& keys);
    bool isMade(const BlockKey& key) const;
    void request(const BlockKey& key);
    void dropOldBlocks();
    template <typename Draw>
    void renderEach(const MapView& view, Draw draw);

    TerrainWorker& mWorker;
    MapView mView; // of the last update
    std::map<BlockKey, Entry> mBlocks;
    std::vector<BlockKey> mShown;
    std::size_t mUnderWay = 0;
    unsigned long mFrame = 0;
    bool mComplete = false;
    HeightRamp mRamp;
    Work mWork;
};

/// The blocks of a level that touch the view, enlarged by a margin, nearest to its middle first.
/// @param margin  in blocks on each side
std::vector<BlockKey> blocksInView(const MapView& view, int level, double margin);

} // namespace MovingMap
