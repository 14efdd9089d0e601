#pragma once

#include <tavik/Export.h>
#include <tavik/misc/Mutex.h>

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace Tavik::Geodetic {

class TerrainTile;

/// Terrain height and surface normal at any point, from a folder of terrain tiles.
///
///     HeightMap terrain;
///     terrain.setDataPath("/data/terrain");
///     terrain.loadData(); // scans the folder on a thread of its own
///     ...
///     double metres = terrain.getAltitude(47.25, 11.4, true, false); // each frame; 0 until the scan has finished
///
/// Calling order: setDataPath, then loadData (or loadThread, which scans before it returns), then queries at any time.
///
/// **Tiles.** Two sets stand beside each other: tiles of one degree (".DT1" files, DTED level 1; ".zip" files with
/// SRTMGL1 or SRTMGL3 in their name) and overview tiles of 50 degrees of latitude by 40 of longitude (".zip" files with
/// SRTMGL30). TerrainTile tells how names and contents are read. A tile answers for the cell of whole degrees, or of
/// its band, that has its south-west corner; the overview bands start at 60 S, 10 S and 40 N and at every multiple of
/// 40 degrees of longitude, and farther south than 60 S there is none. Of two files for one cell the one listed later
/// wins.
///
/// **Memory.** Samples are read when a query first needs them. At most 300 tiles and 15 overview tiles keep theirs; the
/// one loaded first gives way, however recently it was asked, and is read again when it is needed. An SRTMGL1 tile
/// takes 26 MB, an SRTMGL3 or DTED level 1 tile 3 MB, an overview tile 58 MB. The tiles, with the samples they hold,
/// stay in memory after the HeightMap has gone or another file has taken their cell: keep one HeightMap for the life of
/// the program.
///
/// **Repeated queries.** Consecutive queries in one cell look for the tile only once. So where one without loading has
/// met a tile that is not loaded, another one with loading will not load it before a query elsewhere has come between.
///
/// **Points** are in degrees, negative south and west. Longitude does not wrap round: bring it into [-180, 180]. NaN,
/// infinity and points a degree or more beyond 90 S or 180 W find no tile.
///
/// **Threads.** All calls belong to one thread, queries among them, since they load and drop tiles. The thread that
/// loadData starts only fills the tables, and queries do not look at them before it has finished. Therefore neither
/// the data path may be set nor a tile registered while a scan runs, and a second scan needs a time without queries.
class TAVIK_API HeightMap
{
public:
    HeightMap();

    /// Waits for scans that loadData started and that still run. The tiles are left as they are.
    ~HeightMap();

    HeightMap(const HeightMap&) = delete;
    HeightMap& operator=(const HeightMap&) = delete;

    /// Sets where the tiles are.
    /// @param path  folder of the tiles, searched with everything below it
    void setDataPath(const std::string& path);

    /// Starts the scan of the data path on a thread of its own.
    /// @return 0, or the error number of pthread_create; then nothing is scanned
    int loadData();

    /// What the thread of loadData runs: loadThread of the HeightMap that self points to.
    /// @return null
    static void* loadThreadEntry(void* self);

    /// Scans the data path on the calling thread; queries answer from then on.
    void loadThread();

    /// Registers the files below a directory whose names end in ".DT1" and ".zip", written exactly so. Samples are not
    /// read. Prints "basePath <path> size n" with the number of files of any kind.
    void readDirectory(const std::string& basePath);

    /// Registers a DTED tile, reading no more than its header. Prints
    /// "read DT File <path> latitude longitude key size n", with the south-west corner in whole degrees and the number
    /// of cells known before. A file that cannot be opened prints "could not open data file <path>" and is registered
    /// for the cell at 0, 0.
    void readTileDTED(const std::string& path);

    /// Registers a zipped SRTM tile under what its name says; the file is not touched. A name that says nothing
    /// registers it for the cell at 0, 0.
    void readTileHGT(const std::string& path);

    /// Selects the tile for a point, for the queries that follow in its cell.
    /// @param lat,lon  degrees
    /// @param load  whether to read the tile's samples where they are not in memory
    /// @return false while no scan has finished, and when a tile that is new to the selection is not in memory and load
    ///         is false; true otherwise, also where there is no tile
    bool getCurrentTile(double lat, double lon, bool load);

    /// The same for the overview tiles.
    bool getCurrentTileLowRes(double lat, double lon, bool load);

    /// Height at a point, bilinear between samples.
    /// @param lat,lon     degrees
    /// @param load        whether to read samples that are not in memory; that takes milliseconds
    /// @param lowResOnly  true: ask the overview tiles only; false: ask them where there is no tile of one degree
    /// @return metres; 0 while no scan has finished, where there is no tile, and where the tile is not loaded
    double getAltitude(double lat, double lon, bool load, bool lowResOnly);

    /// Surface normal at a point, from the bicubic surface through the samples around it.
    /// @param lat,lon,load,lowResOnly  as for getAltitude
    /// @param x,y,z  receive east, north and up, each component c in [-1, 1] packed as trunc((c + 1) * 127.5).
    ///               128, 128, 255 (straight up) where there is no tile and while no scan has finished; 0, 0, 0 where
    ///               there is a tile that is not loaded, was set aside or does not reach the point: it ends with its
    ///               last row and before its last column
    /// @return whether a scan has finished
    bool getNormal(double lat, double lon, bool load, bool lowResOnly, unsigned char& x, unsigned char& y,
                   unsigned char& z);

private:
    struct Cell;
    class Globe;

    void addTile(std::uint32_t key, TerrainTile* tile);
    bool selectTile(double lat, double lon, bool load);
    bool selectLowResTile(double lat, double lon, bool load);
    bool makeReady(TerrainTile* tile, bool load, std::list<TerrainTile*>& loadedTiles, std::size_t maximum);
    const TerrainTile* tileAt(double lat, double lon, bool load, bool lowResOnly);
    static void* scanThread(void* self);
    void scanEnded();

    std::atomic<bool> mDataReady{false}; // released after the tables are filled, acquired before they are read
    std::string mDataPath;
    Misc::Mutex mMutex; // for none of the calls above
    std::map<std::uint32_t, TerrainTile*> mTiles;
    std::list<TerrainTile*> mLoadedTiles; // in the order of loading
    std::map<std::uint32_t, TerrainTile*> mLowResTiles;
    std::list<TerrainTile*> mLoadedLowResTiles;
    TerrainTile* mCurrentTile = nullptr;
    TerrainTile* mCurrentLowResTile = nullptr;
    std::uint32_t mCurrentKey;
    std::uint32_t mCurrentLowResKey;

    // The tiles of mTiles in the order of the globe: queries for heights spend their time on finding them.
    std::unique_ptr<Globe> mGlobe;

    // Scans that the destructor waits for; the threads are nobody's to join.
    std::mutex mScanMutex;
    std::condition_variable mScanEnded;
    int mRunningScans = 0;
};

} // namespace Tavik::Geodetic
