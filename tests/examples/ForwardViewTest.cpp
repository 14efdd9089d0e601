#include <moving_map/ForwardView.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace MovingMap;

namespace {

constexpr int Width = 121; // odd, so that there is a middle column
constexpr int Height = 90;
constexpr int HorizonRow = 32; // 0.36 of the height

CameraPicture viewOf(double altitude, double track, const HeightSource& source)
{
    return drawForwardView({{45.0, 7.0}, altitude, track}, source, Width, Height);
}

/// The row at which the sky ends, from the top.
int skyline(const CameraPicture& picture, int column)
{
    static const CameraPicture sky = viewOf(0.0, 0.0, [](double, double) { return -1e9; }); // ground out of sight
    const auto redAt = [&](const CameraPicture& p, int row) {
        return p.rgb[3 * static_cast<std::size_t>(row * Width + column)];
    };
    int row = 0;
    while (row < Height && redAt(picture, row) == redAt(sky, row)) {
        ++row;
    }
    return row;
}

} // namespace

TEST(ForwardView, HorizonOfTheSeaLiesLevel)
{
    const CameraPicture picture = viewOf(3000.0, 200.0, [](double, double) { return 0.0; });
    ASSERT_EQ(picture.rgb.size(), 3u * Width * Height);
    // 3000 m at 60 km is 2.9 degrees down: 6 pixels of 130 to the radian, and 2 more for the earth's curve.
    for (const int column : {0, 60, 120}) {
        EXPECT_NEAR(skyline(picture, column), HorizonRow + 8, 2) << column;
    }
}

TEST(ForwardView, MountainsStandWhereTheyAre)
{
    // A wall of 4000 m from 20 km on: in the east alone.
    const HeightSource wall = [](double lat, double lon) {
        return std::abs(lat - 45.0) < 0.03 && lon > 7.254 ? 4000.0 : 0.0;
    };
    const CameraPicture east = viewOf(2000.0, 90.0, wall);
    EXPECT_NEAR(skyline(east, 60), HorizonRow - 13, 2); // 2000 m less 27 m of curve at 20 km
    EXPECT_GT(skyline(east, 5), HorizonRow);
    EXPECT_GT(skyline(viewOf(2000.0, 270.0, wall), 60), HorizonRow);
    // 10 degrees to the right of the track: 130 tan 10 = 23 pixels.
    const CameraPicture aside = viewOf(2000.0, 80.0, wall);
    EXPECT_LT(skyline(aside, 83), HorizonRow);
    EXPECT_GT(skyline(aside, 60), HorizonRow);
}

TEST(ForwardView, AnyHeightsMakeAPicture)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double height : {nan, 9000.0, -400.0, 1e300}) {
        for (const double altitude : {nan, -500.0, 0.0, 20000.0}) {
            const CameraPicture picture = viewOf(altitude, 0.0, [&](double, double) { return height; });
            EXPECT_EQ(picture.rgb.size(), 3u * Width * Height) << height << " " << altitude;
        }
    }
}
