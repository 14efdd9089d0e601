#include <tavik/geodetic/HeightMap.h>
#include <tavik/geodetic/TerrainTile.h>

#include <support/DtedWriter.h>
#include <support/TemporaryDirectory.h>
#include <support/ZipWriter.h>

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <thread>

#include <pthread.h>

using namespace Tavik::Geodetic;
using namespace Tavik::Support;

namespace {

constexpr bool Load = true;
constexpr bool LowResOnly = true;
constexpr std::size_t SamplesOfDegree = std::size_t{1201} * 1201;
constexpr std::size_t SamplesOfOverview = std::size_t{6000} * 4800;

using Bytes = std::array<unsigned char, 3>;
constexpr Bytes StraightUp = {128, 128, 255};
constexpr Bytes NotLoaded = {0, 0, 0};
constexpr Bytes Level = {127, 127, 255};

class HeightMapTest : public testing::Test
{
protected:
    HeightMapTest() { testing::internal::CaptureStdout(); }
    ~HeightMapTest() override
    {
        const std::string text = testing::internal::GetCapturedStdout();
        std::fputs(HasFailure() ? text.c_str() : "", stdout); // failures are told there too
    }

    std::string below(const std::string& name) const { return mDirectory.path() + "/" + name; }

    /// A DTED tile of 5 x 5 samples that covers its cell, all of one height.
    std::string makeDted(const std::string& name, int latitude, int longitude, int height) const
    {
        writeDted(below(name), {latitude, longitude, 5, 5, 9000, 9000}, [=](unsigned, unsigned) { return height; });
        return below(name);
    }

    /// A zipped tile of one height; the number of samples tells the kind.
    std::string makeSrtm(const std::string& name, std::size_t samples, int height) const
    {
        std::string content(2 * samples, static_cast<char>(height & 0xFF));
        for (std::size_t i = 0; i < content.size(); i += 2) {
            content[i] = static_cast<char>(height >> 8);
        }
        ZipWriter(below(name)).add("heights", content.data(), content.size(), 1);
        return below(name);
    }

    /// Files that a scan registers without opening them.
    void makeEmptyZips(int count) const
    {
        for (int i = 0; i < count; ++i) {
            std::ofstream(below("N10E010.SRTMGL3." + std::to_string(i) + ".zip"));
        }
    }

    /// Makes the map ready without any file.
    void scanNothing()
    {
        mMap->setDataPath(below("nowhere"));
        mMap->loadThread();
    }

    /// What was printed since the last time.
    static std::string captured()
    {
        std::string text = testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        return text;
    }

    double height(double lat, double lon, bool load = Load, bool lowResOnly = false) const
    {
        return mMap->getAltitude(lat, lon, load, lowResOnly);
    }

    Bytes normal(double lat, double lon, bool lowResOnly = false) const
    {
        Bytes n = {1, 2, 3};
        EXPECT_TRUE(mMap->getNormal(lat, lon, Load, lowResOnly, n[0], n[1], n[2]));
        return n;
    }

    TemporaryDirectory mDirectory;
    std::unique_ptr<HeightMap> mMap = std::make_unique<HeightMap>();
};

} // namespace

TEST_F(HeightMapTest, ScansForTilesByExtension)
{
    makeDted("S12W077.dt1", -12, -77, 1);
    makeDted("noextension", -12, -77, 1);
    const std::string tile = makeDted("any.name.DT1", -12, -77, 500);
    mMap->setDataPath(mDirectory.path());
    mMap->loadThread();
    const std::string missing = below("missing.DT1"); // registered all the same
    mMap->readTileDTED(missing);
    EXPECT_EQ(captured(), "basePath <" + mDirectory.path() + "> size 3\nread DT File <" + tile +
                              "> -12 -77 0x4e0067 size 0\ncould not open data file <" + missing + ">\nread DT File <" +
                              missing + "> 0 0 0x5a00b4 size 1\n");
    EXPECT_EQ(height(-11.5, -76.5), 500.0);
    EXPECT_EQ(normal(0.5, 0.5), NotLoaded);
}

