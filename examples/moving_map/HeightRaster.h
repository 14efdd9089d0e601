#pragma once

#include <moving_map/BlockKey.h>
#include <moving_map/HeightSource.h>

#include <vector>

namespace MovingMap {

/// Samples of the terrain under one block and a little around it, from which everything that is drawn of it is made.
///
/// Places come from whole numbers, so that neighbouring blocks ask for exactly the same ones.
class HeightRaster
{
public:
    static constexpr int Margin = 3; ///< samples on each side beyond the block's edges

    /// Asks the source for 7 000 to 95 000 heights.
    HeightRaster(const BlockKey& block, const HeightSource& source);

    const BlockKey& block() const { return mBlock; }

    /// 1, 2 or 4: the higher levels leave terrain posts out.
    int samplesPerCell() const { return mSamplesPerCell; }

    double latDegrees(int row) const { return degrees(mBlock.row, row); }
    double spacingDegrees() const;

    /// Heights at every so-manieth sample, each the mean of the samples around it, in metres; NaN where there is no
    /// terrain at the sample itself. Missing samples do not count in a mean.
    /// @param first  row and column of the first height, in samples from the block's south-west corner
    /// @param step   samples from one to the next
    /// @param count  along each edge
    /// @param reach  samples from a height to where the weight falls to zero; first and last keep this far less one
    ///               from the raster's edge
    /// @return count × count heights, row by row from the south-west
    std::vector<float> smoothed(int first, int step, int count, int reach) const;

private:
    double degrees(int blockIndex, int sample) const;

    BlockKey mBlock;
    int mSamplesPerCell;
    int mPostsPerSample;
    int mSize; // samples along each edge
    std::vector<float> mHeights;
};

} // namespace MovingMap
