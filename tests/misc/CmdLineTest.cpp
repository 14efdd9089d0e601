#include <tavik/misc/CmdLine.h>

#include <gtest/gtest.h>

#include <vector>

using Tavik::Misc::CmdLine;

namespace {

/// The command line is one for the whole process: each test adds its options anew.
class CmdLineTest : public testing::Test
{
protected:
    CmdLineTest()
    {
        mOptions.addSwitch("-v", "talk more");
        mOptions.addParameter("--size", "of the window", "800x600");
        mOptions.addParameter("--a-long-name", "sorts first", "");
    }

    /// @return what parse answered; what it printed is in mPrinted
    bool parse(std::vector<const char*> arguments)
    {
        testing::internal::CaptureStdout();
        const int count = static_cast<int>(arguments.size());
        arguments.push_back(nullptr);
        const bool result = mOptions.parse(count, const_cast<char**>(arguments.data()));
        mPrinted = testing::internal::GetCapturedStdout();
        return result;
    }

    std::string value(const std::string& name) const
    {
        std::string text = "unchanged";
        EXPECT_EQ(mOptions.getParameter(name, text), mOptions.getSwitch(name));
        return text;
    }

    CmdLine& mOptions = CmdLine::instance();
    std::string mPrinted;
};

} // namespace

TEST_F(CmdLineTest, TakesSwitchesAndParameters)
{
    const struct
    {
        std::vector<const char*> arguments;
        bool recognised;
        bool verbose;
        bool size;
        const char* verboseValue;
        const char* sizeValue;
        const char* printed;
    } cases[] = {
        {{"map"}, true, false, false, "false", "800x600", ""},
        {{"map", "-v", "--size", "1x1"}, true, true, true, "true", "1x1", ""},
        {{"map", "-v", "-v"}, true, true, false, "false", "800x600", ""},
        {{"map", "--size"}, true, false, true, "false", "800x600", ""},
        {{"map", "--size", "--size"}, true, false, true, "false", "--size", ""},
        {{"map", "--size", "-v"}, true, false, true, "false", "-v", ""},
        {{"map", "-V", "--siz", "-v", ""},
         false,
         true,
         false,
         "true",
         "800x600",
         "unknown option -V\nunknown option --siz\nunknown option \n"},
        {{"map", "--size", nullptr, "-x"}, true, false, true, "false", "800x600", ""},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(i);
        const auto& c = cases[i];
        mOptions.addSwitch("-v", "talk more"); // replaces the used one
        mOptions.addParameter("--size", "of the window", "800x600");
        EXPECT_EQ(parse(c.arguments), c.recognised);
        EXPECT_EQ(mPrinted, c.printed);
        EXPECT_EQ(mOptions.getSwitch("-v"), c.verbose);
        EXPECT_EQ(value("-v"), c.verboseValue);
        EXPECT_EQ(mOptions.getSwitch("--size"), c.size);
        EXPECT_EQ(value("--size"), c.sizeValue);
    }
    EXPECT_EQ(value("--unknown"), "unchanged");
}

TEST_F(CmdLineTest, ArgumentsMayBeMissing)
{
    char* none[] = {nullptr};
    EXPECT_TRUE(mOptions.parse(0, none));
    EXPECT_TRUE(mOptions.parse(1, none));
    EXPECT_TRUE(mOptions.parse(-5, none));
    EXPECT_TRUE(mOptions.parse(3, nullptr));
}

TEST_F(CmdLineTest, UsageListsOptionsByName)
{
    parse({"/bin/map", "--size", "1x1"});
    testing::internal::CaptureStdout();
    mOptions.printUsage();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Usage of /bin/map :\n"
                                                      "--a-long-name [sorts first] default []\n"
                                                      "--size   [of the window] default [1x1]\n"
                                                      "-v       talk more\n");
}
