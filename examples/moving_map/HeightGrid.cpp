#include <moving_map/HeightGrid.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace MovingMap {

namespace {

constexpr int PostsPerDegree = 1200; // of terrain tiles: samples on their posts need no interpolation
constexpr int MostSamplesPerCell = 4;
constexpr int MarginSamples = MostSamplesPerCell - 1; // around the block: what its outermost nodes average

/// How densely a level is sampled, and how widely the samples are averaged.
struct Sampling
{
    explicit Sampling(int level)
        : samplesPerCell(std::min(1 << level, MostSamplesPerCell)), postsPerSample((1 << level) / samplesPerCell),
          reach(std::max(samplesPerCell, 2)), size(BlockKey::Cells * samplesPerCell + 1 + 2 * MarginSamples)
    {}

    int samplesPerCell;
    int postsPerSample;
    int reach; // in samples: the weight falls from the node to zero here
    int size;  // of the raster's edge
};

/// The raster of one block with its margin. Places come from whole numbers, so that neighbouring blocks ask for exactly
/// the same ones.
std::vector<float> sampleHeights(const BlockKey& block, const Sampling& sampling, const HeightSource& source)
{
    const long edgePosts = static_cast<long>(BlockKey::Cells) << block.level;
    const auto degrees = [&](int blockIndex, int sample) {
        const long post = blockIndex * edgePosts + static_cast<long>(sample - MarginSamples) * sampling.postsPerSample;
        return static_cast<double>(post) / PostsPerDegree;
    };
    std::vector<float> heights;
    heights.reserve(static_cast<std::size_t>(sampling.size) * static_cast<std::size_t>(sampling.size));
    for (int row = 0; row < sampling.size; ++row) {
        const double lat = degrees(block.row, row);
        for (int column = 0; column < sampling.size; ++column) {
            heights.push_back(static_cast<float>(source(lat, degrees(block.column, column))));
        }
    }
    return heights;
}

/// Weighted means of one row or column of samples around its nodes; missing samples do not count.
/// @param stride  between samples in the array
void averageLine(const float* samples, std::size_t stride, const Sampling& sampling, float* nodes,
                 std::size_t nodeStride)
{
    for (std::size_t node = 0; node < HeightGrid::Nodes; ++node) {
        const int middle = MarginSamples + static_cast<int>(node) * sampling.samplesPerCell;
        float sum = 0.0f;
        float weights = 0.0f;
        for (int offset = 1 - sampling.reach; offset < sampling.reach; ++offset) {
            const float sample = samples[static_cast<std::size_t>(middle + offset) * stride];
            if (!std::isnan(sample)) {
                const auto weight = static_cast<float>(sampling.reach - std::abs(offset));
                sum += weight * sample;
                weights += weight;
            }
        }
        nodes[node * nodeStride] = weights > 0.0f ? sum / weights : std::numeric_limits<float>::quiet_NaN();
    }
}

} // namespace

HeightGrid::HeightGrid(const BlockKey& block, const HeightSource& source)
{
    const Sampling sampling(block.level);
    const auto size = static_cast<std::size_t>(sampling.size);
    const std::vector<float> samples = sampleHeights(block, sampling, source);

    std::vector<float> narrowed(size * Nodes);
    for (std::size_t row = 0; row < size; ++row) {
        averageLine(&samples[row * size], 1, sampling, &narrowed[row * Nodes], 1);
    }
    mHeights.resize(Nodes * Nodes);
    for (std::size_t column = 0; column < Nodes; ++column) {
        averageLine(&narrowed[column], Nodes, sampling, &mHeights[column], Nodes);
    }
}

} // namespace MovingMap
