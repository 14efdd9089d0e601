#include <tavik/misc/Sleep.h>
#include <tavik/misc/Timer.h>

#include <gtest/gtest.h>

#include <iomanip>
#include <iostream>
#include <string>

using namespace Tavik::Misc;

TEST(Timer, PrintsMillisecondsInDefaultFormatting)
{
    const std::ios_base::fmtflags flags = std::cout.flags();
    testing::internal::CaptureStdout();
    {
        const Timer timer("load");
        sleepMs(20);
        std::cout << std::hexfloat << std::showpos << std::setfill('*') << std::setw(40);
    }
    const std::string line = testing::internal::GetCapturedStdout();
    std::cout.flags(flags);
    std::cout << std::setw(0) << std::setfill(' ');

    const std::string start = "load : ";
    ASSERT_EQ(line.substr(0, start.size()), start);
    std::size_t digits = 0;
    const std::string rest = line.substr(start.size());
    EXPECT_GE(std::stod(rest, &digits), 19.9); // the wall clock may be slewed by a little meanwhile
    EXPECT_LE(digits, 7u) << line;             // six digits and the point
    EXPECT_EQ(rest.substr(digits), " ms\n");
}

// No upper bounds but generous ones: a busy machine may wake a thread late.
TEST(Sleep, WorksBelowASecondOnly)
{
    const auto elapsed = [](unsigned int ms) {
        const double start = Timer::getTime();
        sleepMs(ms);
        return Timer::getTime() - start;
    };
    EXPECT_GE(elapsed(999), 0.99);
    EXPECT_LT(elapsed(1000), 0.9);
    EXPECT_LT(elapsed(4294), 0.9); // the largest request that the system refuses
    EXPECT_LT(elapsed(4295), 0.9); // 4295 ms are 32704 ns beyond 32 bits
}
