#include <support/ErodedLandscape.h>

#include <tavik/math/Vector2.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <queue>
#include <utility>

namespace Tavik::Support {

namespace {

constexpr double Margin = 0.1; // of the region's edge: keeps the grid's border out of sight
constexpr double WidthMetres = 1.2 * 156000.0;
constexpr double HeightMetres = 1.2 * 222000.0;

constexpr std::size_t CoarsestSize = 81;
constexpr std::array<int, 4> StepsPerGrid = {60, 30, 16, 8};

// Erosion per year of a slope is Erodibility · sqrt(drained area) · slope. With the largest uplift of 1 mm a year this
// gives ridges of 3000 to 4000 m.
constexpr double Erodibility = 1.25e-6;
constexpr double LargestUplift = 1.0e-3;
constexpr double YearsPerStep = 2.5e5;

// Square metres: rain on a hillside above the first streams wears it down as if this much drained through it.
constexpr double HillsideArea = 2.0e6;

// Height at which rivers leave the grid where the land goes on beyond it.
constexpr double BorderMetres = 600.0;

constexpr double CoastBand = 50.0; // metres: ground that may have the sea within a cell of the finest grid

constexpr double SteepestSlope = 0.75; // rock does not stay on steeper slopes

struct Neighbour
{
    int column;
    int row;
};
constexpr std::array<Neighbour, 8> Neighbours = {
    {{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {1, 1}, {-1, 1}, {1, -1}, {-1, -1}}};

/// A number in [-1, 1] for each place, without any relation between neighbours.
double latticeValue(std::int64_t x, std::int64_t y)
{
    auto h = static_cast<std::uint64_t>(x) * 0x9E3779B97F4A7C15u ^ static_cast<std::uint64_t>(y) * 0xC2B2AE3D27D4EB4Fu;
    h ^= h >> 29;
    h *= 0xBF58476D1CE4E5B9u;
    h ^= h >> 32;
    h *= 0x94D049BB133111EBu;
    h ^= h >> 31;
    return static_cast<double>(h >> 11) * 0x1.0p-53 * 2.0 - 1.0;
}

/// Smooth noise in [-1, 1] with features of size 1.
double noise(double east, double north)
{
    // Turned, so that no ridge or coast follows the lattice along a parallel or meridian.
    const double x = 0.8 * east - 0.6 * north;
    const double y = 0.6 * east + 0.8 * north;
    const double cellX = std::floor(x);
    const double cellY = std::floor(y);
    const auto i = static_cast<std::int64_t>(cellX);
    const auto j = static_cast<std::int64_t>(cellY);
    const auto ease = [](double t) { return t * t * t * (t * (t * 6.0 - 15.0) + 10.0); };
    const double u = ease(x - cellX);
    const double v = ease(y - cellY);
    const double below = latticeValue(i, j) + u * (latticeValue(i + 1, j) - latticeValue(i, j));
    const double above = latticeValue(i, j + 1) + u * (latticeValue(i + 1, j + 1) - latticeValue(i, j + 1));
    return below + v * (above - below);
}

/// Sum of noise at doubling frequencies, each octave turned so that the lattices do not line up.
double layeredNoise(double x, double y, int octaves)
{
    double sum = 0.0;
    double amplitude = 1.0;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += amplitude * noise(x, y);
        amplitude *= 0.5;
        const double turned = 1.6 * x + 1.2 * y;
        y = 1.6 * y - 1.2 * x + 17.31;
        x = turned + 5.73;
    }
    return sum;
}

double smoothStep(double from, double to, double x)
{
    const double t = std::clamp((x - from) / (to - from), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

double bump(double x, double y, double centreX, double centreY, double radius)
{
    const double dx = (x - centreX) / radius;
    const double dy = (y - centreY) / radius;
    return std::exp(-(dx * dx + dy * dy));
}

/// How far inland a place lies: negative at sea, about 0.1 per tenth of the region beyond the coast.
double inland(double east, double north)
{
    const double bends = 0.11 * layeredNoise(4.1 * east + 3.0, 5.7 * north + 9.0, 6);
    const double coast = 0.27 - 0.07 * std::sin(5.2 * east + 0.4) + 0.06 * east;
    const double gulf = 0.24 * bump(east, north, 0.78, 0.31, 0.12);
    const double islands = 0.27 * bump(east, north, 0.36, 0.07, 0.06) + 0.25 * bump(east, north, 0.50, 0.12, 0.045) +
                           0.20 * bump(east, north, 0.13, 0.10, 0.035);
    return north - coast + bends - gulf + islands;
}

/// Rate at which the ground rises, in [0, 1]: an arc of mountains with a lower range before it.
double uplift(double east, double north)
{
    const double land = inland(east, north);
    const double warp = 0.07 * layeredNoise(4.0 * east + 40.0, 4.0 * north, 3);
    const double mainCrest = 0.84 - 0.42 * (east - 0.35) * (east - 0.35) - 0.16 * east + warp;
    const double foreCrest = mainCrest - 0.27 - 0.05 * std::sin(7.0 * east);
    const auto range = [north](double crest, double width) {
        const double d = (north - crest) / width;
        return std::exp(-d * d);
    };
    const double patches = 0.65 + 0.35 * noise(7.0 * east + 80.0, 9.0 * north);
    const double islands = bump(east, north, 0.36, 0.07, 0.06) + bump(east, north, 0.50, 0.12, 0.045);
    const double mountains = range(mainCrest, 0.19) + 0.5 * range(foreCrest, 0.08) + 0.6 * islands;
    return smoothStep(-0.02, 0.14, land) * (0.06 + mountains * patches);
}

/// One grid position in region coordinates.
double regionCoordinate(std::size_t index, std::size_t size)
{
    return static_cast<double>(index) / static_cast<double>(size - 1) * (1.0 + 2.0 * Margin) - Margin;
}

bool isBorder(std::size_t column, std::size_t row, std::size_t size)
{
    return column == 0 || row == 0 || column + 1 == size || row + 1 == size;
}

/// Positions of the nodes in metres, each moved at random within its cell: on a regular grid all valleys would run in
/// one of eight directions.
std::vector<Math::Vector2<double>> scatteredPlaces(std::size_t size)
{
    const double cellX = WidthMetres / static_cast<double>(size - 1);
    const double cellY = HeightMetres / static_cast<double>(size - 1);
    std::vector<Math::Vector2<double>> places;
    places.reserve(size * size);
    for (std::size_t row = 0; row < size; ++row) {
        for (std::size_t column = 0; column < size; ++column) {
            const auto x = static_cast<std::int64_t>(column);
            const auto y = static_cast<std::int64_t>(row + 3 * size);
            places.emplace_back((static_cast<double>(column) + 0.4 * latticeValue(x, y)) * cellX,
                                (static_cast<double>(row) + 0.4 * latticeValue(y, x)) * cellY);
        }
    }
    return places;
}

/// Where the water of every node runs, and the nodes in an order in which each comes after the one it drains into.
struct Drainage
{
    std::vector<std::size_t> order;
    std::vector<std::size_t> receiver;
    std::vector<double> distance;
};

class DrainageFinder
{
public:
    DrainageFinder(const std::vector<Math::Vector2<double>>& places, const std::vector<double>& heights,
                   const std::vector<char>& outlet)
        : mSize(static_cast<std::size_t>(std::lround(std::sqrt(static_cast<double>(places.size()))))), mPlaces(places),
          mHeights(heights), mOutlet(outlet), mFilled(heights.size(), -1.0)
    {}

    /// Floods the land from its outlets upwards, lowest shore first, so that every hollow finds its spill point.
    Drainage find()
    {
        Drainage drainage;
        drainage.order.reserve(mHeights.size());
        drainage.receiver.assign(mHeights.size(), 0);
        drainage.distance.assign(mHeights.size(), 1.0);
        flood(drainage.order);
        for (const std::size_t node : drainage.order) {
            findReceiver(node, drainage);
        }
        return drainage;
    }

    template <typename Visit>
    void forNeighbours(std::size_t node, Visit visit) const
    {
        const auto column = static_cast<int>(node % mSize);
        const auto row = static_cast<int>(node / mSize);
        const auto size = static_cast<int>(mSize);
        for (const Neighbour& step : Neighbours) {
            const int c = column + step.column;
            const int r = row + step.row;
            if (c >= 0 && r >= 0 && c < size && r < size) {
                visit(static_cast<std::size_t>(r) * mSize + static_cast<std::size_t>(c));
            }
        }
    }

private:
    void flood(std::vector<std::size_t>& order)
    {
        using Shore = std::pair<double, std::size_t>;
        std::priority_queue<Shore, std::vector<Shore>, std::greater<>> shores;
        for (std::size_t node = 0; node < mHeights.size(); ++node) {
            if (mOutlet[node] != 0) {
                mFilled[node] = mHeights[node];
                shores.emplace(mHeights[node], node);
            }
        }
        constexpr double Fall = 1e-4; // metres; lets water cross a filled hollow
        while (!shores.empty()) {
            const auto [level, node] = shores.top();
            shores.pop();
            order.push_back(node);
            forNeighbours(node, [&, level = level](std::size_t next) {
                if (mFilled[next] < 0.0) {
                    mFilled[next] = std::max(mHeights[next], level + Fall);
                    shores.emplace(mFilled[next], next);
                }
            });
        }
    }

    void findReceiver(std::size_t node, Drainage& drainage) const
    {
        drainage.receiver[node] = node;
        if (mOutlet[node] != 0) {
            return;
        }
        double steepest = 0.0;
        forNeighbours(node, [&](std::size_t next) {
            const double distance = (mPlaces[next] - mPlaces[node]).length();
            const double slope = (mFilled[node] - mFilled[next]) / distance;
            if (slope > steepest) {
                steepest = slope;
                drainage.receiver[node] = next;
                drainage.distance[node] = distance;
            }
        });
    }

    std::size_t mSize;
    const std::vector<Math::Vector2<double>>& mPlaces;
    const std::vector<double>& mHeights;
    const std::vector<char>& mOutlet;
    std::vector<double> mFilled;
};

/// Area in square metres that drains through each node.
std::vector<double> drainedArea(const Drainage& drainage, std::size_t size)
{
    const double cells = static_cast<double>(size - 1);
    std::vector<double> area(drainage.order.size(), WidthMetres / cells * (HeightMetres / cells));
    for (auto node = drainage.order.rbegin(); node != drainage.order.rend(); ++node) {
        if (drainage.receiver[*node] != *node) {
            area[drainage.receiver[*node]] += area[*node];
        }
    }
    return area;
}

/// Height after a step of erosion, solved for the end of the step, so that it may be long.
/// @param risen  height without erosion
/// @param below  height that the water runs to, at a distance
double worn(double risen, double below, double distance, double area)
{
    const double wear = Erodibility * std::sqrt(area + HillsideArea) * YearsPerStep / distance;
    const double height = (risen + wear * below) / (1.0 + wear);
    return std::min(std::max(height, below + 1e-3), below + SteepestSlope * distance);
}

struct Lake
{
    double lowest;  // metres: the dam lies where the largest river passes between these heights
    double highest; // metres
    double depth;   // metres
};

std::size_t findDam(const Lake& lake, const std::vector<double>& heights, const std::vector<double>& area,
                    const std::vector<char>& outlet)
{
    std::size_t dam = 0;
    double largest = 0.0;
    for (std::size_t node = 0; node < area.size(); ++node) {
        const bool fits = heights[node] > lake.lowest && heights[node] < lake.highest && outlet[node] == 0;
        if (fits && area[node] > largest) {
            largest = area[node];
            dam = node;
        }
    }
    return dam;
}

/// Weights of the four samples around a position for a curve without kinks (cubic B-spline).
std::array<double, 4> splineWeights(double t)
{
    const double s = 1.0 - t;
    return {s * s * s / 6.0, (3.0 * t * t * t - 6.0 * t * t + 4.0) / 6.0, (3.0 * s * s * s - 6.0 * s * s + 4.0) / 6.0,
            t * t * t / 6.0};
}

} // namespace

ErodedLandscape::ErodedLandscape()
{
    mGrid.size = CoarsestSize;
    mGrid.heights.assign(CoarsestSize * CoarsestSize, 0.0);
    for (std::size_t row = 0; row < mGrid.size; ++row) {
        for (std::size_t column = 0; column < mGrid.size; ++column) {
            const double east = regionCoordinate(column, mGrid.size);
            const double north = regionCoordinate(row, mGrid.size);
            mGrid.at(column, row) = 400.0 * uplift(east, north) * (1.2 + noise(40.0 * east, 40.0 * north));
        }
    }
    erode(mGrid, StepsPerGrid[0]);
    for (std::size_t level = 1; level < StepsPerGrid.size(); ++level) {
        mGrid = refine(mGrid);
        erode(mGrid, StepsPerGrid[level]);
    }
    fillLakes(mGrid);
}

ErodedLandscape::Grid ErodedLandscape::refine(const Grid& coarse)
{
    Grid fine;
    fine.size = coarse.size * 2 - 1;
    fine.heights.resize(fine.size * fine.size);
    for (std::size_t row = 0; row < fine.size; ++row) {
        for (std::size_t column = 0; column < fine.size; ++column) {
            const std::size_t left = column / 2;
            const std::size_t below = row / 2;
            const std::size_t right = left + column % 2;
            const std::size_t above = below + row % 2;
            const double mean = 0.25 * (coarse.at(left, below) + coarse.at(right, below) + coarse.at(left, above) +
                                        coarse.at(right, above));
            // A little roughness decides where the new small valleys begin.
            fine.at(column, row) = mean + 8.0 * latticeValue(static_cast<std::int64_t>(column),
                                                             static_cast<std::int64_t>(row + 7 * fine.size));
        }
    }
    return fine;
}

void ErodedLandscape::erode(Grid& grid, int steps)
{
    std::vector<char> outlet(grid.heights.size());
    std::vector<double> rise(grid.heights.size());
    for (std::size_t row = 0; row < grid.size; ++row) {
        for (std::size_t column = 0; column < grid.size; ++column) {
            const double east = regionCoordinate(column, grid.size);
            const double north = regionCoordinate(row, grid.size);
            const std::size_t node = row * grid.size + column;
            const double land = inland(east, north);
            outlet[node] = land <= 0.0 || isBorder(column, row, grid.size) ? 1 : 0;
            rise[node] = LargestUplift * uplift(east, north);
            grid.heights[node] = outlet[node] == 0 ? std::max(grid.heights[node], 0.1)
                                 : land <= 0.0     ? 0.0
                                                   : BorderMetres * smoothStep(0.0, 0.5, land);
        }
    }
    const std::vector<Math::Vector2<double>> places = scatteredPlaces(grid.size);
    for (int step = 0; step < steps; ++step) {
        const Drainage drainage = DrainageFinder(places, grid.heights, outlet).find();
        const std::vector<double> area = drainedArea(drainage, grid.size);
        for (const std::size_t node : drainage.order) {
            if (outlet[node] == 0) {
                const double below = grid.heights[drainage.receiver[node]];
                const double risen = grid.heights[node] + rise[node] * YearsPerStep;
                grid.heights[node] = worn(risen, below, drainage.distance[node], area[node]);
            }
        }
    }
}

void ErodedLandscape::fillLakes(Grid& grid)
{
    constexpr std::array<Lake, 3> Lakes = {{{150.0, 230.0, 70.0}, {420.0, 520.0, 90.0}, {900.0, 1000.0, 110.0}}};

    std::vector<char> outlet(grid.heights.size());
    for (std::size_t row = 0; row < grid.size; ++row) {
        for (std::size_t column = 0; column < grid.size; ++column) {
            const bool sea = grid.at(column, row) <= 0.0;
            outlet[row * grid.size + column] = sea || isBorder(column, row, grid.size) ? 1 : 0;
        }
    }
    const Drainage drainage = DrainageFinder(scatteredPlaces(grid.size), grid.heights, outlet).find();
    const std::vector<double> area = drainedArea(drainage, grid.size);
    for (const Lake& lake : Lakes) {
        const std::size_t dam = findDam(lake, grid.heights, area, outlet);
        const double level = std::round(grid.heights[dam] + lake.depth);
        std::vector<char> wet(area.size(), 0);
        for (const std::size_t node : drainage.order) {
            if (node == dam || (wet[drainage.receiver[node]] != 0 && grid.heights[node] < level)) {
                wet[node] = 1;
                grid.heights[node] = level;
            }
        }
    }
}

double ErodedLandscape::height(double east, double north) const
{
    const double cells = static_cast<double>(mGrid.size - 1);
    const double bendX = 1.2 * layeredNoise(70.0 * east, 100.0 * north, 2);
    const double bendY = 1.2 * layeredNoise(70.0 * east + 500.0, 100.0 * north, 2);
    const double x = std::clamp((east + Margin) / (1.0 + 2.0 * Margin) * cells + bendX, 1.0, cells - 2.001);
    const double y = std::clamp((north + Margin) / (1.0 + 2.0 * Margin) * cells + bendY, 1.0, cells - 2.001);
    const auto column = static_cast<std::size_t>(x);
    const auto row = static_cast<std::size_t>(y);
    const std::array<double, 4> weightsX = splineWeights(x - static_cast<double>(column));
    const std::array<double, 4> weightsY = splineWeights(y - static_cast<double>(row));
    double sum = 0.0;
    double lowest = std::numeric_limits<double>::max();
    double highest = 0.0;
    for (std::size_t j = 0; j < 4; ++j) {
        for (std::size_t i = 0; i < 4; ++i) {
            const double h = mGrid.at(column + i - 1, row + j - 1);
            sum += weightsX[i] * weightsY[j] * h;
            lowest = std::min(lowest, h);
            highest = std::max(highest, h);
        }
    }
    if (highest <= 0.0) {
        return 0.0;
    }
    // Gullies and crags: as rough as the ground is steep, none on lakes and plains.
    const double relief = std::min(highest - lowest, 900.0);
    const double crags = layeredNoise(600.0 * east, 850.0 * north, 3);
    const double h = sum + 0.06 * relief * crags;
    const bool mayBeSea = lowest < CoastBand;
    return h < 0.5 || (mayBeSea && inland(east, north) <= 0.0) ? 0.0 : h;
}

} // namespace Tavik::Support
