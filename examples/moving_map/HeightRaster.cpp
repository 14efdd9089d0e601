#include <moving_map/HeightRaster.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>

namespace MovingMap {

namespace {

constexpr int PostsPerDegree = 1200; // of terrain tiles: samples on their posts need no interpolation
constexpr int MostSamplesPerCell = 4;

/// Mean of the samples around one, weighted by a tent; NaN where that one is missing.
/// @param stride  between samples in the array
float tentMean(const float* middle, std::ptrdiff_t stride, int reach)
{
    if (std::isnan(*middle)) {
        return std::numeric_limits<float>::quiet_NaN();
    }
    float sum = 0.0f;
    float weights = 0.0f;
    for (int offset = 1 - reach; offset < reach; ++offset) {
        const float sample = middle[offset * stride];
        if (!std::isnan(sample)) {
            const auto weight = static_cast<float>(reach - std::abs(offset));
            sum += weight * sample;
            weights += weight;
        }
    }
    return sum / weights;
}

} // namespace

HeightRaster::HeightRaster(const BlockKey& block, const HeightSource& source)
    : mBlock(block), mSamplesPerCell(std::min(1 << block.level, MostSamplesPerCell)),
      mPostsPerSample((1 << block.level) / mSamplesPerCell), mSize(BlockKey::Cells * mSamplesPerCell + 1 + 2 * Margin)
{
    mHeights.reserve(static_cast<std::size_t>(mSize) * static_cast<std::size_t>(mSize));
    for (int row = -Margin; row < mSize - Margin; ++row) {
        const double lat = latDegrees(row);
        for (int column = -Margin; column < mSize - Margin; ++column) {
            mHeights.push_back(static_cast<float>(source(lat, degrees(block.column, column))));
        }
    }
}

double HeightRaster::spacingDegrees() const
{
    return static_cast<double>(mPostsPerSample) / PostsPerDegree;
}

double HeightRaster::degrees(int blockIndex, int sample) const
{
    const long edgePosts = static_cast<long>(BlockKey::Cells) << mBlock.level;
    return static_cast<double>(blockIndex * edgePosts + static_cast<long>(sample) * mPostsPerSample) / PostsPerDegree;
}

std::vector<float> HeightRaster::smoothed(int first, int step, int count, int reach) const
{
    const auto size = static_cast<std::size_t>(mSize);
    const auto edge = static_cast<std::size_t>(count);
    const auto place = [&](std::size_t i) {
        const int sample = Margin + first + static_cast<int>(i) * step;
        return static_cast<std::size_t>(sample);
    };
    std::vector<float> narrowed(size * edge);
    for (std::size_t row = 0; row < size; ++row) {
        for (std::size_t i = 0; i < edge; ++i) {
            narrowed[row * edge + i] = tentMean(&mHeights[row * size + place(i)], 1, reach);
        }
    }
    std::vector<float> heights(edge * edge);
    for (std::size_t row = 0; row < edge; ++row) {
        for (std::size_t i = 0; i < edge; ++i) {
            heights[row * edge + i] =
                tentMean(&narrowed[place(row) * edge + i], static_cast<std::ptrdiff_t>(edge), reach);
        }
    }
    return heights;
}

} // namespace MovingMap
