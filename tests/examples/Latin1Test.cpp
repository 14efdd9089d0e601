#include <moving_map/Latin1.h>

#include <gtest/gtest.h>

TEST(Latin1, TakesUtf8AndLatin1)
{
    struct Case
    {
        const char* name;
        const char* text;
        const char* latin1;
    };
    for (const Case& c : {Case{"plain", "GULF-TMA 20 NM", "GULF-TMA 20 NM"},
                          Case{"two bytes", "Gen\xC3\xA8ve \xC2\xB0", "Gen\xE8ve \xB0"},
                          Case{"already Latin-1", "348\xB0 Gen\xE8ve", "348\xB0 Gen\xE8ve"},
                          Case{"three and four bytes", "\xE2\x82\xAC \xF0\x9F\x9B\xA9.", "? ?."},
                          Case{"not in Latin-1", "\xC4\x8Cista", "?ista"}, Case{"cut short", "A\xC3", "A\xC3"},
                          Case{"cut short in the middle", "\xE2\x82Z", "\xE2\x82Z"}}) {
        EXPECT_EQ(MovingMap::toLatin1(c.text), c.latin1) << c.name;
    }
}
