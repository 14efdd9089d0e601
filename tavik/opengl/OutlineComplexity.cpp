#include <tavik/opengl/OutlineComplexity.h>

#include <tavik/math/Vector2.h>
#include <tavik/opengl/VectorProducts.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Tavik::OpenGL {

namespace {

using Math::Vector2;
using Math::Vector3;

// At most 125 000 crossings, which take a second.
constexpr std::size_t AlwaysSimple = 500;

// Each takes about 300 bytes.
constexpr std::uint64_t MaximumCrossings = 250000;

// Pairs of edges above each other; each takes up to 6 nanoseconds.
constexpr std::uint64_t MaximumPairs = 2000000000;

// Crossings times the edges that lie above each other on average; each takes up to 25 nanoseconds.
constexpr std::uint64_t MaximumCrossingWork = 200000000;

// Over all pairs of edges that meet, the edges of both contours, since joining contours or parting them goes along all
// of their edges, and a share for the meeting itself; each takes up to 10 nanoseconds.
constexpr std::uint64_t MaximumMeetingWork = 1000000000;
constexpr std::uint64_t MeetingShare = 16;

// Of the normal's largest component: from directions that see less of the outline the sweep never looks.
constexpr double SmallestPart = 0.1;

struct Edge
{
    Vector2<float> start;
    Vector2<float> end;
    std::uint64_t contourSize;
};

struct Box
{
    Vector2<float> low;
    Vector2<float> high;
};

// A way to look at the outline: along one axis, at the plane of the other two.
struct Projection
{
    float Vector3<float>::*across; // the way that the sweep goes
    float Vector3<float>::*up;
    double Vector3<double>::*depth;
};

constexpr Projection Projections[] = {
    {&Vector3<float>::x, &Vector3<float>::y, &Vector3<double>::z},
    {&Vector3<float>::y, &Vector3<float>::z, &Vector3<double>::x},
    {&Vector3<float>::z, &Vector3<float>::x, &Vector3<double>::y},
};

double largestComponent(Vector3<double> v)
{
    return std::max({std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)});
}

// At right angles to the plane of the outline, of any length: the plane of two corners far apart and the one farthest
// from the line between them. Zero where all corners lie on a line.
Vector3<double> normalOf(const std::vector<Vector3<float>>& corners)
{
    Vector3<float> start;
    Vector3<double> longest;
    for (const Projection& projection : Projections) {
        const auto [low, high] =
            std::minmax_element(corners.begin(), corners.end(), [&](Vector3<float> a, Vector3<float> b) {
                return a.*projection.across < b.*projection.across;
            });
        const Vector3<double> extent = difference(*high, *low);
        if (largestComponent(extent) > largestComponent(longest)) {
            start = *low;
            longest = extent;
        }
    }
    Vector3<double> normal;
    for (const Vector3<float> corner : corners) {
        const Vector3<double> candidate = crossProduct(longest, difference(corner, start));
        if (largestComponent(candidate) > largestComponent(normal)) {
            normal = candidate;
        }
    }
    return normal;
}

std::vector<Edge> projectedEdges(const std::vector<Vector3<float>>& corners,
                                 const std::vector<std::size_t>& contourStarts, const Projection& projection)
{
    const auto project = [&](Vector3<float> v) { return Vector2<float>(v.*projection.across, v.*projection.up); };
    std::vector<Edge> edges;
    edges.reserve(corners.size());
    std::size_t start = 0;
    for (std::size_t contour = 0; contour <= contourStarts.size(); ++contour) {
        const std::size_t end = contour < contourStarts.size() ? contourStarts[contour] : corners.size();
        for (std::size_t i = start; i < end; ++i) {
            const Edge edge = {project(corners[i]), project(corners[i + 1 < end ? i + 1 : start]), end - start};
            if (edge.start != edge.end) { // repeated corners cost nothing, but would all overlap
                edges.push_back(edge);
            }
        }
        start = end;
    }
    return edges;
}

Box boxOf(const Edge& edge)
{
    return {{std::min(edge.start.x, edge.end.x), std::min(edge.start.y, edge.end.y)},
            {std::max(edge.start.x, edge.end.x), std::max(edge.start.y, edge.end.y)}};
}

Box united(const Box& a, const Box& b)
{
    return {{std::min(a.low.x, b.low.x), std::min(a.low.y, b.low.y)},
            {std::max(a.high.x, b.high.x), std::max(a.high.y, b.high.y)}};
}

bool overlap(const Box& a, const Box& b)
{
    return a.low.x <= b.high.x && b.low.x <= a.high.x && a.low.y <= b.high.y && b.low.y <= a.high.y;
}

