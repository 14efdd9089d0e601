#include <moving_map/TerrainCache.h>

#include <tavik/opengl/MatrixStack.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace MovingMap {

namespace {

constexpr std::size_t MostUnderWay = 4;
constexpr double MarginBlocks = 0.5; // made before they come into view

double seconds(std::chrono::steady_clock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}

} // namespace

TerrainBlock::TerrainBlock(const HeightRaster& raster) : TerrainBlock(raster, HeightGrid(raster)) {}

TerrainBlock::TerrainBlock(const HeightRaster& raster, const HeightGrid& grid)
    : relief(raster, grid), contours(raster.block().level, grid)
{}

void TerrainCache::update(const MapView& view)
{
    if (mComplete && mView == view) {
        return;
    }
    mView = view;
    ++mFrame;
    const int level = blockLevel(view.metresPerPixel());
    const std::vector<BlockKey> visible = blocksInView(view, level, 0.0);
    const auto made = [this](const BlockKey& key) { return isMade(key); };
    const bool sameLevel = mShown.empty() || mShown.front().level == level;
    if (sameLevel || std::all_of(visible.begin(), visible.end(), made)) {
        mShown = visible;
    }
    const std::vector<BlockKey> wanted = blocksInView(view, level, MarginBlocks);
    mComplete = std::all_of(wanted.begin(), wanted.end(), made);
    markUsed(mShown);
    markUsed(wanted);
    for (const BlockKey& key : wanted) {
        if (mUnderWay < MostUnderWay && mBlocks.find(key) == mBlocks.end()) {
            request(key);
        }
    }
    dropOldBlocks();
}

void TerrainCache::markUsed(const std::vector<BlockKey>& keys)
{
    for (const BlockKey& key : keys) {
        const auto found = mBlocks.find(key);
        if (found != mBlocks.end()) {
            found->second.lastFrame = mFrame;
        }
    }
}

bool TerrainCache::isMade(const BlockKey& key) const
{
    const auto found = mBlocks.find(key);
    return found != mBlocks.end() && found->second.block != nullptr;
}

void TerrainCache::request(const BlockKey& key)
{
    mBlocks[key].lastFrame = mFrame;
    ++mUnderWay;
    mWorker.post([this, key](Terrain& terrain) -> TerrainWorker::Delivery {
        const auto begin = std::chrono::steady_clock::now();
        const auto block = std::make_shared<TerrainBlock>(
            HeightRaster(key, [&terrain](double lat, double lon) { return terrain.height(lat, lon); }));
        const double took = seconds(std::chrono::steady_clock::now() - begin);
        return [this, key, block, took] {
            block->relief.upload(); // here, where no more than a few blocks come in one frame
            mBlocks[key].block = block;
            --mUnderWay;
            ++mWork.blocks;
            mWork.totalSeconds += took;
            mWork.longestSeconds = std::max(mWork.longestSeconds, took);
        };
    });
}

void TerrainCache::dropOldBlocks()
{
    while (mBlocks.size() > MostBlocks) {
        auto oldest = mBlocks.end();
        for (auto entry = mBlocks.begin(); entry != mBlocks.end(); ++entry) {
            const bool made = entry->second.block != nullptr;
            if (made && (oldest == mBlocks.end() || entry->second.lastFrame < oldest->second.lastFrame)) {
                oldest = entry;
            }
        }
        if (oldest == mBlocks.end() || oldest->second.lastFrame == mFrame) {
            return;
        }
        mBlocks.erase(oldest);
    }
}

void TerrainCache::render(const MapView& view, const Layers& layers)
{
    const auto light = lightOnMap(view.up());
    const unsigned int ramp = mRamp.name();
    Tavik::OpenGL::MatrixPush();
    if (layers.shows(Layer::Relief)) {
        renderEach(view, [&](TerrainBlock& block) { block.relief.render(light, ramp); });
    }
    if (layers.shows(Layer::Contours)) {
        renderEach(view, [](TerrainBlock& block) { block.contours.render(); });
    }
    Tavik::OpenGL::MatrixPop();
}

template <typename Draw>
void TerrainCache::renderEach(const MapView& view, Draw draw)
{
    for (const BlockKey& key : mShown) {
        const auto found = mBlocks.find(key);
        if (found != mBlocks.end() && found->second.block != nullptr) {
            Tavik::OpenGL::MatrixSet(view.blockMatrix(key));
            draw(*found->second.block);
        }
    }
}

std::vector<BlockKey> blocksInView(const MapView& view, int level, double margin)
{
    const GeoBounds bounds = view.bounds();
    const double edge = BlockKey{level, 0, 0}.edgeDegrees();
    const auto index = [edge](double degrees, double lowest, double highest) {
        return static_cast<int>(std::floor(std::clamp(degrees, lowest, highest) / edge));
    };
    const int south = index(bounds.south - margin * edge, -90.0, 90.0);
    const int north = index(bounds.north + margin * edge, -90.0, 90.0);
    const int west = index(bounds.west - margin * edge, -180.0, 180.0);
    const int east = index(bounds.east + margin * edge, -180.0, 180.0);

    std::vector<std::pair<double, BlockKey>> byDistance;
    const Position middle =
        view.toPosition({0.5f * static_cast<float>(view.width()), 0.5f * static_cast<float>(view.height())});
    for (int row = south; row <= north; ++row) {
        for (int column = west; column <= east; ++column) {
            const double dLat = (row + 0.5) * edge - middle.latDegrees;
            const double dLon = (column + 0.5) * edge - middle.lonDegrees;
            byDistance.emplace_back(dLat * dLat + dLon * dLon, BlockKey{level, row, column});
        }
    }
    std::sort(byDistance.begin(), byDistance.end());
    std::vector<BlockKey> blocks;
    blocks.reserve(byDistance.size());
    for (const auto& [distance, key] : byDistance) {
        blocks.push_back(key);
    }
    return blocks;
}

} // namespace MovingMap
