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
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <optional>
#include <thread>

#include <pthread.h>

using Tavik::Geodetic::HeightMap;
using Tavik::Geodetic::TerrainTile;
using namespace Tavik::Support;
namespace fs = std::filesystem;

namespace {

constexpr bool Load = true;
constexpr bool LowResOnly = true;

using Bytes = std::array<int, 3>;
constexpr Bytes StraightUp = {128, 128, 255};
constexpr Bytes NotLoaded = {0, 0, 0};
constexpr Bytes Level = {127, 127, 255};

/// The normal in lat, lon; nothing where the height map is not ready, and then the bytes must be straight up.
std::optional<Bytes> normal(HeightMap& map, double lat, double lon, bool load, bool lowResOnly)
{
    unsigned char x = 1;
    unsigned char y = 2;
    unsigned char z = 3;
    const bool ready = map.getNormal(lat, lon, load, lowResOnly, x, y, z);
    const Bytes bytes = {x, y, z};
    EXPECT_TRUE(ready || bytes == StraightUp);
    return ready ? std::optional<Bytes>(bytes) : std::nullopt;
}

class HeightMapTest : public testing::Test
{
protected:
    ~HeightMapTest() override
    {
        if (mCapturing) {
            const std::string text = captured();
            std::fputs(HasFailure() ? text.c_str() : "", stdout); // failures are told there too
        }
    }

    std::string below(const std::string& name) const { return mDirectory.path() + "/" + name; }

    /// A DTED tile of 5 x 5 samples that covers its cell, all of one height.
    std::string makeDted(const std::string& name, int latitude, int longitude, int height) const
    {
        writeDted(below(name), {latitude, longitude, 5, 5, 9000, 9000}, [=](unsigned, unsigned) { return height; });
        return below(name);
    }

    /// A zipped tile of one height; 1201 x 1201 samples for a tile of a degree, 6000 x 4800 for an overview tile.
    std::string makeSrtm(const std::string& name, std::size_t samples, int height) const
    {
        std::string content(2 * samples, static_cast<char>(height & 0xFF));
        for (std::size_t i = 0; i < content.size(); i += 2) {
            content[i] = static_cast<char>(height >> 8);
        }
        ZipWriter writer(below(name));
        writer.add("heights", content.data(), content.size(), 1);
        EXPECT_TRUE(writer.close());
        return below(name);
    }

    /// What the scans of a test print is compared, or dropped where the test succeeds.
    void capture()
    {
        testing::internal::CaptureStdout();
        mCapturing = true;
    }
    std::string captured()
    {
        mCapturing = false;
        return testing::internal::GetCapturedStdout();
    }

    /// Makes the map ready without any file of the data path.
    void scanNothing()
    {
        fs::create_directory(below("empty"));
        mMap->setDataPath(below("empty"));
        mMap->loadThread();
    }

    TemporaryDirectory mDirectory;
    std::unique_ptr<HeightMap> mMap = std::make_unique<HeightMap>();
    bool mCapturing = false;
};

constexpr std::size_t SamplesOfDegree = std::size_t{1201} * 1201;
constexpr std::size_t SamplesOfOverview = std::size_t{6000} * 4800;

} // namespace

TEST_F(HeightMapTest, AnswersNothingBeforeTheScan)
{
    capture();
    mMap->readTileDTED(makeDted("N47E011.DT1", 47, 11, 500));
    EXPECT_FALSE(mMap->getCurrentTile(47.5, 11.5, Load));
    EXPECT_FALSE(mMap->getCurrentTileLowRes(47.5, 11.5, Load));
    EXPECT_EQ(mMap->getAltitude(47.5, 11.5, Load, !LowResOnly), 0.0);
    EXPECT_EQ(normal(*mMap, 47.5, 11.5, Load, !LowResOnly), std::nullopt);
    scanNothing();
    EXPECT_EQ(mMap->getAltitude(47.5, 11.5, Load, !LowResOnly), 500.0);
}

TEST_F(HeightMapTest, ScansForTilesByExtension)
{
    fs::create_directories(below("sub.zip/deep"));
    for (const char* name : {"S12W077.dt1", "S12W077.DT2", "noextension", "sub.zip/deep/S12W077", "S12W077.hgt"}) {
        makeDted(name, -12, -77, 1);
    }
    const std::string tile = makeDted("sub.zip/deep/any.name.DT1", -12, -77, 500);
    makeSrtm("N10W001.SRTMGL1.zip", SamplesOfDegree, 700);
    mMap->setDataPath(mDirectory.path());
    capture();
    mMap->loadThread();
    // The zip file may come first, and count as a cell known before.
    EXPECT_THAT(captured(), testing::StartsWith("basePath <" + mDirectory.path() + "> size 7\nread DT File <" + tile +
                                                "> -12 -77 0x4e0067 size "));
    EXPECT_EQ(mMap->getAltitude(-11.5, -76.5, Load, !LowResOnly), 500.0);
    EXPECT_EQ(mMap->getAltitude(10.5, -0.5, Load, !LowResOnly), 700.0);
}