// How many pairs of edges share an x.
std::uint64_t countPairs(const std::vector<Box>& boxes)
{
    std::vector<float> left;
    std::vector<float> right;
    for (const Box& box : boxes) {
        left.push_back(box.low.x);
        right.push_back(box.high.x);
    }
    std::sort(left.begin(), left.end());
    std::sort(right.begin(), right.end());
    std::uint64_t pairs = 0;
    std::size_t ended = 0;
    for (std::size_t begun = 0; begun < left.size(); ++begun) {
        while (right[ended] < left[begun]) {
            ++ended;
        }
        pairs += begun - ended;
    }
    return pairs;
}

// Counts the pairs of edges that cross, and adds up the work for those that meet in any way. Neighbours in the outline
// are neighbours in the plane, so a tree of boxes over the edges as they come finds the pairs that may.
class MeetingCounter
{
public:
    MeetingCounter(const std::vector<Edge>& edges, std::vector<Box> boxes) : mEdges(edges)
    {
        mLevels.push_back(std::move(boxes));
        while (mLevels.back().size() > 1) {
            const std::vector<Box>& below = mLevels.back();
            std::vector<Box> level;
            for (std::size_t i = 0; i < below.size(); i += 2) {
                level.push_back(i + 1 < below.size() ? united(below[i], below[i + 1]) : below[i]);
            }
            mLevels.push_back(std::move(level));
        }
    }

    void count() { countBetween(mLevels.size() - 1, 0, 0); }

    std::uint64_t crossings() const { return mCrossings; }

    /// Counting stops where it is.
    bool isOverLimit() const { return mCrossings > MaximumCrossings || mMeetingWork > MaximumMeetingWork; }

private:
    // Of the edges below two boxes of a level, or below one box among themselves.
    void countBetween(std::size_t level, std::size_t a, std::size_t b)
    {
        const std::vector<Box>& boxes = mLevels[level];
        if (isOverLimit() || b >= boxes.size() || !overlap(boxes[a], boxes[b])) {
            return;
        }
        if (level == 0) {
            if (a != b) {
                countPair(mEdges[a], mEdges[b]);
            }
            return;
        }
        countBetween(level - 1, 2 * a, 2 * b);
        countBetween(level - 1, 2 * a, 2 * b + 1);
        countBetween(level - 1, 2 * a + 1, 2 * b + 1);
        if (a != b) {
            countBetween(level - 1, 2 * a + 1, 2 * b);
        }
    }

    // Of two edges whose boxes overlap.
    void countPair(const Edge& a, const Edge& b)
    {
        const int sidesOfA = isLeft(a, b.start) * isLeft(a, b.end);
        const int sidesOfB = isLeft(b, a.start) * isLeft(b, a.end);
        mCrossings += sidesOfA < 0 && sidesOfB < 0 ? 1 : 0;
        const bool followEachOther = a.end == b.start || b.end == a.start;
        if (sidesOfA <= 0 && sidesOfB <= 0 && !followEachOther) {
            mMeetingWork += a.contourSize + b.contourSize + MeetingShare;
        }
    }

    // 1 to the left of the edge, -1 to the right, 0 on it.
    static int isLeft(const Edge& edge, Vector2<float> point)
    {
        const double x = edge.start.x;
        const double y = edge.start.y;
        const double side = (edge.end.x - x) * (point.y - y) - (edge.end.y - y) * (point.x - x);
        return (side > 0.0 ? 1 : 0) - (side < 0.0 ? 1 : 0);
    }

    const std::vector<Edge>& mEdges;
    std::vector<std::vector<Box>> mLevels; // the edges' own, then each time half as many
    std::uint64_t mCrossings = 0;
    std::uint64_t mMeetingWork = 0;
};

bool isTooComplex(const std::vector<Edge>& edges)
{
    if (edges.empty()) {
        return false;
    }
    std::vector<Box> boxes(edges.size());
    std::transform(edges.begin(), edges.end(), boxes.begin(), boxOf);
    const std::uint64_t count = edges.size();
    if (count * count / 2 > MaximumPairs && countPairs(boxes) > MaximumPairs) {
        return true;
    }
    MeetingCounter meetings(edges, boxes);
    meetings.count();
    if (meetings.isOverLimit() || meetings.crossings() * count <= MaximumCrossingWork) {
        return meetings.isOverLimit();
    }
    return meetings.crossings() * (countPairs(boxes) / count + 1) > MaximumCrossingWork;
}

} // namespace

bool isTooComplex(const std::vector<Vector3<float>>& corners, const std::vector<std::size_t>& contourStarts)
{
    if (corners.size() <= AlwaysSimple) {
        return false;
    }
    // The sweep looks along the axis that is nearest to the normal. Where corners do not lie in a plane, which one that
    // is depends on details: none may be too much for it.
    const Vector3<double> normal = normalOf(corners);
    const double smallestPart = SmallestPart * largestComponent(normal);
    return std::any_of(std::begin(Projections), std::end(Projections), [&](const Projection& projection) {
        return std::fabs(normal.*projection.depth) >= smallestPart &&
               isTooComplex(projectedEdges(corners, contourStarts, projection));
    });
}

} // namespace Tavik::OpenGL
