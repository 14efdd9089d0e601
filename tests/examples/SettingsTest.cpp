#include <moving_map/SettingsFile.h>
#include <support/TemporaryDirectory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

using namespace MovingMap;

namespace {

std::string contents(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The store of properties is one for the process: each test's file names the settings that it looks at.
class SettingsFileTest : public testing::Test
{
protected:
    Settings read(SettingsFile& file)
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        Settings settings = file.read();
        testing::internal::GetCapturedStdout();
        complaints = testing::internal::GetCapturedStderr();
        return settings;
    }

    const Tavik::Support::TemporaryDirectory directory;
    const std::string path = directory.path() + "/settings.xml";
    std::string complaints;
};

} // namespace

TEST(SettingsTest, TextsAreTakenOrRefused)
{
    struct Case
    {
        const char* key;
        const char* text;
        const char* result; // null where it is refused
    };
    const Case cases[] = {
        {"map.range", "1", "1"},
        {"map.range", "28.28427", "28.2843"},
        {"map.range", "320.5", nullptr},
        {"map.range", "nan", nullptr},
        {"map.range", "20 NM", nullptr},
        {"map.range", "", nullptr},
        {"map.orientation", "track", "track"},
        {"map.orientation", "Track", nullptr},
        {"window.width", "64", "64"},
        {"window.width", "640.0", nullptr},
        {"window.height", "8193", nullptr},
        {"feeds.nmeaPort", "0", "0"},
        {"feeds.nmeaPort", "65536", nullptr},
        {"feeds.traffic", "", ""},
        {"feeds.traffic", "host", "host"},
        {"feeds.traffic", "host:65535", "host:65535"},
        {"feeds.traffic", "host:0", nullptr},
        {"feeds.traffic", ":4101", nullptr},
        {"feeds.traffic", "host:", nullptr},
        {"layers.camera", "false", "false"},
        {"layers.camera", "0", nullptr},
        {"colors.aircraft", "#12abEF", "#12ABEF"},
        {"colors.aircraft", "#12abEF80", "#12ABEF80"},
        {"colors.aircraft", "#12abEFff", "#12ABEF"},
        {"colors.aircraft", "12abEF0", nullptr},
        {"colors.aircraft", "#12abE", nullptr},
        {"colors.aircraft", "#12abEG", nullptr},
        {"colors.aircraft", "#-2abEF", nullptr},
        {"colors.aircraft", "#12abEF8", nullptr},
        {"colors.aircraft", "#12abEF800", nullptr},
    };
    for (const Case& c : cases) {
        Settings settings;
        int found = 0;
        for (const Setting& setting : listSettings(settings)) {
            if (setting.key == c.key) {
                ++found;
                const std::string before = setting.text();
                EXPECT_EQ(setting.parse(c.text), c.result != nullptr) << c.key << " " << c.text;
                EXPECT_EQ(setting.text(), c.result != nullptr ? c.result : before) << c.key << " " << c.text;
            }
        }
        EXPECT_EQ(found, 1) << c.key;
    }
}

TEST(SettingsTest, GuideTellsEachSettingAndNoOther)
{
    Settings settings;
    std::string table;
    for (const Setting& setting : listSettings(settings)) {
        const std::string text = setting.text();
        table += "| `" + setting.key + "` | " + setting.meaning + " | " + setting.values + " | " +
                 (text.empty() ? "" : "`" + text + "`") + " |\n";
        EXPECT_TRUE(setting.parse(text)) << setting.key;
    }
    std::istringstream guide(contents(SETTINGS_GUIDE));
    std::string told;
    for (std::string line; std::getline(guide, line);) {
        told += line.rfind("| `", 0) == 0 ? line + "\n" : "";
    }
    EXPECT_EQ(told, table);
}

TEST_F(SettingsFileTest, KeepsWhatTheUserDidNotChange)
{
    const std::string content = "<!-- mine --><Properties><mine><Property key='note' value='&lt;kept&gt;'/></mine>"
                                "<map><Property key='range' value='40'/><Property key='orientation' value='up'/></map>"
                                "<layers><Property key='relief' value='false'/></layers></Properties>";
    std::ofstream(path) << content;
    SettingsFile file(path);
    const Settings kept = read(file);
    EXPECT_EQ(kept.display.rangeMiles, 40.0);
    EXPECT_FALSE(kept.display.trackUp);
    EXPECT_FALSE(kept.display.layers.shows(Layer::Relief));
    EXPECT_EQ(complaints, "moving_map: the value 'up' of map.orientation in '" + path +
                              "' is not usable (track or north); it is north\n");

    Settings begun = kept;
    begun.display.rangeMiles = 5.0; // by the command line
    file.write(begun, begun);
    EXPECT_EQ(contents(path), content) << "nothing has changed";

    Settings ended = begun;
    ended.display.layers.show(Layer::Camera, false);
    file.write(begun, ended);
    for (const char* line :
         {"key=\"range\" value=\"40\"", "key=\"orientation\" value=\"up\"", "key=\"relief\" value=\"false\"",
          "key=\"camera\" value=\"false\"", "key=\"note\" value=\"&lt;kept&gt;\"", "key=\"width\" value=\"1280\""}) {
        EXPECT_NE(contents(path).find(line), std::string::npos) << line << " in " << contents(path);
    }

    ended.display.rangeMiles = 7.0;
    file.write(begun, ended);
    SettingsFile again(path);
    EXPECT_EQ(read(again).display.rangeMiles, 7.0);
}

TEST_F(SettingsFileTest, LeavesAloneWhatIsNoPropertyFile)
{
    for (const char* content : {"", "<Properties><map>", "<svg/>", "plain text", "\xFF\xFE"}) {
        std::ofstream(path) << content;
        SettingsFile file(path);
        const Settings settings = read(file);
        EXPECT_NE(complaints.find("'" + path + "' cannot be read as settings"), std::string::npos) << content;
        EXPECT_EQ(std::count(complaints.begin(), complaints.end(), '\n'), 1) << complaints;
        Settings ended = settings;
        ended.display.trackUp = !ended.display.trackUp;
        file.write(settings, ended);
        EXPECT_EQ(contents(path), content);
    }
}

TEST_F(SettingsFileTest, CreatesFileAndFoldersOrGoesOnWithout)
{
    const std::string fresh = directory.path() + "/a/b/settings.xml";
    SettingsFile file(fresh);
    const Settings settings = read(file);
    EXPECT_EQ(complaints, "");
    file.write(settings, settings);
    EXPECT_NE(contents(fresh).find("key=\"aircraft\" value=\"#FFEB40\""), std::string::npos) << contents(fresh);

    SettingsFile unwritable("/dev/null/settings.xml");
    read(unwritable);
    testing::internal::CaptureStdout();
    unwritable.write(settings, settings);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Error writing property file </dev/null/settings.xml>!\n");

    SettingsFile none("");
    EXPECT_EQ(read(none).widthPixels, settings.widthPixels);
    none.write(settings, settings);
}