TEST_F(HeightMapTest, FileRegisteredLaterWinsTheCell)
{
    const std::string dted = makeDted("N47E011.DT1", 47, 11, 500);
    scanNothing();
    mMap->readTileDTED(dted);
    mMap->readTileHGT(makeSrtm("N47E011.SRTMGL3.hgt.zip", SamplesOfDegree, 700));
    EXPECT_EQ(height(47.5, 11.5), 700.0);
    mMap->readTileDTED(dted);
    EXPECT_EQ(height(47.5, 11.5), 700.0); // still the tile selected
    EXPECT_EQ(height(20.5, 11.5), 0.0);
    EXPECT_EQ(height(47.5, 11.5), 500.0);
}

// Tiles of a degree at corners of an overview tile that reaches from 10 S to 40 N and from 20 E to 60 E, and one at the
// end of the globe.
TEST_F(HeightMapTest, FindsTheTileOfAPoint)
{
    scanNothing();
    mMap->readTileDTED(makeDted("a.DT1", 39, 59, 500));
    mMap->readTileDTED(makeDted("b.DT1", 40, 60, 600));
    mMap->readTileDTED(makeDted("c.DT1", -10, 20, 800));
    mMap->readTileDTED(makeDted("d.DT1", -89, -180, 700));
    mMap->readTileHGT(makeSrtm("E020N40.SRTMGL30.dem.zip", SamplesOfOverview, 300));
    mMap->readTileHGT(below("W180S10.SRTMGL30.dem.zip"));
    const struct
    {
        double lat;
        double lon;
        double height;       // with all tiles
        double lowResHeight; // with the overview tiles only
        Bytes normal;
    } cases[] = {
        {-9.5, 20.5, 800, 300, Level}, // the tile at the corner of the overview tile, before that is loaded
        {39.0, 59.0, 500, 300, Level},
        {39.9999995, 60.0, 600, 0, Level}, // within a millionth of a degree the point is on the corner
        {39.999998, 59.5, 500, 300, Level},
        {40.9999995, 60.5, 0, 0, StraightUp}, // so it is on the far side
        {-10.0, 20.0, 800, 300, Level},
        {-10.0, 21.0, 300, 300, Level},
        {-10.1, 20.0, 0, 0, StraightUp},
        {0.0, 19.9, 0, 0, StraightUp},
        {0.0, 60.1, 0, 0, StraightUp},
        {-88.5, -180.2, 700, 0, Level}, // truncated toward zero, and less than a spacing beyond the origin
        {-91.5, -179.5, 0, 0, StraightUp},
        {-60.0, -170.0, 0, 0, NotLoaded}, // the overview tile whose file is missing
        {-60.1, -170.0, 0, 0, StraightUp},
        {90.0, 180.0, 0, 0, StraightUp},
        {39.0 + 65536.0, 59.0, 0, 0, StraightUp},
        {39.0, 59.0 + 4294967296.0, 0, 0, StraightUp},
        {HUGE_VAL, -1e300, 0, 0, StraightUp},
        {39.0, std::nan(""), 0, 0, StraightUp},
        {std::nan(""), 59.0, 0, 0, StraightUp},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.lat << ", " << c.lon);
        EXPECT_EQ(height(c.lat, c.lon), c.height);
        EXPECT_EQ(height(c.lat, c.lon, Load, LowResOnly), c.lowResHeight);
        EXPECT_EQ(normal(c.lat, c.lon), c.normal);
    }
    EXPECT_EQ(normal(40.5, 60.5, LowResOnly), StraightUp);
}

