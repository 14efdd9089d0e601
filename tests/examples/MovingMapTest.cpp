#include <support/TemporaryDirectory.h>

#include <gtest/gtest.h>
#include <png.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

namespace {

struct Outcome
{
    int exitCode = -1;
    std::string output;
    std::string errors;
};

/// Runs the program in a directory of its own, with no display and its cache there.
class MovingMap : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        directory = new Tavik::Support::TemporaryDirectory();
        setenv("XDG_CACHE_HOME", directory->path().c_str(), 1);
        setenv("XDG_CONFIG_HOME", (directory->path() + "/config").c_str(), 1);
        setenv("SDL_VIDEODRIVER", "offscreen", 1);
    }
    static void TearDownTestSuite() { delete directory; }

    static std::string path(const std::string& name) { return directory->path() + "/" + name; }

    static std::string contents(const std::string& name)
    {
        std::ostringstream text;
        text << std::ifstream(path(name)).rdbuf();
        return text.str();
    }

    static Outcome run(const std::string& arguments)
    {
        const std::string command = "cd '" + directory->path() + "' && '" MOVING_MAP "' " + arguments + " >out 2>err";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents("out"), contents("err")};
    }

    static Tavik::Support::TemporaryDirectory* directory;
};

Tavik::Support::TemporaryDirectory* MovingMap::directory = nullptr;

struct Pixels
{
    unsigned int width = 0;
    unsigned int height = 0;
    std::vector<std::uint32_t> colors;

    /// How many pixels of some rows have another colour than the commonest one there.
    std::size_t drawnBetween(double top, double bottom) const
    {
        std::map<std::uint32_t, std::size_t> counts;
        std::size_t all = 0;
        const auto from = static_cast<std::size_t>(top * height) * width;
        const auto to = static_cast<std::size_t>(bottom * height) * width;
        for (std::size_t i = from; i < to; ++i, ++all) {
            ++counts[colors[i]];
        }
        std::size_t most = 0;
        for (const auto& [color, count] : counts) {
            most = std::max(most, count);
        }
        return all - most;
    }
};

Pixels readPng(const std::string& path)
{
    Pixels pixels;
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) != 0) {
        image.format = PNG_FORMAT_RGBA;
        pixels.width = image.width;
        pixels.height = image.height;
        pixels.colors.resize(std::size_t{image.width} * image.height);
        png_image_finish_read(&image, nullptr, pixels.colors.data(), 0, nullptr);
    }
    return pixels;
}

} // namespace

TEST_F(MovingMap, DrawsMapAndProfileTheSameEachTime)
{
    const std::string arguments = "--size 640x400 --frames 2 --time 600 --screenshot ";
    for (const char* name : {"a.png", "b.png"}) {
        const Outcome result = run(arguments + name);
        ASSERT_EQ(result.exitCode, 0) << result.output << result.errors;
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.output.find("Error"), std::string::npos) << result.output;
    }
    const Pixels picture = readPng(path("a.png"));
    ASSERT_EQ(picture.width, 640u);
    ASSERT_EQ(picture.height, 400u);
    EXPECT_GT(picture.drawnBetween(0.05, 0.70), 50000u); // contours
    EXPECT_GT(picture.drawnBetween(0.80, 0.98), 16000u); // ground of the profile
    EXPECT_EQ(picture.colors, readPng(path("b.png")).colors);

    ASSERT_EQ(run("--size 640x400 --time 600 --track-up --screenshot c.png").exitCode, 0);
    EXPECT_NE(picture.colors, readPng(path("c.png")).colors);
    ASSERT_EQ(run("--size 640x400 --time 600 --no-camera --screenshot d.png").exitCode, 0);
    EXPECT_NE(picture.colors, readPng(path("d.png")).colors);
    ASSERT_EQ(run("--size 640x400 --time 600 --sbs 127.0.0.1:1 --screenshot e.png").exitCode, 0); // nobody is there
    EXPECT_NE(picture.colors, readPng(path("e.png")).colors);
}

TEST_F(MovingMap, WritesAPictureWhereThereIsNoDisplay)
{
    const Outcome result = run("");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_NE(result.output.find(path("moving_map.png")), std::string::npos) << result.output;
    EXPECT_EQ(readPng(path("moving_map.png")).width, 1280u);
}

