#include <support/TemporaryDirectory.h>
#include <tavik/misc/Property.h>
#include <tavik/xml/XmlDocument.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <vector>

using Tavik::Misc::Property;

namespace {

// The store is one for the process: each test has a group of its own, and takes other tests' keys as they come.
class PropertyTest : public testing::Test
{
protected:
    /// Reads a text as a file, and tells what that printed.
    std::string read(const std::string& content)
    {
        std::ofstream(path, std::ios::binary) << content;
        testing::internal::CaptureStdout();
        good = properties.setConfigFile(path);
        return testing::internal::GetCapturedStdout();
    }

    std::string written()
    {
        EXPECT_TRUE(properties.writeXmlFile(path));
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    Property& properties = Property::instance();
    const Tavik::Support::TemporaryDirectory directory;
    const std::string path = directory.path() + "/properties.xml";
    bool good = false;
};

TEST_F(PropertyTest, ReadsGroupsAndProperties)
{
    EXPECT_EQ(read("<any><Property key='reading' value='1'/><reading><sub>text<Property value='2' key='name'/>"
                   "<!-- c --></sub><empty/><Property key='name' value='3'><no><Property key='x' value='y'/></no>"
                   "</Property><Property key='bare'/></reading><reading><sub><Property key='name' value='4'/></sub>"
                   "</reading></any>"),
              "Property <reading> <1>\nProperty <reading.sub.name> <2>\nProperty <reading.name> <3>\n"
              "Property <reading.bare> <>\nProperty <reading.sub.name> <4>\n");
    EXPECT_TRUE(good);
    EXPECT_EQ(properties.getInt("reading.sub.name", 0), 4);
    EXPECT_EQ(properties.getString("reading.bare", "absent"), "");
    EXPECT_EQ(properties.getString("reading.no.x", "absent"), "absent");

    Tavik::XML::XmlDocument document;
    document.read(path);
    EXPECT_TRUE(properties.readElement(document.root().firstElement(), "prefix."));
    EXPECT_EQ(properties.getInt("prefix.reading", 0), 1);
    EXPECT_FALSE(properties.readElement(Tavik::XML::XmlElement(), ""));
}

TEST_F(PropertyTest, TellsFailuresAndKeepsTheStore)
{
    properties.setString("failing.key", "kept");
    EXPECT_EQ(read("<r><failing><Property key='key' value='lost'/></r>"),
              "Error reading <" + path + "> :\nRow 1 Col 47 Error Error reading end tag.\nError reading XML file <" +
                  path + ">!\n");
    EXPECT_FALSE(good);
    EXPECT_EQ(properties.getString("failing.key", ""), "kept");
    testing::internal::CaptureStdout();
    EXPECT_FALSE(properties.writeXmlFile("/dev/full"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Error writing property file </dev/full>!\n");
}

TEST_F(PropertyTest, ParsesTexts)
{
    const struct
    {
        const char* text;
        double number;
        int integer;
        bool isTrue;
    } cases[] = {{"12", 12.0, 12, false},      {"0x10", 16.0, 0, false},  {" +7.5kt", 7.5, 7, false},
                 {"-3.25e2", -325, -3, false}, {"007", 7.0, 7, false},    {"4294967297", 4294967297.0, 1, false},
                 {"TRUE", 0.0, 0, true},       {"True", 0.0, 0, true},    {"true", 0.0, 0, true},
                 {"tRUE", 0.0, 0, false},      {"yes", 0.0, 0, false},    {"1", 1.0, 1, false},
                 {"", 0.0, 0, false},          {"1e-400", 0.0, 1, false}, {"- 5", 0.0, 0, false}};
    for (const auto& c : cases) {
        properties.setString("parsing", c.text);
        EXPECT_EQ(properties.getString("parsing", "default"), c.text);
        EXPECT_EQ(properties.getInt("parsing", 99), c.integer) << c.text;
        EXPECT_EQ(properties.getDouble("parsing", 99.0), c.number) << c.text;
        EXPECT_EQ(properties.getSwitch("parsing", !c.isTrue), c.isTrue) << c.text;
    }
}

TEST_F(PropertyTest, FormatsValuesAndStoresNoDefaults)
{
    properties.setDouble("formats.third", 1.0 / 3.0);
    properties.setDouble("formats.large", 1234567.0);
    properties.setInt("formats.int", -2147483647 - 1);
    properties.setSwitch("formats.on", true);
    properties.setSwitch("formats.off", false);
    EXPECT_EQ(properties.getString("formats.third", ""), "0.333333");
    EXPECT_EQ(properties.getString("formats.large", ""), "1.23457e+06");
    EXPECT_EQ(properties.getString("formats.int", ""), "-2147483648");
    EXPECT_EQ(properties.getString("formats.on", "") + properties.getString("formats.off", ""), "truefalse");
    EXPECT_EQ(properties.getString("formats.absent", "default"), "default");
    EXPECT_EQ(properties.getInt("formats.absent", 3) + properties.getDouble("formats.absent", 0.5), 3.5);
    EXPECT_TRUE(properties.getSwitch("formats.absent", true));
    EXPECT_EQ(written().find("absent"), std::string::npos);
}

TEST_F(PropertyTest, WritesGroups)
{
    for (const char* key : {"writing", "writing.b.c", "writing.a", "writing-b.x", "writing.b.a"}) {
        properties.setString(key, "&v");
    }
    EXPECT_NE(written().find("    <writing-b>\n"
                             "        <Property key=\"x\" value=\"&amp;v\" />\n"
                             "    </writing-b>\n"
                             "    <writing>\n"
                             "        <Property key=\"a\" value=\"&amp;v\" />\n"
                             "        <b>\n"
                             "            <Property key=\"a\" value=\"&amp;v\" />\n"
                             "            <Property key=\"c\" value=\"&amp;v\" />\n"
                             "        </b>\n"
                             "    </writing>\n"),
              std::string::npos);
}

TEST_F(PropertyTest, AnyBytesSurviveARoundTrip)
{
    std::string everyByte; // 255 of them, which is all that is read again
    for (int byte = 0; byte < 255; ++byte) {
        everyByte += static_cast<char>(byte);
    }
    const std::string longGroups = std::string(300, 'g') + "." + std::string(300, 'h');
    std::string manyGroups;
    for (int i = 0; i < 1100; ++i) {
        manyGroups += "g.";
    }
    const std::vector<std::string> texts = {"",
                                            ".",
                                            "..",
                                            ".a",
                                            "a.",
                                            "a..b",
                                            "Property",
                                            "Property.a",
                                            "a.Property",
                                            "a.Property.b",
                                            "12 x<y.b",
                                            "a.1.b",
                                            "x:y.z",
                                            "h\xC3\xB6he.\xE2\x82\xAC",
                                            "\xE2\x82\xAC.a",
                                            "a.\xEF\xBB\xBF-b.c",
                                            "tab\tline\nreturn\r.x",
                                            " blank . s ",
                                            "quote\"'.x",
                                            "&#x41;&amp;<>",
                                            "%41",
                                            "\x01.%41",
                                            "latin \xE4.x",
                                            "\xED\xA0\x80.x",
                                            "\xEF\xBF\xBF",
                                            "\x7F.x",
                                            "\xF0\x9F\x9B\xA9.x",
                                            std::string("nul\0.x", 6),
                                            everyByte,
                                            longGroups + ".x",
                                            manyGroups + "x",
                                            "xml.a",
                                            "percent",
                                            "-a.b",
                                            "a.-b.c"};
    for (const std::string& text : texts) {
        properties.setString(text, "v" + text.substr(0, 254));
    }
    const std::string file = written();
    for (const std::string& text : texts) {
        properties.setString(text, "lost");
    }
    read(file);
    EXPECT_TRUE(good);
    for (const std::string& text : texts) {
        EXPECT_EQ(properties.getString(text, "absent"), "v" + text.substr(0, 254)) << text;
    }
    EXPECT_EQ(written(), file) << "keys have changed";
    EXPECT_NE(file.find("\n    <Property key=\"Property.a\" value=\"vProperty.a\" />\n"), std::string::npos);
    EXPECT_NE(file.find("<Property key=\"%01.%2541\" value=\"v%01.%2541\" encoding=\"percent\" />"), std::string::npos);
    EXPECT_NE(file.find("<h\xC3\xB6he>"), std::string::npos);

    if (std::system("xmllint --version 2>/dev/null") != 0) {
        GTEST_SKIP() << "no xmllint to read what is written";
    }
    EXPECT_EQ(std::system(("xmllint --huge --noout '" + path + "'").c_str()), 0);
}

TEST_F(PropertyTest, CutsWhatIsReadTo255Bytes)
{
    properties.setString("cut", std::string(300, 'v'));
    properties.setString("cut." + std::string(300, 'k'), "\x01" + std::string(300, '\x02'));
    EXPECT_EQ(properties.getString("cut", "").size(), 300u);
    read(written());
    EXPECT_EQ(properties.getString("cut", ""), std::string(255, 'v'));
    EXPECT_EQ(properties.getString("cut." + std::string(255, 'k'), ""), "\x01" + std::string(254, '\x02'));
}

TEST_F(PropertyTest, StripsBothEnds)
{
    const struct
    {
        const char* text;
        const char* characters;
        const char* expected;
    } cases[] = {{" \ta b\t ", " \t", "a b"}, {"aaa", "a", ""}, {"", "a", ""}, {"abc", "", "abc"}, {"xay", "xyz", "a"}};
    for (const auto& c : cases) {
        std::string text = c.text;
        Property::strip(text, c.characters);
        EXPECT_EQ(text, c.expected) << c.text;
    }
}

} // namespace
