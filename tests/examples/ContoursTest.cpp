#include <moving_map/Contours.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

using namespace MovingMap;

namespace {

constexpr float Unknown = std::numeric_limits<float>::quiet_NaN();
constexpr float Middle = 0.5f * BlockKey::Cells;

HeightGrid gridOf(const std::function<float(float x, float y)>& height)
{
    std::vector<float> heights;
    for (std::size_t row = 0; row < HeightGrid::Nodes; ++row) {
        for (std::size_t column = 0; column < HeightGrid::Nodes; ++column) {
            heights.push_back(height(static_cast<float>(column), static_cast<float>(row)));
        }
    }
    return HeightGrid(heights);
}

float distanceFromMiddle(float x, float y)
{
    return std::hypot(x - Middle, y - Middle);
}

bool isClosed(const ContourLine& line)
{
    return line.points.front() == line.points.back();
}

/// Positive when the line runs counter-clockwise.
double signedArea(const ContourLine& line)
{
    double sum = 0.0;
    for (std::size_t i = 1; i < line.points.size(); ++i) {
        sum += 0.5 * line.points[i - 1].cross(line.points[i]);
    }
    return sum;
}

} // namespace

TEST(Contours, ConeHasOneRingForEachHeightAndItsInsideIsToTheLeftOfAPeak)
{
    for (const float sign : {1.0f, -1.0f}) { // a peak, a pit
        const HeightGrid cone =
            gridOf([&](float x, float y) { return sign * (300.0f - 10.0f * distanceFromMiddle(x, y)); });
        const std::vector<double> heights = {sign * 50.0, sign * 100.0, sign * 200.0};
        const std::vector<ContourLine> lines = traceContours(cone, heights);
        ASSERT_EQ(lines.size(), heights.size());
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const double radius = 30.0 - std::abs(heights[i]) / 10.0;
            EXPECT_TRUE(isClosed(lines[i])) << "height " << heights[i];
            EXPECT_NEAR(signedArea(lines[i]), sign * 3.14159 * radius * radius, 3.0) << "height " << heights[i];
            for (const auto& point : lines[i].points) {
                EXPECT_NEAR(distanceFromMiddle(point.x, point.y), radius, 0.05) << "height " << heights[i];
            }
        }
    }
}

TEST(Contours, SlopeHasOneLineFromEdgeToEdge)
{
    const HeightGrid slope = gridOf([](float x, float) { return 10.0f * x; });
    const std::vector<ContourLine> lines = traceContours(slope, {105.0});
    ASSERT_EQ(lines.size(), 1u);
    ASSERT_EQ(lines[0].points.size(), HeightGrid::Nodes);
    EXPECT_EQ(lines[0].points.front(),
              Tavik::Math::Vector2<float>(10.5f, 75.0f)); // high ground in the east: southwards
    EXPECT_EQ(lines[0].points.back(), Tavik::Math::Vector2<float>(10.5f, 0.0f));
}

TEST(Contours, MiddleOfASaddleDecidesWhichCornersAreJoined)
{
    // High ground in the south-west and north-east, low ground in the other quarters; they meet in one cell.
    for (const float low : {-50.0f, 20.0f}) {
        const HeightGrid saddle = gridOf([&](float x, float y) { return (x < Middle) == (y < Middle) ? 200.0f : low; });
        const std::vector<ContourLine> lines = traceContours(saddle, {100.0});
        ASSERT_EQ(lines.size(), 2u);
        for (const ContourLine& line : lines) {
            // A line around a quarter in the south-west or north-east joins the block's edges that meet there.
            const auto sum = line.points.front() + line.points.back();
            const bool aroundHigh = (sum.x < BlockKey::Cells) == (sum.y < BlockKey::Cells);
            EXPECT_EQ(aroundHigh, low < 0.0f) << "low ground at " << low;
        }
    }
}

TEST(Contours, LevelGroundAndUnknownGroundHaveNoLines)
{
    const HeightGrid sea = gridOf([](float, float) { return 0.0f; });
    EXPECT_TRUE(contourHeights(sea, 50.0).empty());
    EXPECT_TRUE(traceContours(sea, {0.0, CoastMetres}).empty());
    EXPECT_TRUE(contourHeights(gridOf([](float, float) { return Unknown; }), 50.0).empty());

    const HeightGrid half = gridOf([](float x, float y) { return x < 40.0f ? 10.0f * y : Unknown; });
    const std::vector<ContourLine> lines = traceContours(half, {55.0, 205.0});
    ASSERT_EQ(lines.size(), 2u);
    for (const ContourLine& line : lines) {
        for (const auto& point : line.points) {
            EXPECT_LE(point.x, 39.0f);
        }
    }
}

TEST(Contours, BumpOfOneNodeIsLeftOut)
{
    const HeightGrid bump = gridOf([](float x, float y) { return x == 20.0f && y == 30.0f ? 100.0f : 0.0f; });
    EXPECT_TRUE(traceContours(bump, {50.0}).empty());
}

TEST(Contours, HeightsAreMultiplesAndTheCoast)
{
    struct Case
    {
        const char* name;
        float lowest;
        float highest;
        std::vector<double> heights;
    };
    const Case cases[] = {
        {"coast", 0.0f, 120.0f, {CoastMetres, 50.0, 100.0}},
        {"inland", 40.0f, 110.0f, {50.0, 100.0}},
        {"below the sea", -120.0f, -60.0f, {-100.0}},
        {"polder", -60.0f, 20.0f, {CoastMetres, -50.0}},
        {"plain", 2.0f, 30.0f, {}},
        {"uneven sea", -3.0f, 0.5f, {}},
    };
    for (const Case& c : cases) {
        const HeightGrid grid =
            gridOf([&](float x, float) { return c.lowest + x / BlockKey::Cells * (c.highest - c.lowest); });
        EXPECT_EQ(contourHeights(grid, 50.0), c.heights) << c.name;
    }
}
