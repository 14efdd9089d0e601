#include <tavik/misc/Sleep.h>
#include <tavik/misc/Timer.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <iomanip>
#include <iostream>
#include <sstream>

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

    double ms = 0.0;
    ASSERT_EQ(std::sscanf(line.c_str(), "load : %lf ms\n", &ms), 1) << line;
    EXPECT_GE(ms, 19.9); // the wall clock may be slewed by a little meanwhile
    std::ostringstream expected;
    expected << "load : " << ms << " ms\n";
    EXPECT_EQ(line, expected.str());
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
    EXPECT_LT(elapsed(4295), 0.9); // 4295 ms are 32704 ns beyond 32 bits
}
