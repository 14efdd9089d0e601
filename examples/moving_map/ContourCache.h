#pragma once

#include <moving_map/ContourBlock.h>
#include <moving_map/MapView.h>
#include <moving_map/TerrainWorker.h>

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

namespace MovingMap {

/// Keeps the contours of the blocks in view and around it, and has missing ones made.
///
/// A frame whose blocks are all there does no contour work. While blocks of a new level are being made, the blocks of
/// the level before stay in view, so that the map never goes blank when it is zoomed.
class ContourCache
{
public:
    explicit ContourCache(TerrainWorker& worker) : mWorker(worker) {}

    /// Orders missing blocks, nearest to the middle of the view first, and a few at a time: what has left the view by
    /// then is never made. To be called once a frame.
    void update(const MapView& view);

    /// Whether all blocks in view and around it are there, so that a frame like the last one would do no contour work.
    bool isComplete() const { return mComplete; }

    /// The blocks that render draws, as far as they are there.
    const std::vector<BlockKey>& shown() const { return mShown; }

    /// Draws the blocks in view.
    void render(const MapView& view);

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
        std::shared_ptr<ContourBlock> block; // null while it is being made
        unsigned long lastFrame = 0;         // in which it was wanted
    };

    void markUsed(const std::vector<BlockKey>& keys);
    bool isMade(const BlockKey& key) const;
    void request(const BlockKey& key);
    void dropOldBlocks();

    TerrainWorker& mWorker;
    MapView mView; // of the last update
    std::map<BlockKey, Entry> mBlocks;
    std::vector<BlockKey> mShown;
    std::size_t mUnderWay = 0;
    unsigned long mFrame = 0;
    bool mComplete = false;
    Work mWork;
};

/// The blocks of a level that touch the view, enlarged by a margin, nearest to its middle first.
/// @param margin  in blocks on each side
std::vector<BlockKey> blocksInView(const MapView& view, int level, double margin);

} // namespace MovingMap
