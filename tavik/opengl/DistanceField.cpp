#include <tavik/opengl/DistanceField.h>

#include <tavik/opengl/AtlasField.h>

#include <tavik/math/Vector2.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

namespace {

using Point = Tavik::Math::Vector2<float>;

constexpr float Root2 = 1.4142137f;

// Work area for each pixel: the nearest edge point that is known, and a float's worth of room for the change masks.
constexpr std::size_t WorkBytes = 12;

// Farther from everything than any edge point; its square is still finite.
constexpr float NowhereCoordinate = 1e19f;

constexpr float FarthestSquared = 1e37f;

// How far edge points are handed on. On its way to a pixel that it is nearest to, one may pass pixels much farther from
// it, round those that other edge points are nearer to: only an unlimited reach finds all.
constexpr float UnlimitedReach = 1e19f;

// For atlases: rare ways round are lost, for a third less time.
constexpr float AtlasReachBeyondRadius = 2.0f;

constexpr int BitsPerWord = 32;

struct Picture
{
    const unsigned char* pixels;
    int width;
    int height;
    std::ptrdiff_t stride;

    const unsigned char* row(int y) const { return pixels + y * stride; }
    bool hasInterior() const { return width >= 3 && height >= 3; }
};

// Direction in which coverage grows around a pixel that is not at the border, y down; its length has no meaning.
Point coverageGradient(const unsigned char* pixel, std::ptrdiff_t stride)
{
    const unsigned char* above = pixel - stride;
    const unsigned char* below = pixel + stride;
    const auto corners = [](int a, int b) { return static_cast<float>(a + b); };
    return {corners(above[1] - above[-1], below[1] - below[-1]) + Root2 * static_cast<float>(pixel[1] - pixel[-1]),
            corners(below[-1] - above[-1], below[1] - above[1]) + Root2 * static_cast<float>(below[0] - above[0])};
}

Point normalised(Point v)
{
    const float squared = v.x * v.x + v.y * v.y;
    if (squared <= 0.0001f) {
        return v;
    }
    const float length = std::sqrt(squared);
    return {v.x / length, v.y / length};
}

// Distance along the gradient from the centre of a pixel to a straight edge that leaves the share a of it covered.
float edgeDistance(Point gradient, float a)
{
    if (gradient.x == 0.0f || gradient.y == 0.0f) {
        return 0.5f - a;
    }
    const float x = std::abs(gradient.x);
    const float y = std::abs(gradient.y);
    const float g1 = std::min(x, y);
    const float g2 = std::max(x, y);
    const float a1 = 0.5f * g1 / g2; // the edge cuts off one corner below a1, and all but one above 1 - a1
    if (a < a1) {
        return 0.5f * (g1 + g2) - std::sqrt(2.0f * g1 * g2 * a);
    }
    if (a < 1.0f - a1) {
        return (0.5f - a) * g2;
    }
    return -0.5f * (g1 + g2) + std::sqrt(2.0f * g1 * g2 * (1.0f - a));
}

// Whether there may be an edge in a pixel: it is covered in part, or it is empty beside one that is full.
bool isAtEdge(const unsigned char* pixel, std::ptrdiff_t stride)
{
    if (*pixel == 0) {
        return pixel[-1] == 255 || pixel[-stride] == 255 || pixel[1] == 255 || pixel[stride] == 255;
    }
    return *pixel != 255;
}

// The sweeps' view of the work area.
class Field
{
public:
    // One bit for each pixel.
    using Mask = std::uint32_t*;

    Field(unsigned char* work, int width, int height, float reach)
        : mPoints(reinterpret_cast<Point*>(work)), mWidth(width), mHeight(height),
          mWordCount((width + BitsPerWord - 1) / BitsPerWord), mReachSquared(std::min(reach * reach, FarthestSquared))
    {
        const std::size_t pixelCount = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        std::uninitialized_fill_n(mPoints, pixelCount, Point(NowhereCoordinate, NowhereCoordinate));
        mRest = reinterpret_cast<std::uint32_t*>(mPoints + pixelCount);
    }

