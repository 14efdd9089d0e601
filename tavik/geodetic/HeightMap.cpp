#include <tavik/geodetic/HeightMap.h>

#include <tavik/filesystem/Directory.h>
#include <tavik/geodetic/TerrainTile.h>
#include <tavik/geodetic/TerrainTileCell.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

#include <pthread.h>

namespace Tavik::Geodetic {

namespace {

constexpr std::size_t MaximumLoadedTiles = 300;
constexpr std::size_t MaximumLoadedLowResTiles = 15;

// Coordinates less than this below a whole degree count as that degree: they may have been rounded.
constexpr double RoundingDegrees = 1e-6;

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

/// Degrees counted from 90 S.
double latitudeFromPole(double lat)
{
    return lat + RoundingDegrees + 90.0;
}

/// Degrees counted from 180 W.
double longitudeFromDateLine(double lon)
{
    return lon + RoundingDegrees + 180.0;
}

/// Whether whole degrees are defined and keep within 16 bits; NaN is not. The largest index is left to NoKey.
bool isIndex(double degrees)
{
    return degrees > -1.0 && degrees < static_cast<double>(IndexMask);
}

std::uint32_t wholeDegrees(double degrees)
{
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(degrees));
}

/// The cell of whole degrees around a point.
std::uint32_t keyAt(double lat, double lon)
{
    const double latitude = latitudeFromPole(lat);
    const double longitude = longitudeFromDateLine(lon);
    if (!isIndex(latitude) || !isIndex(longitude)) {
        return NoKey;
    }
    return makeKey(wholeDegrees(longitude), wholeDegrees(latitude));
}

/// The cell of an overview tile around a point: bands from 60 S in steps of 50 degrees, from 180 W in steps of 40.
std::uint32_t lowResKeyAt(double lat, double lon)
{
    constexpr std::uint32_t FirstBand = 30; // 60 S
    const std::uint32_t key = keyAt(lat, lon);
    const std::uint32_t latitudeIndex = key >> IndexBits;
    if (key == NoKey || latitudeIndex < FirstBand) {
        return NoKey;
    }
    return makeKey((key & IndexMask) / 40 * 40, (latitudeIndex - FirstBand) / 50 * 50 + FirstBand);
}

TerrainTile* findIn(const std::map<std::uint32_t, TerrainTile*>& tiles, std::uint32_t key)
{
    const auto found = tiles.find(key);
    return key == NoKey || found == tiles.end() ? nullptr : found->second;
}

/// Whether all coordinates of a cell of whole degrees lie between the first sample and the last, along one axis.
/// @param low  southern or western edge of the cell
bool coversCell(double low, double origin, double spacing, std::uint32_t count)
{
    // The edges are RoundingDegrees lower than the whole degrees; a tenth of that is far more than rounding adds. The
    // quotient rises with the coordinate, so the edges speak for all between them.
    const double first = (low - 1.1 * RoundingDegrees - origin) / spacing;
    const double last = (low + 1.0 - 0.9 * RoundingDegrees - origin) / spacing;
    return spacing > 0.0 && first > -1.0 && last < static_cast<double>(count) - 1.0;
}

/// The end of a path from its last dot on, empty without one.
std::string lastExtension(const std::string& path)
{
    const std::size_t dot = path.rfind('.');
    return dot == std::string::npos ? std::string() : path.substr(dot);
}

} // namespace

/// A cell of whole degrees: its tile, and what a query for a height needs of it, in one line of the cache.
struct alignas(64) HeightMap::Cell
{
    TerrainTile* tile = nullptr;
    const std::int16_t* samples = nullptr; // null unless the tile is loaded and covers the whole cell
    std::size_t latitudeCount = 0;
    double latitudeOrigin = 0.0;
    double longitudeOrigin = 0.0;
    double latitudeSpacing = 0.0;
    double longitudeSpacing = 0.0;

    /// What the tile itself answers for a point of the cell, without having to look for its last row and column.
    double height(double lat, double lon) const
    {
        const double north = (lat - latitudeOrigin) / latitudeSpacing;
        const double east = (lon - longitudeOrigin) / longitudeSpacing;
        const auto i = static_cast<std::int32_t>(north);
        const auto j = static_cast<std::int32_t>(east);
        const std::int16_t* h = samples + (static_cast<std::size_t>(i) + latitudeCount * static_cast<std::size_t>(j));
        return bilinearHeight(h[0], h[1], h[latitudeCount], h[latitudeCount + 1], north - i, east - j);
    }
};

