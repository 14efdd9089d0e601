#include <tavik/opengl/RingDistance.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>

namespace Tavik::OpenGL {

namespace {

float farthest(unsigned int radius)
{
    const auto r = static_cast<float>(radius);
    return std::sqrt(2.0f * r * r);
}

// From a pixel to the corner of its ring, where that is not cut off at x or y 0.
float ringDistance(std::size_t x, std::size_t y, std::size_t ring)
{
    const auto dx = static_cast<float>(std::min(x, ring));
    const auto dy = static_cast<float>(std::min(y, ring));
    return std::sqrt(dx * dx + dy * dy);
}

struct Range
{
    float least = 1000.0f;
    float greatest = -1000.0f;

    void add(float distance)
    {
        least = std::min(least, distance);
        greatest = std::max(greatest, distance);
    }

    unsigned char toByte(float distance) const
    {
        const float t = std::clamp((distance - least) / (greatest - least), 0.0f, 1.0f);
        return static_cast<unsigned char>(255.0f - 255.0f * t);
    }
};

// For each pixel the number of the first ring with a pixel of the other state: its chessboard distance to that state,
// which two passes over the picture find, each looking at the neighbours that it has passed.
class Rings
{
public:
    Rings(const unsigned char* image, std::size_t width, std::size_t height, unsigned int radius)
        : mWidth(width), mHeight(height), mStride(width + 2), mRadius(static_cast<std::uint8_t>(radius)),
          mStates(new (std::nothrow) std::uint8_t[mStride * height]),
          mRings(new (std::nothrow) std::uint8_t[mStride * height])
    {
        if (!isAllocated()) {
            return;
        }
        copyStates(image);
        std::fill_n(mRings.get(), mStride * height, none());
        for (std::size_t y = 0; y < height; ++y) {
            takeFromRow(y, y == 0 ? y : y - 1);
            takeFromLeft(y);
        }
        for (std::size_t y = height; y-- > 0;) {
            takeFromRow(y, y + 1 == height ? y : y + 1);
            takeFromRight(y);
        }
    }

    bool isAllocated() const { return mStates != nullptr && mRings != nullptr; }

    /// 255 inside, 0 outside.
    const std::uint8_t* states(std::size_t y) const { return mStates.get() + y * mStride + 1; }

    /// The radius + 1 where there is no such ring.
    const std::uint8_t* rings(std::size_t y) const { return mRings.get() + y * mStride + 1; }

    std::uint8_t none() const { return static_cast<std::uint8_t>(mRadius + 1); }

private:
    // With a column more on each side, like the one beside it.
    void copyStates(const unsigned char* image)
    {
        for (std::size_t y = 0; y < mHeight; ++y) {
            std::uint8_t* row = mStates.get() + y * mStride;
            for (std::size_t x = 0; x < mWidth; ++x) {
                row[x + 1] = image[y * mWidth + x] != 0 ? 255 : 0;
            }
            row[0] = row[1];
            row[mWidth + 1] = row[mWidth];
        }
    }

    // The neighbours in another row, and whether those in the same row are of another state.
    void takeFromRow(std::size_t y, std::size_t neighbourRow)
    {
        const std::uint8_t* own = states(y) - 1; // the left neighbour of x is at x
        const std::uint8_t* other = states(neighbourRow) - 1;
        const std::uint8_t* otherRings = rings(neighbourRow) - 1;
        std::uint8_t* to = mRings.get() + y * mStride + 1;
        const std::uint8_t limit = none();
        for (std::size_t x = 0; x < mWidth; ++x) {
            const std::uint8_t state = own[x + 1];
            const std::uint8_t nearest = std::min(std::min(otherRings[x], otherRings[x + 1]), otherRings[x + 2]);
            const auto differs =
                static_cast<std::uint8_t>((own[x] ^ state) | (own[x + 2] ^ state) | (other[x] ^ state) |
                                          (other[x + 1] ^ state) | (other[x + 2] ^ state));
            const auto next = static_cast<std::uint8_t>(differs != 0 ? 1 : nearest + 1);
            to[x] = std::min(std::min(to[x], limit), next);
        }
    }

    void takeFromLeft(std::size_t y)
    {
        std::uint8_t* row = mRings.get() + y * mStride + 1;
        int ring = mRadius + 1;
        for (std::size_t x = 0; x < mWidth; ++x) {
            ring = std::min<int>(ring + 1, row[x]);
            row[x] = static_cast<std::uint8_t>(ring);
        }
    }

    void takeFromRight(std::size_t y)
    {
        std::uint8_t* row = mRings.get() + y * mStride + 1;
        int ring = mRadius + 1;
        for (std::size_t x = mWidth; x-- > 0;) {
            ring = std::min<int>(ring + 1, row[x]);
            row[x] = static_cast<std::uint8_t>(ring);
        }
    }

    std::size_t mWidth;
    std::size_t mHeight;
    std::size_t mStride;
    std::uint8_t mRadius;
    std::unique_ptr<std::uint8_t[]> mStates;
    std::unique_ptr<std::uint8_t[]> mRings;
};

// What becomes of a pixel whose ring is not cut off, by state and ring.
using RingBytes = std::array<std::array<unsigned char, 256>, 2>;

class FieldWriter
{
public:
    FieldWriter(unsigned char* image, std::size_t width, std::size_t height, unsigned int radius, const Rings& rings)
        : mImage(image), mWidth(width), mHeight(height), mRadius(radius), mRings(rings)
    {}

