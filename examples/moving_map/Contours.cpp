#include <moving_map/Contours.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace MovingMap {

namespace {

using Point = Tavik::Math::Vector2<float>;

constexpr std::size_t Cells = HeightGrid::Nodes - 1;
constexpr std::size_t NoEdge = std::numeric_limits<std::size_t>::max();

// A closed line with fewer points than this is a bump of one or two cells, smaller than the eye can use.
constexpr std::size_t FewestPointsOfLoop = 8;

/// Cell edges are numbered: first the ones that run east, from node (column, row) to its eastern neighbour, then the
/// ones that run north.
constexpr std::size_t EastEdges = Cells * HeightGrid::Nodes;
constexpr std::size_t AllEdges = 2 * EastEdges;

constexpr std::size_t eastEdge(std::size_t column, std::size_t row)
{
    return row * Cells + column;
}

constexpr std::size_t northEdge(std::size_t column, std::size_t row)
{
    return EastEdges + row * HeightGrid::Nodes + column;
}

/// Follows the lines of one height at a time.
///
/// A line enters a cell through one edge and leaves it through another. Since the higher ground is always on its left,
/// each edge is left through by at most one cell and entered through by the one beyond, so that it is enough to
/// remember where the line goes on from each edge.
class Tracer
{
public:
    explicit Tracer(const HeightGrid& grid) : mGrid(grid), mNext(AllEdges, NoEdge), mEntered(AllEdges, 0) {}

    void trace(double heightMetres, std::vector<ContourLine>& lines)
    {
        mHeight = static_cast<float>(heightMetres);
        mStarts.clear();
        for (std::size_t row = 0; row < Cells; ++row) {
            for (std::size_t column = 0; column < Cells; ++column) {
                crossCell(column, row);
            }
        }
        // Open lines from their beginnings; what is left after that are loops, which may begin anywhere.
        for (const bool openOnly : {true, false}) {
            for (const std::size_t start : mStarts) {
                if (mNext[start] != NoEdge && (!openOnly || mEntered[start] == 0)) {
                    collect(start, heightMetres, lines);
                }
            }
        }
    }

private:
    /// Joins the edges of one cell that the line crosses.
    void crossCell(std::size_t column, std::size_t row)
    {
        const float southWest = mGrid.at(column, row);
        const float southEast = mGrid.at(column + 1, row);
        const float northEast = mGrid.at(column + 1, row + 1);
        const float northWest = mGrid.at(column, row + 1);
        if (!mGrid.isCovered(column, row)) {
            return;
        }
        const int corners = (southWest >= mHeight ? 1 : 0) | (southEast >= mHeight ? 2 : 0) |
                            (northEast >= mHeight ? 4 : 0) | (northWest >= mHeight ? 8 : 0);
        if (corners == 0 || corners == 15) {
            return;
        }
        const std::size_t south = eastEdge(column, row);
        const std::size_t north = eastEdge(column, row + 1);
        const std::size_t west = northEdge(column, row);
        const std::size_t east = northEdge(column + 1, row);
        // Two opposite corners above: the middle decides whether they are joined by high or divided by low ground.
        const bool highMiddle = 0.25f * (southWest + southEast + northEast + northWest) >= mHeight;
        switch (corners) {
        case 1:
            join(south, west);
            break;
        case 2:
            join(east, south);
            break;
        case 3:
            join(east, west);
            break;
        case 4:
            join(north, east);
            break;
        case 6:
            join(north, south);
            break;
        case 7:
            join(north, west);
            break;
        case 8:
            join(west, north);
            break;
        case 9:
            join(south, north);
            break;
        case 11:
            join(east, north);
            break;
        case 12:
            join(west, east);
            break;
        case 13:
            join(south, east);
            break;
        case 14:
            join(west, south);
            break;
        case 5:
            join(south, highMiddle ? east : west);
            join(north, highMiddle ? west : east);
            break;
        default: // 10
            join(west, highMiddle ? south : north);
            join(east, highMiddle ? north : south);
            break;
        }
    }

    void join(std::size_t from, std::size_t to)
    {
        mNext[from] = to;
        mEntered[to] = 1;
        mStarts.push_back(from);
    }

    /// Walks a line to its end and forgets it on the way, which leaves the tables clean for the next height.
    void collect(std::size_t start, double heightMetres, std::vector<ContourLine>& lines)
    {
        ContourLine line;
        line.heightMetres = heightMetres;
        std::size_t edge = start;
        do {
            line.points.push_back(crossing(edge));
            mEntered[edge] = 0;
            edge = std::exchange(mNext[edge], NoEdge);
        } while (mNext[edge] != NoEdge);
        line.points.push_back(crossing(edge));
        mEntered[edge] = 0;
        if (edge != start || line.points.size() > FewestPointsOfLoop) {
            lines.push_back(std::move(line));
        }
    }

    Point crossing(std::size_t edge) const
    {
        const bool runsEast = edge < EastEdges;
        const std::size_t inTable = runsEast ? edge : edge - EastEdges;
        const std::size_t width = runsEast ? Cells : HeightGrid::Nodes;
        const std::size_t column = inTable % width;
        const std::size_t row = inTable / width;
        const float first = mGrid.at(column, row);
        const float second = runsEast ? mGrid.at(column + 1, row) : mGrid.at(column, row + 1);
        const float part = (mHeight - first) / (second - first);
        const Point node(static_cast<float>(column), static_cast<float>(row));
        return runsEast ? Point(node.x + part, node.y) : Point(node.x, node.y + part);
    }

    const HeightGrid& mGrid;
    float mHeight = 0.0f;
    std::vector<std::size_t> mNext;   // where the line goes from an edge
    std::vector<char> mEntered;       // a line comes to the edge from another one
    std::vector<std::size_t> mStarts; // edges that lines go on from
};

} // namespace

std::vector<ContourLine> traceContours(const HeightGrid& grid, const std::vector<double>& heightsMetres)
{
    std::vector<ContourLine> lines;
    Tracer tracer(grid);
    for (const double height : heightsMetres) {
        tracer.trace(height, lines);
    }
    return lines;
}

std::vector<double> contourHeights(const HeightGrid& grid, double intervalMetres)
{
    float lowest = std::numeric_limits<float>::max();
    float highest = std::numeric_limits<float>::lowest();
    for (std::size_t row = 0; row < HeightGrid::Nodes; ++row) {
        for (std::size_t column = 0; column < HeightGrid::Nodes; ++column) {
            const float height = grid.at(column, row);
            if (!std::isnan(height)) {
                lowest = std::min(lowest, height);
                highest = std::max(highest, height);
            }
        }
    }
    std::vector<double> heights;
    if (lowest < CoastMetres && highest >= CoastMetres) {
        heights.push_back(CoastMetres);
    }
    if (lowest > highest) {
        return heights;
    }
    const int last = static_cast<int>(std::floor(highest / intervalMetres));
    for (int step = static_cast<int>(std::ceil(lowest / intervalMetres)); step <= last; ++step) {
        if (step != 0) {
            heights.push_back(step * intervalMetres);
        }
    }
    return heights;
}

} // namespace MovingMap
