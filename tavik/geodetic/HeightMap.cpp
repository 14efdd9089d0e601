#include <tavik/geodetic/HeightMap.h>

#include <tavik/filesystem/Directory.h>
#include <tavik/geodetic/TerrainTile.h>

#include <cstdio>
#include <vector>

#include <pthread.h>

namespace Tavik::Geodetic {

namespace {

constexpr std::size_t MaximumLoadedTiles = 300;
constexpr std::size_t MaximumLoadedLowResTiles = 15;

// Whole-degree cells of the globe, both ends included: 90 N and 180 E count as cells of their own.
constexpr std::uint32_t GridRows = 181;
constexpr std::uint32_t GridColumns = 361;

constexpr std::uint32_t IndexBits = 16;
constexpr std::uint32_t IndexMask = 0xFFFF;

/// The key of points outside the range of keys, and of none yet; no lookup finds a tile under it.
constexpr std::uint32_t NoKey = 0xFFFFFFFF;

std::uint32_t makeKey(std::uint32_t longitudeIndex, std::uint32_t latitudeIndex)
{
    return longitudeIndex | latitudeIndex << IndexBits;
}

std::uint32_t keyOf(const TerrainTile& tile)
{
    return makeKey(tile.longitudeIndex(), tile.latitudeIndex());
}

/// Whether the conversion to an index is defined and keeps within 16 bits; NaN is not. The largest index is left to
/// NoKey.
bool isIndex(double value)
{
    return value > -1.0 && value < static_cast<double>(IndexMask);
}

/// The cell of whole degrees around a point. The millionth of a degree makes up for coordinates that were rounded to
/// just below a whole degree.
std::uint32_t keyAt(double lat, double lon)
{
    const double latitude = lat + 1e-6 + 90.0;
    const double longitude = lon + 1e-6 + 180.0;
    if (!isIndex(latitude) || !isIndex(longitude)) {
        return NoKey;
    }
    return makeKey(static_cast<std::uint32_t>(longitude), static_cast<std::uint32_t>(latitude));
}

/// The cell of an overview tile around a point: bands from 60 S in steps of 50 degrees, from 180 W in steps of 40. In
/// 16 bits a latitude south of 60 S becomes a large number that no tile has.
std::uint32_t lowResKeyAt(double lat, double lon)
{
    const std::uint32_t key = keyAt(lat, lon);
    if (key == NoKey) {
        return NoKey;
    }
    const std::uint32_t northOfFirstBand = ((key >> IndexBits) - 30) & IndexMask;
    return makeKey((key & IndexMask) / 40 * 40, northOfFirstBand / 50 * 50 + 30);
}

/// The place of a key in the array of cells.
/// @return false where the cell is not on the globe
bool gridIndex(std::uint32_t key, std::size_t& index)
{
    const std::uint32_t row = key >> IndexBits;
    const std::uint32_t column = key & IndexMask;
    index = std::size_t{row} * GridColumns + column;
    return row < GridRows && column < GridColumns;
}

/// Reads a tile's samples, and drops those of the tile loaded first where that makes too many.
void loadSamples(TerrainTile& tile, std::list<TerrainTile*>& loadedTiles, std::size_t maximum)
{
    tile.loadAllData(); // a tile that fails takes its place all the same, and is tried again by the next new selection
    loadedTiles.remove(&tile);
    loadedTiles.push_back(&tile);
    if (loadedTiles.size() > maximum) {
        loadedTiles.front()->clear();
        loadedTiles.pop_front();
    }
}

/// Makes a tile that was just selected ready for queries, where it may.
/// @param tile  null where there is none
/// @return whether there is nothing to load, or loading was tried
bool makeReady(TerrainTile* tile, bool load, std::list<TerrainTile*>& loadedTiles, std::size_t maximum)
{
    if (tile == nullptr || tile->loaded()) {
        return true;
    }
    if (load) {
        loadSamples(*tile, loadedTiles, maximum);
    }
    return load;
}

TerrainTile* findIn(const std::map<std::uint32_t, TerrainTile*>& tiles, std::uint32_t key)
{
    const auto found = tiles.find(key);
    return key == NoKey || found == tiles.end() ? nullptr : found->second;
}

/// The end of a path from its last dot on, empty without one.
std::string lastExtension(const std::string& path)
{
    const std::size_t dot = path.rfind('.');
    return dot == std::string::npos ? std::string() : path.substr(dot);
}

} // namespace

HeightMap::HeightMap()
    : mCurrentKey(NoKey), mCurrentLowResKey(NoKey),
      mTileGrid(std::make_unique<TerrainTile*[]>(std::size_t{GridRows} * GridColumns))
{}

HeightMap::~HeightMap()
{
    std::unique_lock<std::mutex> lock(mScanMutex);
    mScanEnded.wait(lock, [this] { return mRunningScans == 0; });
}

void HeightMap::setDataPath(const std::string& path)
{
    mDataPath = path;
}

int HeightMap::loadData()
{
    {
        const std::lock_guard<std::mutex> lock(mScanMutex);
        ++mRunningScans;
    }
    pthread_t thread = {};
    const int status = pthread_create(&thread, nullptr, scanThread, this);
    if (status == 0) {
        pthread_detach(thread);
    } else {
        scanEnded();
    }
    return status;
}

void* HeightMap::scanThread(void* self)
{
    loadThreadEntry(self);
    static_cast<HeightMap*>(self)->scanEnded();
    return nullptr;
}

void HeightMap::scanEnded()
{
    // Notified under the lock: once it is released the object may be gone.
    const std::lock_guard<std::mutex> lock(mScanMutex);
    --mRunningScans;
    mScanEnded.notify_all();
}

void* HeightMap::loadThreadEntry(void* self)
{
    static_cast<HeightMap*>(self)->loadThread();
    return nullptr;
}

void HeightMap::loadThread()
{
    readDirectory(mDataPath);
    mDataReady.store(true, std::memory_order_release);
}

void HeightMap::readDirectory(const std::string& basePath)
{
    const std::vector<std::string> entries = FileSystem::Directory(basePath).entryList(true);
    std::printf("basePath <%s> size %d\n", basePath.c_str(), static_cast<int>(entries.size()));
    for (const std::string& entry : entries) {
        const std::string extension = lastExtension(entry);
        if (extension == ".DT1") {
            readTileDTED(entry);
        } else if (extension == ".zip") {
            readTileHGT(entry);
        }
    }
}

void HeightMap::readTileDTED(const std::string& path)
{
    auto* tile = new TerrainTile;
    tile->loadTile(path);
    const std::uint32_t key = keyOf(*tile);
    std::printf("read DT File <%s> %d %d 0x%x size %d\n", path.c_str(), static_cast<int>(tile->latitudeIndex() - 90),
                static_cast<int>(tile->longitudeIndex() - 180), key, static_cast<int>(mTiles.size()));
    addTile(key, tile);
}

void HeightMap::readTileHGT(const std::string& path)
{
    auto* tile = new TerrainTile;
    tile->loadTileHGT(path);
    const std::uint32_t key = keyOf(*tile);
    if (tile->isLowRes()) {
        mLowResTiles[key] = tile;
    } else {
        addTile(key, tile);
    }
}

void HeightMap::addTile(std::uint32_t key, TerrainTile* tile)
{
    mTiles[key] = tile;
    std::size_t index = 0;
    if (gridIndex(key, index)) {
        mTileGrid[index] = tile;
    }
}

TerrainTile* HeightMap::findTile(std::uint32_t key) const
{
    std::size_t index = 0;
    return gridIndex(key, index) ? mTileGrid[index] : findIn(mTiles, key);
}

bool HeightMap::getCurrentTile(double lat, double lon, bool load)
{
    return mDataReady.load(std::memory_order_acquire) && selectTile(lat, lon, load);
}

bool HeightMap::selectTile(double lat, double lon, bool load)
{
    const std::uint32_t key = keyAt(lat, lon);
    if (key == mCurrentKey) {
        return true;
    }
    mCurrentKey = key;
    mCurrentTile = findTile(key);
    return makeReady(mCurrentTile, load, mLoadedTiles, MaximumLoadedTiles);
}

bool HeightMap::getCurrentTileLowRes(double lat, double lon, bool load)
{
    return mDataReady.load(std::memory_order_acquire) && selectLowResTile(lat, lon, load);
}

bool HeightMap::selectLowResTile(double lat, double lon, bool load)
{
    const std::uint32_t key = lowResKeyAt(lat, lon);
    if (key == mCurrentLowResKey) {
        return true;
    }
    mCurrentLowResKey = key;
    mCurrentLowResTile = findIn(mLowResTiles, key);
    return makeReady(mCurrentLowResTile, load, mLoadedLowResTiles, MaximumLoadedLowResTiles);
}

const TerrainTile* HeightMap::tileAt(double lat, double lon, bool load, bool lowResOnly)
{
    if (!lowResOnly) {
        selectTile(lat, lon, load);
        if (mCurrentTile != nullptr) {
            return mCurrentTile;
        }
    }
    selectLowResTile(lat, lon, load);
    return mCurrentLowResTile;
}

double HeightMap::getAltitude(double lat, double lon, bool load, bool lowResOnly)
{
    double height = 0.0;
    if (mDataReady.load(std::memory_order_acquire)) {
        const TerrainTile* tile = tileAt(lat, lon, load, lowResOnly);
        if (tile != nullptr) {
            tile->getAltitude(lat, lon, height);
        }
    }
    return height;
}

bool HeightMap::getNormal(double lat, double lon, bool load, bool lowResOnly, unsigned char& x, unsigned char& y,
                          unsigned char& z)
{
    x = 128;
    y = 128;
    z = 255;
    if (!mDataReady.load(std::memory_order_acquire)) {
        return false;
    }
    const TerrainTile* tile = tileAt(lat, lon, load, lowResOnly);
    if (tile != nullptr) {
        tile->getNormal(lat, lon, x, y, z);
    }
    return true;
}

} // namespace Tavik::Geodetic
