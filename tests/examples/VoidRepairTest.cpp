#include <moving_map/VoidRepair.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace MovingMap;

TEST(VoidRepair, FillsHolesInMountainsAndLeavesTheSea)
{
    constexpr std::size_t Size = 60;
    struct Case
    {
        const char* name;
        float ground; // metres
        float hole;   // metres
        double row;   // of its middle
        double column;
        double radius;
        bool filled;
    };
    const float unknown = std::numeric_limits<float>::quiet_NaN();
    const Case cases[] = {
        {"void", 1500.0f, 0.0f, 30, 30, 9, true},
        {"void of DTED", 1500.0f, -1.0f, 30, 30, 9, true},
        {"wide void", 1500.0f, 0.0f, 30, 30, 28, true},
        {"void at the southern edge", 1500.0f, 0.0f, 0, 30, 9, true},
        {"void in a corner", 1500.0f, 0.0f, 59, 59, 9, true},
        {"sea below cliffs", 1500.0f, 0.0f, 30, 59, 30, false},
        {"lagoon", 60.0f, 0.0f, 30, 30, 9, false},
        {"lake", 1500.0f, 300.0f, 30, 30, 9, false},
        {"nothing but sea", 1500.0f, 0.0f, 30, 30, 90, false},
        {"sea beside no terrain", unknown, 0.0f, 30, 30, 9, false},
    };
    for (const Case& c : cases) {
        std::vector<float> heights;
        for (std::size_t i = 0; i < Size * Size; ++i) {
            const std::size_t row = i / Size;
            const double north = static_cast<double>(row) - c.row;
            const double east = static_cast<double>(i % Size) - c.column;
            const bool bridge = i % Size == 30; // one post between two holes
            heights.push_back(std::hypot(north, east) < c.radius && !bridge ? c.hole : c.ground);
        }
        const std::vector<float> before = heights;
        const std::vector<std::size_t> filled = repairVoids(heights, Size);
        EXPECT_EQ(filled.empty(), !c.filled) << c.name;
        for (std::size_t i = 0; i < heights.size(); ++i) {
            const float expected = c.filled ? c.ground : before[i];
            ASSERT_TRUE(heights[i] == expected || std::isnan(expected)) << c.name << " at " << i << ": " << heights[i];
        }
    }
}