TEST_F(MovingMap, SettingsGiveWayToOptionsAndKeepOutOfPictures)
{
    const auto picture = [](const std::string& arguments) {
        const Outcome result = run("--size 320x200 --time 600 --screenshot e.png " + arguments);
        EXPECT_EQ(result.exitCode, 0) << arguments << result.errors;
        return readPng(path("e.png")).colors;
    };
    const char* const content = "<Properties><map><Property key='range' value='6'/>"
                                "<Property key='orientation' value='track'/></map></Properties>";
    std::ofstream(path("given.xml")) << content;
    std::filesystem::create_directories(path("config/tavik"));
    std::ofstream(path("config/tavik/moving_map.xml")) << content;
    const auto plain = picture("");
    const auto changed = picture("--range 6 --track-up");
    ASSERT_NE(plain, changed);
    EXPECT_EQ(picture("--settings given.xml"), changed);
    EXPECT_EQ(picture("--settings given.xml --range 20 --north-up"), plain);
    EXPECT_EQ(picture("--settings given.xml --no-settings"), plain);
    EXPECT_EQ(contents("given.xml"), content);
    EXPECT_EQ(contents("config/tavik/moving_map.xml"), content);

    // A feed of the file that cannot be had is told, and the map goes on; with feeds of the command line it ends.
    const std::string noHost(64, 'x'); // longer than a name can be, so that nobody is asked
    std::ofstream(path("feeds.xml")) << "<Properties><feeds><Property key='traffic' value='" << noHost
                                     << "'/></feeds></Properties>";
    const Outcome alone = run("--size 64x64 --settings feeds.xml --screenshot e.png");
    EXPECT_EQ(alone.exitCode, 0);
    EXPECT_NE(alone.errors.find("the host '" + noHost + "' is not known"), std::string::npos) << alone.errors;
    EXPECT_EQ(run("--size 64x64 --settings feeds.xml --traffic " + noHost + " --screenshot e.png").exitCode, 1);

    // A plain start reads the user's file; without one, it writes one with all settings.
    EXPECT_NE(run("").output.find("Property <map.range> <6>"), std::string::npos);
    std::filesystem::remove_all(path("config"));
    EXPECT_EQ(run("").exitCode, 0);
    EXPECT_NE(contents("config/tavik/moving_map.xml").find("key=\"range\" value=\"20\""), std::string::npos);
}

TEST_F(MovingMap, SteadyFramesMakeNoTerrain)
{
    // Half a second of flight is less than a pixel: the blocks of the first frame must do.
    std::vector<std::string> blocks;
    for (const char* frames : {"1", "30"}) {
        const Outcome result = run(std::string("--size 320x200 --time 600 --statistics --frames ") + frames);
        ASSERT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_NE(result.output.find(std::string("frames ") + frames + ", mean"), std::string::npos) << result.output;
        const std::size_t begin = result.output.find("terrain blocks ");
        ASSERT_NE(begin, std::string::npos) << result.output;
        blocks.push_back(result.output.substr(begin, result.output.find(',', begin) - begin));
    }
    EXPECT_NE(blocks[0], "terrain blocks 0");
    EXPECT_EQ(blocks[0], blocks[1]);
}

TEST_F(MovingMap, DrawsWithoutATileThatCannotBeRead)
{
    std::filesystem::create_directory(path("broken"));
    std::ofstream(path("broken/N48E011.SRTMGL3.hgt.zip")) << "this is no archive";
    std::ofstream(path("broken/N49E011.DT1")) << "nor is this a tile";
    EXPECT_EQ(run("--terrain broken --size 320x200 --screenshot broken.png").exitCode, 0);
    EXPECT_EQ(readPng(path("broken.png")).width, 320u);
}

TEST_F(MovingMap, WrongCommandLinesEndWithASentence)
{
    std::ofstream(path("bad.plan")) << "start A 45 -31\nto B 99 -31\n";
    std::filesystem::create_directory(path("empty"));
    struct Case
    {
        const char* arguments;
        int exitCode;
        const char* sentence;
    };
    const Case cases[] = {
        {"--help", 0, ""},
        {"--fast", 2, "an option is not known"},
        {"--screenshot", 2, "--screenshot needs a value"},
        {"--size 640", 2, "the value '640' of --size"},
        {"--size 640x63", 2, "'640x63'"},
        {"--size 8193x640", 2, "'8193x640'"},
        {"--size 640x480x3", 2, "'640x480x3'"},
        {"--size 99999999999999999999x640", 2, "--size"},
        {"--frames 0", 2, "the value '0' of --frames"},
        {"--frames 1.5", 2, "--frames"},
        {"--range 0.5", 2, "--range"},
        {"--range nan", 2, "--range"},
        {"--speed 0", 2, "--speed"},
        {"--time 1e9", 2, "--time"},
        {"--nmea 0", 2, "the value '0' of --nmea"},
        {"--own-ship 65536", 2, "--own-ship"},
        {"--traffic :4101", 1, "':4101' is no host"},
        {"--sbs 127.0.0.1:0", 1, "'127.0.0.1:0' is no host"},
        {"--terrain missing", 1, "there is no folder 'missing'"},
        {"--terrain bad.plan", 1, "there is no folder 'bad.plan'"},
        {"--terrain empty", 1, "there are no terrain tiles in 'empty'"},
        {"--plan missing.plan", 1, "missing.plan: cannot read"},
        {"--plan bad.plan", 1, "bad.plan:2: latitude '99'"},
        {"--size 64x64 --screenshot missing/a.png", 1, "cannot write the picture 'missing/a.png'"},
    };
    for (const Case& c : cases) {
        const Outcome result = run(c.arguments);
        EXPECT_EQ(result.exitCode, c.exitCode) << c.arguments;
        EXPECT_NE(result.errors.find(c.sentence), std::string::npos) << c.arguments << ": " << result.errors;
        EXPECT_EQ(result.errors.empty(), c.exitCode == 0) << c.arguments;
    }
}