TEST_F(HeightMapTest, RegistersATileThatIsMissing)
{
    scanNothing();
    const std::string missing = below("missing.DT1");
    capture();
    mMap->readTileDTED(missing);
    mMap->readTileDTED(missing);
    const std::string lines =
        "could not open data file <" + missing + ">\nread DT File <" + missing + "> 0 0 0x5a00b4 size ";
    EXPECT_EQ(captured(), lines + "0\n" + lines + "1\n");
    capture();
    EXPECT_EQ(normal(*mMap, 0.5, 0.5, Load, !LowResOnly), NotLoaded);
}

TEST_F(HeightMapTest, FileRegisteredLaterWinsTheCell)
{
    const std::string dted = makeDted("N47E011.DT1", 47, 11, 500);
    const std::string srtm = makeSrtm("N47E011.SRTMGL3.hgt.zip", SamplesOfDegree, 700);
    capture();
    scanNothing();
    mMap->readTileDTED(dted);
    mMap->readTileHGT(srtm);
    EXPECT_EQ(mMap->getAltitude(47.5, 11.5, Load, !LowResOnly), 700.0);
    mMap->readTileDTED(dted);
    EXPECT_EQ(mMap->getAltitude(47.5, 11.5, Load, !LowResOnly), 700.0); // still the tile selected
    EXPECT_EQ(mMap->getAltitude(20.5, 11.5, Load, !LowResOnly), 0.0);
    EXPECT_EQ(mMap->getAltitude(47.5, 11.5, Load, !LowResOnly), 500.0);
}

// Three tiles of a degree at the corners of an overview tile that reaches from 10 S to 40 N and from 20 E to 60 E, and
// one at the end of the globe.
TEST_F(HeightMapTest, FindsTheTileOfAPoint)
{
    capture();
    scanNothing();
    mMap->readTileDTED(makeDted("N39E059.DT1", 39, 59, 500));
    mMap->readTileDTED(makeDted("N40E060.DT1", 40, 60, 600));
    mMap->readTileDTED(makeDted("S10E020.DT1", -10, 20, 800));
    mMap->readTileDTED(makeDted("S89W180.DT1", -89, -180, 700));
    mMap->readTileHGT(makeSrtm("E020N40.SRTMGL30.dem.zip", SamplesOfOverview, 300));
    mMap->readTileHGT(below("W180S10.SRTMGL30.dem.zip"));
    const double infinity = std::numeric_limits<double>::infinity();
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
        {40.0, 60.0, 600, 0, Level},
        {40.9999995, 60.5, 0, 0, StraightUp}, // so it is on the far side
        {38.5, 59.5, 300, 300, Level},
        {-10.0, 20.0, 800, 300, Level},
        {-10.0, 21.0, 300, 300, Level},
        {-10.1, 20.0, 0, 0, StraightUp},
        {0.0, 19.9, 0, 0, StraightUp},
        {0.0, 60.1, 0, 0, StraightUp},
        {-88.5, -179.5, 700, 0, Level},
        {-88.5, -180.2, 700, 0, Level}, // truncated toward zero, and less than a spacing beyond the origin
        {-91.5, -179.5, 0, 0, StraightUp},
        {-60.0, -170.0, 0, 0, NotLoaded}, // the overview tile whose file is missing
        {-60.1, -170.0, 0, 0, StraightUp},
        {-70.0, 30.0, 0, 0, StraightUp},
        {90.0, 180.0, 0, 0, StraightUp},
        {39.0 + 65536.0, 59.0, 0, 0, StraightUp},
        {39.0, 59.0 + 65536.0, 0, 0, StraightUp},
        {39.0, 59.0 + 4294967296.0, 0, 0, StraightUp},
        {1e300, 59.0, 0, 0, StraightUp},
        {39.0, -1e300, 0, 0, StraightUp},
        {infinity, infinity, 0, 0, StraightUp},
        {39.0, std::nan(""), 0, 0, StraightUp},
        {std::nan(""), 59.0, 0, 0, StraightUp},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.lat << ", " << c.lon);
        EXPECT_EQ(mMap->getAltitude(c.lat, c.lon, Load, !LowResOnly), c.height);
        EXPECT_EQ(mMap->getAltitude(c.lat, c.lon, Load, LowResOnly), c.lowResHeight);
        EXPECT_EQ(normal(*mMap, c.lat, c.lon, Load, !LowResOnly), c.normal);
    }
    EXPECT_EQ(normal(*mMap, 40.5, 60.5, Load, LowResOnly), StraightUp);
}

