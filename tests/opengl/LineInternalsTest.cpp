#include <tavik/opengl/GlVersion.h>
#include <tavik/opengl/LineAdjacency.h>
#include <tavik/opengl/RunningLength.h>

#include <gmock/gmock.h>

#include <limits>

using namespace Tavik::OpenGL;
using Tavik::Math::Matrix4;
using Tavik::Math::Vector3;

TEST(LineAdjacency, DoublesTheEndsOfEachStrip)
{
    constexpr std::uint32_t End = 0x12FFFFFF;
    struct Case
    {
        const char* name;
        std::vector<std::uint32_t> indices;
        std::vector<std::uint32_t> expanded;
    };
    const Case cases[] = {
        {"nothing", {}, {}},
        {"open end", {0, 1, 2}, {0, 0, 1, 2, 2}},
        {"ended", {0, 1, End}, {0, 0, 1, 1, End}},
        {"two strips", {0, 1, 2, End, 3, 4, End}, {0, 0, 1, 2, 2, End, 3, 3, 4, 4, End}},
        {"second open", {0, 1, End, 2, 3}, {0, 0, 1, 1, End, 2, 2, 3, 3}},
        {"single", {0, End, 1, 2}, {0, 0, 0, End, 1, 1, 2, 2}},
        {"again", {0, 0, 1, 1, End, 2}, {0, 0, 0, 1, 1, 1, End, 2, 2, 2}},
        {"beyond the vertices", {0, 1, 9, 2, 3, 0xFFFFFFFF, 4}, {0, 0, 1, 1, End, 2, 2, 3, 3, End, 4, 4, 4}},
    };
    std::vector<std::uint32_t> result = {7, 7, 7};
    for (const Case& c : cases) {
        expandAdjacency(c.indices, 9, End, result);
        EXPECT_EQ(result, c.expanded) << c.name;
    }
}

TEST(RunningLength, IsInPixelsOfTheViewPort)
{
    Matrix4<float> transform; // the view port shows x from 0 to 10, y from 0 to 5
    transform.translate(-1.0f, -1.0f, 0.0f);
    transform[0] = 0.2f;
    transform[5] = 0.4f;
    const float inf = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<Vector3<float>> vertices = {
        {1.0f, 1.0f, 0.0f}, {4.0f, 1.0f, 0.0f}, {4.0f, 3.0f, 0.0f}, {4.0f, 3.0f, 2.0f}, {nan, 3.0f, 0.0f},
        {4.0f, 3.0f, 2.0f}, {4.0f, inf, 0.0f},  {5.0f, 3.0f, 0.0f}, {7.0f, 3.0f, 0.0f},
    };
    std::vector<float> lengths;
    calcRunningLength(vertices, transform, {100.0f, 50.0f}, lengths);
    const float expected[] = {0.0f, 30.0f, 50.0f, 52.0f, 52.0f, 52.0f, 52.0f, 52.0f, 72.0f};
    EXPECT_THAT(lengths, testing::Pointwise(testing::FloatNear(1e-4f), expected));

    // Longer than the blocks in which it is worked out: each step is 1 pixel.
    std::vector<Vector3<float>> line(1000);
    for (std::size_t i = 0; i < line.size(); ++i) {
        line[i].x = 0.1f * static_cast<float>(i);
    }
    calcRunningLength(line, transform, {100.0f, 50.0f}, lengths);
    ASSERT_EQ(lengths.size(), line.size());
    for (std::size_t i = 0; i < line.size(); ++i) {
        EXPECT_NEAR(lengths[i], static_cast<float>(i), 1e-2f) << i;
    }
    calcRunningLength({}, transform, {100.0f, 50.0f}, lengths);
    EXPECT_TRUE(lengths.empty());
}

TEST(GlVersion, IsReadOffTheStartOfTheText)
{
    struct Case
    {
        const char* text;
        int version;
        const char* printed;
    };
    const Case cases[] = {
        {"4.1 Metal - 83.1", 401, "GL version <4.1 Metal - 83.1> 4.1\n"},
        {"3", 300, "GL version <3> 3.0\n"},
        {"3.3.0 NVIDIA 535", 303, "GL version <3.3.0 NVIDIA 535> 3.3\n"},
        {"", 0, "GL version <> 0.0\n"},
        {"Mesa 22.3", 3, "GL version <Mesa 22.3> 0.3\n"},
    };
    for (const Case& c : cases) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(parseGlVersion(c.text), c.version) << c.text;
        EXPECT_EQ(testing::internal::GetCapturedStdout(), c.printed);
    }
    EXPECT_GT(parseGlVersion("99999999999999999999.99999999999999999999"), 0) << "bounded, not overflown";
}