// Queries take a shorter way than through the tile where it covers its cell; some of these do not.
TEST_F(HeightMapTest, AnswersWhatTheTileAnswers)
{
    const struct
    {
        unsigned int points;
        const char* intervals; // of longitude and latitude, four characters each, tenths of seconds
        const char* originMinutes;
    } cases[] = {
        {1201, "00300030", "00"}, {5, "90009000", "00"}, {4, "90009000", "00"},
        {5, "89998999", "00"},    {5, "90009000", "22"}, {5, "90009000", "30"},
        {5, "90009000", "01"},    {1, "90009000", "00"}, {5, "-900-900", "00"},
    };
    const double offsets[] = {-9e-7, 0.0, 1e-9, 0.24, 0.37, 0.5, 0.75, 0.999 * 0.75, 0.991, 1.0 - 1.01e-6};
    const std::string path = below("tile.DT1");
    scanNothing();
    for (const auto& c : cases) {
        writeDted(path, {47, 11, c.points, c.points},
                  [](unsigned i, unsigned j) { return static_cast<int>(100 + i * i % 777 + j * 13 % 333); });
        overwriteBytes(path, 20, c.intervals);
        overwriteBytes(path, 4 + 3, c.originMinutes);  // of longitude
        overwriteBytes(path, 12 + 3, c.originMinutes); // of latitude
        TerrainTile tile;
        tile.loadTile(path);
        tile.loadAllData();
        mMap->readTileDTED(path);
        mMap->getCurrentTile(0.0, 0.0, Load); // so that the new file is found
        for (const double north : offsets) {
            for (const double east : offsets) {
                double expected = 0.0;
                tile.getAltitude(47.0 + north, 11.0 + east, expected);
                ASSERT_EQ(height(47.0 + north, 11.0 + east), expected)
                    << c.points << " points, " << c.intervals << ", " << north << ", " << east;
            }
        }
    }
}

TEST_F(HeightMapTest, LoadsOnlyWhenTheCellIsSelectedAnew)
{
    mMap->readTileDTED(makeDted("N47E011.DT1", 47, 11, 500));
    scanNothing();
    EXPECT_FALSE(mMap->getCurrentTile(47.5, 11.5, !Load));
    EXPECT_TRUE(mMap->getCurrentTile(47.5, 11.6, !Load));
    EXPECT_EQ(normal(47.5, 11.5), NotLoaded);
    EXPECT_EQ(height(47.5, 11.5), 0.0);
    EXPECT_TRUE(mMap->getCurrentTile(20.0, 20.0, !Load)); // there is none, so there is nothing to load
    EXPECT_TRUE(mMap->getCurrentTile(47.5, 11.5, Load));
    EXPECT_EQ(height(47.5, 11.5, !Load), 500.0);
}

TEST_F(HeightMapTest, DropsTheTileThatWasLoadedFirst)
{
    const int limit = 300;
    scanNothing();
    for (int i = 0; i <= limit; ++i) {
        mMap->readTileDTED(makeDted(std::to_string(i) + ".DT1", i / 100, i % 100, 1000 + i));
    }
    const auto heightIn = [&](int i, bool load) {
        const int latitude = i / 100;
        return height(latitude + 0.5, i % 100 + 0.5, load);
    };
    for (int i = 0; i < limit; ++i) {
        ASSERT_EQ(heightIn(i, Load), 1000 + i);
    }
    EXPECT_EQ(heightIn(0, Load), 1000); // asked for again, and yet the one to go
    EXPECT_EQ(heightIn(limit, Load), 1000 + limit);
    EXPECT_EQ(heightIn(0, !Load), 0);
    EXPECT_EQ(heightIn(1, !Load), 1001);
    EXPECT_EQ(heightIn(0, Load), 1000); // loaded again, in place of the next
    EXPECT_EQ(heightIn(1, !Load), 0);
    EXPECT_EQ(heightIn(2, !Load), 1002);
}