    // Room for two masks is left in pictures with an interior.
    Mask mask(std::size_t number) const { return mRest + number * maskSize(); }
    void clear(Mask mask) const { std::uninitialized_fill_n(mask, maskSize(), 0); }
    void copy(Mask from, Mask to) const { std::copy_n(from, maskSize(), to); }

    void seed(int x, int y, Point point, Mask changed)
    {
        row(y)[x] = point;
        maskRow(changed, y)[x / BitsPerWord] |= 1u << (x % BitsPerWord);
    }

    // Hands edge points on, from each pixel to those after it: row by row from the top left for Step 1, from the
    // bottom right for Step -1.
    //
    // Only pixels with a neighbour that has changed since they looked at it last can change; the masks tell which.
    // @param before  changes of the sweep before this one
    // @param changed  gets the changes of this sweep added
    // @return whether there were any
    template <int Step>
    bool sweep(Mask before, Mask changed)
    {
        bool hasChanged = false;
        for (int i = 0; i < mHeight; ++i) {
            const int y = Step > 0 ? i : mHeight - 1 - i;
            for (int k = 0; k < mWordCount; ++k) {
                const int word = Step > 0 ? k : mWordCount - 1 - k;
                std::uint32_t candidates = shiftedOwn<Step>(before, changed, y, word);
                if (i > 0) {
                    candidates |= dilated(before, changed, y - Step, word);
                }
                if (word == mWordCount - 1 && mWidth % BitsPerWord != 0) {
                    candidates &= (1u << (mWidth % BitsPerWord)) - 1;
                }
                if (candidates != 0 && visit<Step>(candidates, word, y, i > 0, maskRow(changed, y)[word])) {
                    hasChanged = true;
                }
            }
        }
        return hasChanged;
    }

    float squaredDistance(int x, int y) const { return squaredDistance(row(y)[x], x, y); }

private:
    static float squaredDistance(Point point, int x, int y)
    {
        const float dx = point.x - static_cast<float>(x);
        const float dy = point.y - static_cast<float>(y);
        return dx * dx + dy * dy;
    }

    std::size_t maskSize() const { return static_cast<std::size_t>(mWordCount) * static_cast<std::size_t>(mHeight); }
    Mask maskRow(Mask mask, int y) const { return mask + static_cast<std::ptrdiff_t>(y) * mWordCount; }
    Point* row(int y) const { return mPoints + static_cast<std::ptrdiff_t>(y) * mWidth; }

    // Pixels of a word whose neighbour before them in the same row has changed.
    template <int Step>
    std::uint32_t shiftedOwn(Mask before, Mask changed, int y, int word) const
    {
        const std::uint32_t* a = maskRow(before, y);
        const std::uint32_t* b = maskRow(changed, y);
        const std::uint32_t own = a[word] | b[word];
        if constexpr (Step > 0) {
            return own << 1 | (word > 0 ? (a[word - 1] | b[word - 1]) >> (BitsPerWord - 1) : 0);
        } else {
            return own >> 1 | (word + 1 < mWordCount ? (a[word + 1] | b[word + 1]) << (BitsPerWord - 1) : 0);
        }
    }

    // Pixels of a word that have changed in row y, with one more on each side.
    std::uint32_t dilated(Mask before, Mask changed, int y, int word) const
    {
        const std::uint32_t own = maskRow(before, y)[word] | maskRow(changed, y)[word];
        return own | shiftedOwn<1>(before, changed, y, word) | shiftedOwn<-1>(before, changed, y, word);
    }