/// The cells of the globe, 90 N and 180 E counting as cells of their own.
class HeightMap::Globe
{
public:
    /// @param row,column  whole degrees from 90 S and 180 W, in [0, 180] and [0, 360]
    /// @return null where there is no tile in the whole row
    const Cell* find(std::uint32_t row, std::uint32_t column) const
    {
        const Cell* cells = mRows[row].get();
        return cells == nullptr ? nullptr : cells + column;
    }

    /// Puts a tile that is not loaded into a cell; does nothing where the key is not on the globe.
    void setTile(std::uint32_t key, TerrainTile* tile)
    {
        const std::uint32_t row = key >> IndexBits;
        const std::uint32_t column = key & IndexMask;
        if (row >= Rows || column >= Columns) {
            return;
        }
        if (mRows[row] == nullptr) {
            mRows[row] = std::make_unique<Cell[]>(Columns);
        }
        mRows[row][column] = Cell();
        mRows[row][column].tile = tile;
    }

    /// To be told whenever the samples of a tile have come or gone. Tiles without a cell here are passed over: overview
    /// tiles, those that another has replaced, and those whose file has moved since they were registered.
    void update(const TerrainTile& tile)
    {
        const std::uint32_t row = tile.latitudeIndex();
        const std::uint32_t column = tile.longitudeIndex();
        if (row >= Rows || column >= Columns || mRows[row] == nullptr || mRows[row][column].tile != &tile) {
            return;
        }
        Cell& cell = mRows[row][column];
        cell.latitudeCount = tile.latitudeCount();
        cell.latitudeOrigin = tile.latitudeOrigin();
        cell.longitudeOrigin = tile.longitudeOrigin();
        cell.latitudeSpacing = tile.latitudeSpacing();
        cell.longitudeSpacing = tile.longitudeSpacing();
        const bool covered =
            coversCell(row - 90.0, cell.latitudeOrigin, cell.latitudeSpacing, tile.latitudeCount()) &&
            coversCell(column - 180.0, cell.longitudeOrigin, cell.longitudeSpacing, tile.longitudeCount());
        cell.samples = tile.loaded() && covered ? tile.samples() : nullptr;
    }

private:
    static constexpr std::uint32_t Rows = 181;
    static constexpr std::uint32_t Columns = 361;

    std::array<std::unique_ptr<Cell[]>, Rows> mRows; // null where there is no tile
};

HeightMap::HeightMap() : mCurrentKey(NoKey), mCurrentLowResKey(NoKey), mGlobe(std::make_unique<Globe>()) {}

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
    mGlobe->setTile(key, tile);
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
    mCurrentTile = findIn(mTiles, key);
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

/// Reads the samples of the tile just selected, if there is one that needs it, and drops those of the tile loaded first
/// if that makes too many.
/// @return false where samples are missing and may not be loaded
bool HeightMap::makeReady(TerrainTile* tile, bool load, std::list<TerrainTile*>& loadedTiles, std::size_t maximum)
{
    if (tile == nullptr || tile->loaded()) {
        return true;
    }
    if (!load) {
        return false;
    }
    tile->loadAllData(); // one that fails takes its place all the same; the next new selection tries it again
    mGlobe->update(*tile);
    loadedTiles.remove(tile);
    loadedTiles.push_back(tile);
    if (loadedTiles.size() > maximum) {
        TerrainTile* first = loadedTiles.front();
        loadedTiles.pop_front();
        first->clear();
        mGlobe->update(*first);
    }
    return true;
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
    if (!mDataReady.load(std::memory_order_acquire)) {
        return 0.0;
    }
    // The usual case in few steps: samples in a cell are those of the tile that a selection would find.
    if (!lowResOnly && std::abs(lat) <= 90.0 && std::abs(lon) <= 180.0) {
        const std::uint32_t row = wholeDegrees(latitudeFromPole(lat));
        const std::uint32_t column = wholeDegrees(longitudeFromDateLine(lon));
        const Cell* cell = mGlobe->find(row, column);
        if (cell != nullptr && cell->samples != nullptr) {
            mCurrentKey = makeKey(column, row);
            mCurrentTile = cell->tile;
            return cell->height(lat, lon);
        }
    }
    double height = 0.0;
    const TerrainTile* tile = tileAt(lat, lon, load, lowResOnly);
    if (tile != nullptr) {
        tile->getAltitude(lat, lon, height);
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
