#include <tavik/misc/StringFields.h>

#include <gtest/gtest.h>

#include <climits>

using namespace Tavik::Misc;

TEST(StringFields, CountsSeparators)
{
    const struct
    {
        const char* text;
        const char* delimiters;
        int expected;
    } cases[] =
        {
            {"a,b,c", ",", 2},    {"a,,b", ",", 2}, {"", ",", 0},       {"a,b", "", 0},
            {"a, b, c", ", ", 2}, {"a,", ",", 1},   {",", ",", 1},      {"a,", ", ", 1},
            {"a,,,b", ", ", 2},   {"abc", ",", 0},  {"a b,c", ", ", 2}, // either character separates, and takes the
                                                                        // next one along
        };
    for (const auto& c : cases) {
        EXPECT_EQ(StringCount(c.text, c.delimiters), c.expected) << c.text << " | " << c.delimiters;
    }
}

// In "a b,c" the space takes the b along; in "a," the separator reaches beyond the end.
TEST(StringFields, ExtractsSections)
{
    const struct
    {
        const char* text;
        const char* delimiters;
        int first;
        int last;
        const char* expected;
    } cases[] = {{"a,b,c", ",", 0, 2, "a,b,c"},
                 {"a,b,c", ",", 1, 9, "b,c"},
                 {"a,b,c", ",", -1, -1, "c"},
                 {"a,b,c", ",", -2, -1, "b,c"},
                 {"a,b,c", ",", -9, 0, "a"},
                 {"a,b,c", ",", 3, 3, ""},
                 {"a,b,c", ",", 2, 0, "c"},
                 {"a,b,c", ",", 1, -9, "b"},
                 {"a,b,c", ",", INT_MIN, INT_MAX, "a,b,c"},
                 {"a,b,c", ",", INT_MAX, INT_MIN, ""},
                 {"a,,c,", ",", 1, 3, ",c,"},
                 {"a b,c", ", ", 0, 1, "a, "},
                 {"a,", ", ", 0, -1, "a, "},
                 {"", ",", 0, 0, ""},
                 {"a,b", "", -1, -1, "a,b"},
                 {"/data/N47E011.DT1", "/", -1, -1, "N47E011.DT1"}};
    for (const auto& c : cases) {
        EXPECT_EQ(StringSection(c.text, c.delimiters, c.first, c.last), c.expected)
            << c.text << " | " << c.delimiters << " | " << c.first << " .. " << c.last;
    }
}
