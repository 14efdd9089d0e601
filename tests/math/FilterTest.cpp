#include <tavik/math/Filter.h>

#include <gtest/gtest.h>

using namespace Tavik::Math;

TEST(Filter, Pt1)
{
    const struct
    {
        const char* name;
        double input, timeConstant, dt, state, expected;
    } cases[] = {
        {"a quarter of the way", 10.0, 1.5, 0.5, 2.0, 4.0},
        {"dt of a second", 10.0, 3.0, 1.0, 2.0, 4.0},
        {"dt of five seconds counts as one", 10.0, 3.0, 5.0, 2.0, 4.0},
        {"no lag", 10.0, 0.0, 0.1, 2.0, 10.0},
        {"no time passed", 10.0, 3.0, 0.0, 2.0, 2.0},
        {"neither lag nor time", 10.0, 0.0, 0.0, 2.0, 2.0},
    };
    for (const auto& c : cases) {
        double state = c.state;
        EXPECT_DOUBLE_EQ(Filter::pt1(c.input, c.timeConstant, c.dt, &state), c.expected) << c.name;
        EXPECT_DOUBLE_EQ(state, c.expected) << c.name;
    }
}
