#include <tavik/misc/CmdLine.h>

#include <gtest/gtest.h>

#include <vector>

using Tavik::Misc::CmdLine;

// The command line is one for the whole process: each case adds its options anew, and so resets them.
TEST(CmdLine, TakesSwitchesAndParameters)
{
    using Arguments = std::vector<const char*>;
    const struct
    {
        Arguments arguments;
        bool verbose;
        bool size;
        const char* verboseValue;
        const char* sizeValue;
        const char* printed; // nothing where all is recognised
    } cases[] = {
        {{}, false, false, "false", "800x600", ""},
        {{"map"}, false, false, "false", "800x600", ""},
        {{"map", "-v", "--size", "1x1"}, true, true, "true", "1x1", ""},
        {{"map", "-v", "-v"}, true, false, "false", "800x600", ""},
        {{"map", "--size"}, false, true, "false", "800x600", ""},
        {{"map", "--size", "--size"}, false, true, "false", "--size", ""},
        {{"map", "-V", "-v", ""}, true, false, "true", "800x600", "unknown option -V\nunknown option \n"},
        {{"map", "--size", nullptr, "-x"}, false, true, "false", "800x600", ""},
    };
    CmdLine& options = CmdLine::instance();
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        options.addSwitch("-v", "talk more");
        options.addParameter("--size", "of the window", "800x600");
        testing::internal::CaptureStdout();
        const bool recognised =
            options.parse(static_cast<int>(c.arguments.size()), const_cast<char**>(c.arguments.data()));
        const std::string printed = testing::internal::GetCapturedStdout();
        EXPECT_EQ(printed, c.printed);
        EXPECT_EQ(recognised, printed.empty());
        std::string value;
        EXPECT_EQ(options.getSwitch("-v"), c.verbose);
        EXPECT_EQ(options.getParameter("-v", value), c.verbose);
        EXPECT_EQ(value, c.verboseValue);
        EXPECT_EQ(options.getParameter("--size", value), c.size);
        EXPECT_EQ(value, c.sizeValue);
        EXPECT_FALSE(options.getParameter("--unknown", value));
        EXPECT_EQ(value, c.sizeValue);
    }
    EXPECT_TRUE(options.parse(-5, nullptr));
}

TEST(CmdLine, UsageListsOptionsByName)
{
    CmdLine& options = CmdLine::instance();
    options.addSwitch("-v", "talk more");
    options.addParameter("--size", "of the window", "800x600");
    options.addParameter("--a-long-name", "sorts first", "");
    const char* arguments[] = {"/bin/map", "--size", "1x1"};
    options.parse(3, const_cast<char**>(arguments));
    testing::internal::CaptureStdout();
    options.printUsage();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Usage of /bin/map :\n"
                                                      "--a-long-name [sorts first] default []\n"
                                                      "--size   [of the window] default [1x1]\n"
                                                      "-v       talk more\n");
}