// Only the first overview tile has a file: one that cannot be loaded takes up its place like any other.
TEST_F(HeightMapTest, DropsTheOverviewTileThatWasLoadedFirst)
{
    const char* const longitudes[] = {"W180", "W140", "W100", "W060", "W020", "E020", "E060", "E100"};
    const int limit = 15;
    scanNothing();
    makeSrtm("W180N90.SRTMGL30.dem.zip", SamplesOfOverview, 300);
    for (const char* longitude : longitudes) {
        mMap->readTileHGT(below(longitude + std::string("N90.SRTMGL30.dem.zip")));
        mMap->readTileHGT(below(longitude + std::string("N40.SRTMGL30.dem.zip")));
    }
    const auto heightIn = [&](int i, bool load) {
        return height(i % 2 == 0 ? 45.0 : 35.0, -179.0 + 20.0 * (i - i % 2), load, LowResOnly);
    };
    EXPECT_EQ(heightIn(0, !Load), 0);
    EXPECT_EQ(heightIn(0, Load), 0) << "no new selection";
    EXPECT_EQ(heightIn(1, Load), 0);
    for (int i = 0; i < limit; ++i) {
        EXPECT_EQ(heightIn(i, Load), i == 0 ? 300 : 0);
        EXPECT_EQ(heightIn(1, Load), 0); // tried again, and so the last of the list
    }
    EXPECT_EQ(heightIn(0, !Load), 300);
    EXPECT_EQ(heightIn(limit, Load), 0);
    EXPECT_EQ(heightIn(0, !Load), 0);
    EXPECT_EQ(heightIn(1, Load), 0);
    EXPECT_EQ(heightIn(0, Load), 300);
    mMap->readTileHGT(below("W180N90.SRTMGL30.missing.zip")); // takes the cell
    EXPECT_EQ(heightIn(1, Load), 0);
    EXPECT_EQ(heightIn(0, Load), 0);
}

TEST_F(HeightMapTest, AnswersNothingWhileTheScanRuns)
{
    makeEmptyZips(2000);
    makeDted("N47E011.DT1", 47, 11, 500);
    mMap->setDataPath(mDirectory.path());
    Bytes n = {};
    EXPECT_FALSE(mMap->getNormal(47.5, 11.5, Load, false, n[0], n[1], n[2]));
    EXPECT_EQ(n, StraightUp);
    EXPECT_FALSE(mMap->getCurrentTileLowRes(47.5, 11.5, Load));
    ASSERT_EQ(mMap->loadData(), 0);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    while (!mMap->getCurrentTile(0.0, 0.0, !Load) && std::chrono::steady_clock::now() < deadline) {
        const double metres = height(47.5, 11.5);
        ASSERT_TRUE(metres == 0.0 || metres == 500.0) << metres; // the scan may have ended in between
    }
    EXPECT_EQ(height(47.5, 11.5), 500.0);
}

TEST_F(HeightMapTest, MayGoWhileScansRun)
{
    const int scans = 20;
    makeEmptyZips(500);
    for (int i = 0; i < scans; ++i) {
        mMap = std::make_unique<HeightMap>();
        mMap->setDataPath(mDirectory.path());
        ASSERT_EQ(mMap->loadData(), 0);
        std::this_thread::sleep_for(std::chrono::microseconds(50 * i));
        mMap.reset();
    }
    // Each scan has come to its end, and none is missing.
    EXPECT_EQ(captured().size(), scans * ("basePath <" + mDirectory.path() + "> size 500\n").size());
}

TEST_F(HeightMapTest, DoesNotWaitForAScanThatNeverBegan)
{
    pthread_attr_t usual;
    pthread_attr_t impossible;
    ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
    ASSERT_EQ(pthread_attr_init(&impossible), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&impossible, std::size_t{1} << 60), 0);
    ASSERT_EQ(pthread_setattr_default_np(&impossible), 0);
    EXPECT_NE(mMap->loadData(), 0);
    ASSERT_EQ(pthread_setattr_default_np(&usual), 0);
    mMap.reset();
}

TEST_F(HeightMapTest, RealTilesJoinWithoutAStep)
{
    const char* data = std::getenv("TAVIK_TERRAIN_DATA");
    if (data == nullptr) {
        GTEST_SKIP() << "TAVIK_TERRAIN_DATA names no folder of terrain tiles";
    }
    mMap->setDataPath(std::string(data) + "/srtm");
    mMap->loadThread();
    // Both tiles hold the samples at 42 N. The points lie a quarter of a metre apart, between the columns of samples.
    for (int k = 0; k < 1200; ++k) {
        const double lon = 1.0 + (k + 0.4) / 1200.0;
        EXPECT_NEAR(height(42.0 - 2e-6, lon), height(42.0, lon), 0.5) << lon;
    }
    EXPECT_EQ(height(42.0, 1.0), 828.0); // as in both files
}
