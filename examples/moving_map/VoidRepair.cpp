#include <moving_map/VoidRepair.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace MovingMap {

namespace {

constexpr float LowestShoreMetres = 100.0f;
constexpr std::size_t LargestPatchAtEdge = 1000; // posts; the sea beyond a cliff is larger

class Repair
{
public:
    Repair(std::vector<float>& heights, std::size_t size) : mHeights(heights), mSize(size), mSeen(heights.size(), 0) {}

    std::vector<std::size_t> run()
    {
        for (std::size_t place = 0; place < mHeights.size(); ++place) {
            if (mSeen[place] == 0 && isEmpty(place)) {
                findPatch(place);
                if (isVoid()) {
                    mFilled.insert(mFilled.end(), mPatch.begin(), mPatch.end());
                }
            }
        }
        std::sort(mFilled.begin(), mFilled.end());
        mFilled.erase(std::unique(mFilled.begin(), mFilled.end()), mFilled.end());
        fill();
        return mFilled;
    }

private:
    static constexpr float Rounding = 1e-3f;

    bool isEmpty(std::size_t place) const
    {
        return std::abs(mHeights[place]) < Rounding || std::abs(mHeights[place] + 1.0f) < Rounding;
    }

    /// Whether the patch just found is a hole. Without a shore the whole raster is the sea.
    bool isVoid() const
    {
        const bool hasShore = mLowestShore < std::numeric_limits<float>::max();
        return hasShore && mLowestShore > LowestShoreMetres && (!mReachesEdge || mPatch.size() <= LargestPatchAtEdge);
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
            mReachesEdge = mReachesEdge || isOnEdge(place);
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
        mPatch.insert(mPatch.end(), shore.begin(), shore.end());
    }

    /// From the shores inwards, each place becomes the mean of its neighbours that are known by then. All holes at
    /// once: the shore of one may lie beside another.
    void fill()
    {
        for (const std::size_t place : mFilled) {
            mHeights[place] = std::numeric_limits<float>::quiet_NaN();
        }
        std::vector<std::size_t> open = mFilled;
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

    /// The up to eight places around one.
    class Neighbours
    {
    public:
        void add(std::size_t place) { mPlaces[mCount++] = place; }
        const std::size_t* begin() const { return mPlaces.data(); }
        const std::size_t* end() const { return mPlaces.data() + mCount; }

    private:
        std::array<std::size_t, 8> mPlaces = {};
        std::size_t mCount = 0;
    };

    Neighbours neighbours(std::size_t place) const
    {
        const std::size_t column = place % mSize;
        const std::size_t row = place / mSize;
        Neighbours result;
        for (std::size_t r = row - std::min<std::size_t>(row, 1); r <= std::min(row + 1, mSize - 1); ++r) {
            for (std::size_t c = column - std::min<std::size_t>(column, 1); c <= std::min(column + 1, mSize - 1); ++c) {
                if (r != row || c != column) {
                    result.add(r * mSize + c);
                }
            }
        }
        return result;
    }

    std::vector<float>& mHeights;
    std::size_t mSize;
    std::vector<char> mSeen;
    std::vector<std::size_t> mPatch;
    std::vector<std::size_t> mFilled;
    bool mReachesEdge = false;
    float mLowestShore = 0.0f;
};

} // namespace

std::vector<std::size_t> repairVoids(std::vector<float>& heights, std::size_t size)
{
    return Repair(heights, size).run();
}

} // namespace MovingMap