// Queries in a cell take a shorter way than through the tile, where the tile covers the cell; here are some that do
// not.
TEST_F(HeightMapTest, AnswersWhatTheTileAnswers)
{
    const struct
    {
        const char* name;
        unsigned int points;
        const char* intervals; // of longitude and latitude, four characters each, tenths of seconds
        const char* originMinutes;
    } cases[] = {
        {"level 1", 1201, "00300030", "00"},
        {"coarse", 5, "90009000", "00"},
        {"one sample short of the edge", 4, "90009000", "00"},
        {"one sample too many", 6, "90009000", "00"},
        {"a little short of the edge", 5, "89998999", "00"},
        {"shifted by half a degree", 5, "90009000", "30"},
        {"shifted by a minute", 5, "90009000", "01"},
        {"one sample", 1, "90009000", "00"},
        {"no spacing", 5, "00000000", "00"},
        {"backwards", 5, "-900-900", "00"},
    };
    capture();
    scanNothing();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = below("tile.DT1");
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

        const double offsets[] = {-9e-7, 0.0,  1e-9,         1.0 / 120, 0.24,        0.25,    0.37,
                                  0.5,   0.75, 0.999 * 0.75, 0.99,      0.99 + 1e-3, 0.99999, 1.0 - 1.01e-6};
        for (const double north : offsets) {
            for (const double east : offsets) {
                double height = 0.0;
                tile.getAltitude(47.0 + north, 11.0 + east, height);
                ASSERT_EQ(mMap->getAltitude(47.0 + north, 11.0 + east, Load, !LowResOnly), height)
                    << north << ", " << east;
            }
        }
    }
}

TEST_F(HeightMapTest, LoadsOnlyWhenTheCellIsSelectedAnew)
{
    capture();
    scanNothing();
    mMap->readTileDTED(makeDted("N47E011.DT1", 47, 11, 500));
    EXPECT_FALSE(mMap->getCurrentTile(47.5, 11.5, !Load));
    EXPECT_TRUE(mMap->getCurrentTile(47.5, 11.6, !Load));
    EXPECT_EQ(normal(*mMap, 47.5, 11.5, Load, !LowResOnly), NotLoaded);
    EXPECT_EQ(mMap->getAltitude(47.5, 11.5, Load, !LowResOnly), 0.0);
    EXPECT_TRUE(mMap->getCurrentTile(20.0, 20.0, !Load)); // there is none, so there is nothing to load
    EXPECT_TRUE(mMap->getCurrentTile(47.5, 11.5, Load));
    EXPECT_EQ(mMap->getAltitude(47.5, 11.5, !Load, !LowResOnly), 500.0);
}

TEST_F(HeightMapTest, DropsTheTileThatWasLoadedFirst)
{
    const int limit = 300;
    capture();
    scanNothing();
    for (int i = 0; i <= limit; ++i) {
        mMap->readTileDTED(makeDted(std::to_string(i) + ".DT1", i / 100, i % 100, 1000 + i));
    }
    const auto height = [&](int i, bool load) {
        const int latitude = i / 100;
        const int longitude = i % 100;
        return mMap->getAltitude(latitude + 0.5, longitude + 0.5, load, !LowResOnly);
    };
    for (int i = 0; i < limit; ++i) {
        ASSERT_EQ(height(i, Load), 1000 + i);
    }
    EXPECT_EQ(height(0, Load), 1000); // asked for again, and yet the one to go
    EXPECT_EQ(height(limit, Load), 1000 + limit);
    EXPECT_EQ(height(0, !Load), 0);
    EXPECT_EQ(height(1, !Load), 1001);
    EXPECT_EQ(height(0, Load), 1000); // loaded again, in place of the next
    EXPECT_EQ(height(1, !Load), 0);
    EXPECT_EQ(height(2, !Load), 1002);
    EXPECT_EQ(height(limit, !Load), 1000 + limit);
}

// Only the first overview tile has a file: one that cannot be loaded takes up its place like any other.
TEST_F(HeightMapTest, DropsTheOverviewTileThatWasLoadedFirst)
{
    const int limit = 15;
    capture();
    scanNothing();
    mMap->readTileHGT(makeSrtm("W180N90.SRTMGL30.dem.zip", SamplesOfOverview, 300));
    const auto height = [&](int i, bool load) {
        const int band = i / 9;
        return mMap->getAltitude(45.0 - 50.0 * band, -179.0 + 40.0 * (i % 9), load, LowResOnly);
    };
    EXPECT_EQ(height(0, Load), 300);
    const char* const longitudes[] = {"W180", "W140", "W100", "W060", "W020", "E020", "E060", "E100", "E140"};
    const char* const latitudes[] = {"N90", "N40"};
    for (int i = 1; i <= limit; ++i) {
        mMap->readTileHGT(below(std::string(longitudes[i % 9]) + latitudes[i / 9] + ".SRTMGL30.dem.zip"));
    }
    for (int i = 1; i < limit; ++i) {
        EXPECT_EQ(height(i, Load), 0);
        EXPECT_EQ(height(1, Load), 0); // tried again, and so the last of the list
    }
    EXPECT_EQ(height(0, !Load), 300);
    EXPECT_EQ(height(limit, Load), 0);
    EXPECT_EQ(height(0, !Load), 0);
}