    // Visits the candidates of a word in the order of the sweep; a pixel that changes makes the next one a candidate.
    template <int Step>
    bool visit(std::uint32_t candidates, int word, int y, bool hasRowBefore, std::uint32_t& changed)
    {
        bool hasChanged = false;
        const int last = std::min(BitsPerWord, mWidth - word * BitsPerWord) - 1;
        while (candidates != 0) {
            const int bit = Step > 0 ? __builtin_ctz(candidates) : BitsPerWord - 1 - __builtin_clz(candidates);
            candidates ^= 1u << bit;
            const int x = word * BitsPerWord + bit;
            if (hasRowBefore ? lookAround<Step>(x, y) : lookAt(x, y, row(y) + std::clamp(x - Step, 0, mWidth - 1), 1)) {
                hasChanged = true;
                changed |= 1u << bit;
                if (Step > 0 ? bit < last : bit > 0) {
                    candidates |= 1u << (bit + Step);
                }
            }
        }
        return hasChanged;
    }

    template <int Step>
    bool lookAround(int x, int y)
    {
        const Point* before = row(y - Step);
        const int left = std::max(x - 1, 0); // at a border the pixel beside takes the place of the one that is missing
        const int right = std::min(x + 1, mWidth - 1);
        const Point neighbours[] = {before[left], before[x], before[right], row(y)[Step > 0 ? left : right]};
        return lookAt(x, y, neighbours, 4);
    }

    // Takes the nearest of the neighbours' edge points if it is nearer than the pixel's own.
    bool lookAt(int x, int y, const Point* neighbours, int count)
    {
        Point& own = row(y)[x];
        float nearest = std::min(squaredDistance(own, x, y), mReachSquared);
        const Point* found = nullptr;
        for (int i = 0; i < count; ++i) {
            const float distance = squaredDistance(neighbours[i], x, y);
            if (distance < nearest) {
                nearest = distance;
                found = neighbours + i;
            }
        }
        if (found == nullptr) {
            return false;
        }
        own = *found;
        return true;
    }

    Point* mPoints;
    std::uint32_t* mRest;
    int mWidth;
    int mHeight;
    int mWordCount;
    float mReachSquared;
};

// Whether eight pixels and all beside them are empty.
bool isBlank(const unsigned char* pixel, std::ptrdiff_t stride)
{
    std::uint64_t rows[3];
    std::memcpy(&rows[0], pixel - stride, sizeof(rows[0]));
    std::memcpy(&rows[1], pixel, sizeof(rows[1]));
    std::memcpy(&rows[2], pixel + stride, sizeof(rows[2]));
    return (rows[0] | rows[1] | rows[2]) == 0 && pixel[-1] == 0 && pixel[8] == 0;
}

// Puts the edge points of the pixels that an edge runs through into the field.
void seedEdges(const Picture& picture, Field& field, Field::Mask changed)
{
    for (int y = 1; y < picture.height - 1; ++y) {
        const unsigned char* pixels = picture.row(y);
        for (int x = 1; x < picture.width - 1; ++x) {
            if (x + 8 < picture.width && isBlank(pixels + x, picture.stride)) {
                x += 7;
                continue;
            }
            if (!isAtEdge(pixels + x, picture.stride)) {
                continue;
            }
            const Point raw = coverageGradient(pixels + x, picture.stride);
            if (std::abs(raw.x) < 0.001f && std::abs(raw.y) < 0.001f) {
                continue;
            }
            const Point gradient = normalised(raw);
            const float distance = edgeDistance(gradient, static_cast<float>(pixels[x]) / 255.0f);
            field.seed(x, y,
                       {static_cast<float>(x) + gradient.x * distance, static_cast<float>(y) + gradient.y * distance},
                       changed);
        }
    }
}

void spreadEdges(Field& field, Field::Mask a, Field::Mask b)
{
    constexpr int MaximumRepetitions = 10;
    for (int i = 0; i < MaximumRepetitions; ++i) {
        bool hasChanged = field.sweep<1>(a, b);
        field.clear(a);
        hasChanged |= field.sweep<-1>(b, a);
        field.clear(b);
        if (!hasChanged) {
            return;
        }
    }
}

unsigned char toByte(float share)
{
    return static_cast<unsigned char>(std::min(std::max(0.0f, share), 1.0f) * 255.0f); // NaN becomes 0
}

void writeField(unsigned char* out, std::ptrdiff_t outStride, float radius, const Picture& picture, const Field& field)
{
    for (int y = 0; y < picture.height; ++y) {
        const unsigned char* in = picture.row(y);
        unsigned char* to = out + y * outStride;
        for (int x = 0; x < picture.width; ++x) {
            const float distance = std::sqrt(field.squaredDistance(x, y)) / radius;
            to[x] = toByte(0.5f + 0.5f * (in[x] >= 128 ? distance : -distance));
        }
    }
}

void buildField(unsigned char* out, std::ptrdiff_t outStride, float radius, const Picture& picture, unsigned char* work,
                float reach)
{
    Field field(work, picture.width, picture.height, reach);
    if (picture.hasInterior()) {
        const Field::Mask a = field.mask(0);
        const Field::Mask b = field.mask(1);
        field.clear(a);
        seedEdges(picture, field, a);
        field.copy(a, b); // neither direction has seen the seeds
        spreadEdges(field, a, b);
    }
    writeField(out, outStride, radius, picture, field);
}

// Null where there is no memory for it; sizes are above 0.
std::unique_ptr<unsigned char[]> allocateWork(int width, int height)
{
    const std::size_t pixelCount = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (pixelCount > static_cast<std::size_t>(PTRDIFF_MAX) / WorkBytes) {
        return nullptr;
    }
    return std::unique_ptr<unsigned char[]>(new (std::nothrow) unsigned char[pixelCount * WorkBytes]);
}

} // namespace