    Range range() const
    {
        Range range;
        unsigned int deepest[2] = {0, 0}; // of the pixels whose ring is not cut off, outside and inside
        for (std::size_t y = 0; y < mHeight; ++y) {
            const std::size_t cutColumns = y < mRadius ? mWidth : std::min<std::size_t>(mRadius, mWidth);
            for (std::size_t x = 0; x < cutColumns; ++x) {
                if (mRings.rings(y)[x] <= mRadius) {
                    range.add(distance(x, y));
                }
            }
            addDeepest(y, cutColumns, deepest);
        }
        // An edge has pixels on both sides, so that the extremes lie deepest inside and farthest outside.
        for (std::size_t state = 0; state < 2; ++state) {
            if (deepest[state] != 0) {
                const float d = ringDistance(deepest[state], deepest[state], deepest[state]);
                range.add(state != 0 ? -d : d);
            }
        }
        return range;
    }

    void write(const Range& range) const
    {
        const RingBytes bytes = ringBytes(range);
        for (std::size_t y = 0; y < mHeight; ++y) {
            unsigned char* to = mImage + y * mWidth;
            const std::uint8_t* rings = mRings.rings(y);
            const std::uint8_t* states = mRings.states(y);
            const std::size_t cutColumns = y < mRadius ? mWidth : std::min<std::size_t>(mRadius, mWidth);
            for (std::size_t x = 0; x < cutColumns; ++x) {
                to[x] = range.toByte(distance(x, y));
            }
            for (std::size_t x = cutColumns; x < mWidth; ++x) {
                to[x] = bytes[states[x] & 1][rings[x]];
            }
        }
    }

private:
    float distance(std::size_t x, std::size_t y) const
    {
        const std::uint8_t ring = mRings.rings(y)[x];
        const float d = ring <= mRadius ? ringDistance(x, y, ring) : farthest(mRadius);
        return mRings.states(y)[x] != 0 ? -d : d;
    }

    void addDeepest(std::size_t y, std::size_t start, unsigned int (&deepest)[2]) const
    {
        const std::uint8_t* rings = mRings.rings(y);
        const std::uint8_t* states = mRings.states(y);
        const auto radius = static_cast<std::uint8_t>(mRadius);
        std::uint8_t inside = 0;
        std::uint8_t outside = 0;
        for (std::size_t x = start; x < mWidth; ++x) {
            const auto found = static_cast<std::uint8_t>(rings[x] <= radius ? rings[x] : 0);
            inside = std::max(inside, static_cast<std::uint8_t>(found & states[x]));
            outside = std::max(outside, static_cast<std::uint8_t>(found & ~states[x]));
        }
        deepest[0] = std::max<unsigned int>(deepest[0], outside);
        deepest[1] = std::max<unsigned int>(deepest[1], inside);
    }

    RingBytes ringBytes(const Range& range) const
    {
        RingBytes bytes = {};
        for (unsigned int ring = 0; ring <= mRadius + 1; ++ring) {
            const float d = ring <= mRadius ? ringDistance(ring, ring, ring) : farthest(mRadius);
            bytes[0][ring] = range.toByte(d);
            bytes[1][ring] = range.toByte(-d);
        }
        return bytes;
    }

    unsigned char* mImage;
    std::size_t mWidth;
    std::size_t mHeight;
    unsigned int mRadius;
    const Rings& mRings;
};

} // namespace

void buildRingDistanceField(unsigned char* image, unsigned int width, unsigned int height, unsigned int radius)
{
    if (image == nullptr || width == 0 || height == 0) {
        return;
    }
    const Rings rings(image, width, height, radius);
    if (!rings.isAllocated()) {
        return;
    }
    const FieldWriter writer(image, width, height, radius, rings);
    const Range range = writer.range();
    writer.write(range);
    std::printf("Font SDF minDist %f maxDist %f\n", static_cast<double>(range.least),
                static_cast<double>(range.greatest));
}

bool nearestByRings(const unsigned char* image, unsigned int width, unsigned int height, unsigned int x, unsigned int y,
                    unsigned int radius, float& distance)
{
    distance = 0.0f;
    if (image == nullptr || x >= width || y >= height) {
        return false;
    }
    const bool inside = image[static_cast<std::size_t>(y) * width + x] != 0;
    const auto differs = [&](std::size_t column, std::size_t row) {
        return (image[row * width + column] != 0) != inside;
    };
    const auto write = [&](float d) { distance = inside ? -d : d; };
    const std::size_t lastRing = std::min<std::size_t>(radius, std::max(width, height)); // beyond it nothing is left
    for (std::size_t ring = 1; ring <= lastRing; ++ring) {
        const std::size_t left = x < ring ? 0 : x - ring;
        const std::size_t top = y < ring ? 0 : y - ring;
        const std::size_t right = std::min<std::size_t>(x + ring, width - 1);
        const std::size_t bottom = std::min<std::size_t>(y + ring, height - 1);
        for (std::size_t row = top; row <= bottom; ++row) {
            // Rows within the ring were searched before, but for their ends.
            const bool isEdge = row + ring == y || row == y + ring;
            const std::size_t step = isEdge || left == right ? 1 : right - left;
            for (std::size_t column = left; column <= right; column += step) {
                if (differs(column, row)) {
                    write(ringDistance(x, y, ring));
                    return true;
                }
            }
        }
    }
    write(farthest(radius));
    return false;
}

} // namespace Tavik::OpenGL