TEST_F(HeightMapTest, AnswersWhileTheScanRuns)
{
    for (int i = 0; i < 2000; ++i) {
        std::ofstream(below("N10E010.SRTMGL3." + std::to_string(i) + ".zip"));
    }
    makeDted("N47E011.DT1", 47, 11, 500);
    mMap->setDataPath(mDirectory.path());
    capture();
    ASSERT_EQ(mMap->loadData(), 0);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    while (!mMap->getCurrentTile(0.0, 0.0, !Load) && std::chrono::steady_clock::now() < deadline) {
        const double height = mMap->getAltitude(47.5, 11.5, Load, !LowResOnly);
        ASSERT_TRUE(height == 0.0 || height == 500.0) << height;
        std::this_thread::yield();
    }
    EXPECT_EQ(mMap->getAltitude(47.5, 11.5, Load, !LowResOnly), 500.0);
}

TEST_F(HeightMapTest, MayGoWhileScansRun)
{
    for (int i = 0; i < 500; ++i) {
        std::ofstream(below("N10E010.SRTMGL3." + std::to_string(i) + ".zip"));
    }
    capture();
    for (int i = 0; i < 20; ++i) {
        mMap = std::make_unique<HeightMap>();
        mMap->setDataPath(mDirectory.path());
        ASSERT_EQ(mMap->loadData(), 0);
        if (i % 2 == 0) {
            std::this_thread::sleep_for(std::chrono::microseconds(50 * i));
        }
        mMap.reset();
    }
    // Each scan has come to its end, and none is missing.
    const std::string line = "basePath <" + mDirectory.path() + "> size 500\n";
    std::string expected;
    for (int i = 0; i < 20; ++i) {
        expected += line;
    }
    EXPECT_EQ(captured(), expected);
}

TEST_F(HeightMapTest, ReportsThatNoThreadCouldBeStarted)
{
    pthread_attr_t usual;
    ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
    pthread_attr_t impossible;
    ASSERT_EQ(pthread_attr_init(&impossible), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&impossible, std::size_t{1} << 60), 0);
    ASSERT_EQ(pthread_setattr_default_np(&impossible), 0);
    EXPECT_NE(mMap->loadData(), 0);
    ASSERT_EQ(pthread_setattr_default_np(&usual), 0);
    mMap.reset(); // does not wait for a scan that never began
}

TEST_F(HeightMapTest, RealTilesJoinWithoutAStep)
{
    const char* data = std::getenv("TAVIK_TERRAIN_DATA");
    if (data == nullptr) {
        GTEST_SKIP() << "TAVIK_TERRAIN_DATA names no folder of terrain tiles";
    }
    capture();
    mMap->setDataPath(std::string(data) + "/srtm");
    mMap->loadThread();
    // Both tiles hold the samples at 42 N; the line between them lies between samples, off the columns of samples.
    double highest = 0.0;
    for (int k = 0; k < 1200; ++k) {
        const double lon = 1.0 + (k + 0.4) / 1200.0;
        const double south = mMap->getAltitude(42.0 - 2e-6, lon, Load, !LowResOnly);
        const double north = mMap->getAltitude(42.0, lon, Load, !LowResOnly);
        EXPECT_NEAR(south, north, 0.5) << lon; // of a quarter of a metre on the ground
        highest = std::max(highest, north);
    }
    EXPECT_GT(highest, 800.0);
    // The peak of the Riviera tile, measured by another program.
    EXPECT_NEAR(mMap->getAltitude(43.0 + 1195 / 1200.0 + 1e-9, 7.0 + 516 / 1200.0 + 1e-9, Load, !LowResOnly), 2064.0,
                0.01);

    mMap = std::make_unique<HeightMap>();
    mMap->setDataPath(std::string(data) + "/derived");
    mMap->loadThread();
    // The highest mean of the overview tile: row 5679 from the north, column 2568 from the west.
    EXPECT_NEAR(mMap->getAltitude(40.0 + 320 / 120.0 + 1e-9, -20.0 + 2568 / 120.0 + 1e-9, Load, LowResOnly), 2928.0,
                0.01);
}