int sdfBuildDistanceField(unsigned char* out, int outStride, float radius, const unsigned char* image, int width,
                          int height, int stride)
{
    if (width < 1 || height < 1) {
        return 1;
    }
    const std::unique_ptr<unsigned char[]> work = allocateWork(width, height);
    if (work == nullptr) {
        return 0;
    }
    sdfBuildDistanceFieldNoAlloc(out, outStride, radius, image, width, height, stride, work.get());
    return 1;
}

void sdfBuildDistanceFieldNoAlloc(unsigned char* out, int outStride, float radius, const unsigned char* image,
                                  int width, int height, int stride, unsigned char* work)
{
    if (width < 1 || height < 1) {
        return;
    }
    buildField(out, outStride, radius, {image, width, height, stride}, work, UnlimitedReach);
}

void sdfCoverageToDistanceField(unsigned char* out, int outStride, const unsigned char* image, int width, int height,
                                int stride)
{
    const Picture picture = {image, width, height, stride};
    for (int y = 0; y < height; ++y) {
        const unsigned char* in = picture.row(y);
        unsigned char* to = out + static_cast<std::ptrdiff_t>(y) * outStride;
        for (int x = 0; x < width; ++x) {
            if (x == 0 || y == 0 || x == width - 1 || y == height - 1) {
                to[x] = 0;
            } else if (!isAtEdge(in + x, stride)) {
                to[x] = in[x];
            } else {
                const Point raw = coverageGradient(in + x, stride);
                const float a = static_cast<float>(in[x]) / 255.0f;
                const bool isFlat = std::abs(raw.x) < 0.0001f && std::abs(raw.y) < 0.0001f;
                const float distance = isFlat ? (0.5f - a) * Root2 : edgeDistance(normalised(raw), a);
                to[x] = toByte(0.5f - 0.7071067f * distance);
            }
        }
    }
}

namespace Tavik::OpenGL {

void buildAtlasField(unsigned char* pixels, int width, int height, float radius)
{
    const std::unique_ptr<unsigned char[]> work = allocateWork(width, height);
    if (work != nullptr) {
        buildField(pixels, width, radius, {pixels, width, height, width}, work.get(), radius + AtlasReachBeyondRadius);
    }
}

} // namespace Tavik::OpenGL
