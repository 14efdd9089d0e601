#include <moving_map/VoidRepair.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace MovingMap {

namespace {

constexpr float LowestShoreMetres = 100.0f;

class Repair
{
public:
    Repair(std::vector<float>& heights, std::size_t size) : mHeights(heights), mSize(size), mSeen(heights.size(), 0) {}

    void run()
    {
        for (std::size_t place = 0; place < mHeights.size(); ++place) {
            if (mSeen[place] == 0 && isEmpty(place)) {
                findPatch(place);
                if (!mReachesEdge && mLowestShore > LowestShoreMetres) {
                    fillPatch();
                }
            }
        }
    }

private:
    static constexpr float Rounding = 1e-3f;

    bool isEmpty(std::size_t place) const
    {
        return std::abs(mHeights[place]) < Rounding || std::abs(mHeights[place] + 1.0f) < Rounding;
    }

    /// Collects the patch around a place together with its shore, where the hole has drawn interpolated heights down.
    void findPatch(std::size_t first)
    {
        mPatch.assign(1, first);
        mSeen[first] = 1;
        mReachesEdge = false;
        mLowestShore = std::numeric_limits<float>::max();
        std::vector<std::size_t> shore;
        for (std::size_t next = 0; next < mPatch.size(); ++next) {
            const std::size_t place = mPatch[next];
            if (isOnEdge(place)) {
                mReachesEdge = true;
                continue;
            }
            for (const std::size_t neighbour : neighbours(place)) {
                if (isEmpty(neighbour)) {
                    if (mSeen[neighbour] == 0) {
                        mSeen[neighbour] = 1;
                        mPatch.push_back(neighbour);
                    }
                } else if (!std::isnan(mHeights[neighbour])) {
                    mLowestShore = std::min(mLowestShore, mHeights[neighbour]);
                    shore.push_back(neighbour);
                }
            }
        }
        if (!mReachesEdge) {
            mPatch.insert(mPatch.end(), shore.begin(), shore.end());
        }
    }

    /// From the shore inwards, each place becomes the mean of its neighbours that are known by then.
    void fillPatch()
    {
        for (const std::size_t place : mPatch) {
            mHeights[place] = std::numeric_limits<float>::quiet_NaN();
        }
        std::vector<std::size_t> open = mPatch;
        while (!open.empty()) {
            std::vector<std::pair<std::size_t, float>> filled;
            std::vector<std::size_t> stillOpen;
            for (const std::size_t place : open) {
                const float mean = meanAround(place);
                if (std::isnan(mean)) {
                    stillOpen.push_back(place);
                } else {
                    filled.emplace_back(place, mean);
                }
            }
            if (filled.empty()) {
                return;
            }
            for (const auto& [place, height] : filled) {
                mHeights[place] = height;
            }
            open.swap(stillOpen);
        }
    }

    float meanAround(std::size_t place) const
    {
        if (isOnEdge(place)) {
            return std::numeric_limits<float>::quiet_NaN();
        }
        float sum = 0.0f;
        int count = 0;
        for (const std::size_t neighbour : neighbours(place)) {
            if (!std::isnan(mHeights[neighbour])) {
                sum += mHeights[neighbour];
                ++count;
            }
        }
        return count == 0 ? std::numeric_limits<float>::quiet_NaN() : sum / static_cast<float>(count);
    }

    bool isOnEdge(std::size_t place) const
    {
        const std::size_t column = place % mSize;
        const std::size_t row = place / mSize;
        return column == 0 || row == 0 || column + 1 == mSize || row + 1 == mSize;
    }

    std::array<std::size_t, 8> neighbours(std::size_t place) const
    {
        return {place - mSize - 1, place - mSize,     place - mSize + 1, place - 1,
                place + 1,         place + mSize - 1, place + mSize,     place + mSize + 1};
    }

    std::vector<float>& mHeights;
    std::size_t mSize;
    std::vector<char> mSeen;
    std::vector<std::size_t> mPatch;
    bool mReachesEdge = false;
    float mLowestShore = 0.0f;
};

} // namespace

void repairVoids(std::vector<float>& heights, std::size_t size)
{
    Repair(heights, size).run();
}

} // namespace MovingMap
