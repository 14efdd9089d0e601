#include <tavik/opengl/OutlineComplexity.h>

#include <tavik/math/Vector2.h>

#include <algorithm>
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

struct Edge
{
    Vector2<float> start;
    Vector2<float> end;
};

struct Box
{
    Vector2<float> low;
    Vector2<float> high;
};

using Projection = Vector2<float> (*)(Vector3<float>);

// The sweep goes along the first coordinate.
constexpr Projection Projections[] = {
    [](Vector3<float> v) { return Vector2<float>(v.x, v.y); },
    [](Vector3<float> v) { return Vector2<float>(v.y, v.z); },
    [](Vector3<float> v) { return Vector2<float>(v.z, v.x); },
};

std::vector<Edge> projectedEdges(const std::vector<Vector3<float>>& corners,
                                 const std::vector<std::size_t>& contourStarts, Projection project)
{
    std::vector<Edge> edges;
    edges.reserve(corners.size());
    std::size_t start = 0;
    for (std::size_t contour = 0; contour <= contourStarts.size(); ++contour) {
        const std::size_t end = contour < contourStarts.size() ? contourStarts[contour] : corners.size();
        for (std::size_t i = start; i < end; ++i) {
            const Edge edge = {project(corners[i]), project(corners[i + 1 < end ? i + 1 : start])};
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

// Counts the pairs of edges that cross. Neighbours in the outline are neighbours in the plane, so a tree of boxes over
// the edges as they come finds the pairs that may.
class CrossingCounter
{
public:
    CrossingCounter(const std::vector<Edge>& edges, std::vector<Box> boxes) : mEdges(edges)
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

    // Stops soon after the limit.
    std::uint64_t count(std::uint64_t limit)
    {
        mLimit = limit;
        mCount = 0;
        countBetween(mLevels.size() - 1, 0, 0);
        return mCount;
    }

private:
    // Of the edges below two boxes of a level, or below one box among themselves.
    void countBetween(std::size_t level, std::size_t a, std::size_t b)
    {
        const std::vector<Box>& boxes = mLevels[level];
        if (mCount > mLimit || b >= boxes.size() || !overlap(boxes[a], boxes[b])) {
            return;
        }
        if (level == 0) {
            mCount += cross(mEdges[a], mEdges[b]) ? 1 : 0;
            return;
        }
        countBetween(level - 1, 2 * a, 2 * b);
        countBetween(level - 1, 2 * a, 2 * b + 1);
        countBetween(level - 1, 2 * a + 1, 2 * b + 1);
        if (a != b) {
            countBetween(level - 1, 2 * a + 1, 2 * b);
        }
    }

    static bool cross(const Edge& a, const Edge& b)
    {
        return isLeft(a, b.start) * isLeft(a, b.end) < 0 && isLeft(b, a.start) * isLeft(b, a.end) < 0;
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
    std::uint64_t mLimit = 0;
    std::uint64_t mCount = 0;
};

bool isTooComplex(const std::vector<Edge>& edges)
{
    if (edges.empty()) {
        return false;
    }
    std::vector<Box> boxes(edges.size());
    std::transform(edges.begin(), edges.end(), boxes.begin(), boxOf);
    Box all = boxes.front();
    for (const Box& box : boxes) {
        all = united(all, box);
    }
    if (all.low.x == all.high.x || all.low.y == all.high.y) {
        return false; // seen from the side; the sweep does not look from there
    }
    const std::uint64_t count = edges.size();
    if (count * count / 2 > MaximumPairs && countPairs(boxes) > MaximumPairs) {
        return true;
    }
    const std::uint64_t crossings = CrossingCounter(edges, boxes).count(MaximumCrossings);
    if (crossings > MaximumCrossings || crossings * count <= MaximumCrossingWork) {
        return crossings > MaximumCrossings;
    }
    return crossings * (countPairs(boxes) / count + 1) > MaximumCrossingWork;
}

} // namespace

bool isTooComplex(const std::vector<Vector3<float>>& corners, const std::vector<std::size_t>& contourStarts)
{
    // Which way the sweep looks at corners in space depends on the plane that they are nearest to: none may be too
    // much for it.
    return corners.size() > AlwaysSimple &&
           std::any_of(std::begin(Projections), std::end(Projections), [&](Projection project) {
               return isTooComplex(projectedEdges(corners, contourStarts, project));
           });
}

} // namespace Tavik::OpenGL
