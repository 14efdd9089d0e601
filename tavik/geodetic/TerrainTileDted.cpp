#include <tavik/geodetic/TerrainTile.h>

#include <tavik/filesystem/ArchiveFile.h>
#include <tavik/geodetic/TerrainTileSamples.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

// Format: MIL-PRF-89020, Digital Terrain Elevation Data.

namespace Tavik::Geodetic {

namespace {

constexpr double TenthsOfSecondsPerDegree = 36000.0;

constexpr unsigned int UserHeaderLength = 80;
constexpr unsigned int DataSetIdentificationLength = 648;
constexpr unsigned int AccuracyLength = 2700;

// Each column stands between a sentinel with counts and a checksum.
constexpr std::size_t RecordHeaderLength = 8;
constexpr std::size_t RecordChecksumLength = 4;

/// Columns read at a time: few calls, yet a piece of a level 1 tile that stays in the second-level cache.
constexpr std::size_t ColumnsPerRead = 64;

/// @return null, after saying so, where the file cannot be opened
FileSystem::ArchiveFile openTile(const std::string& path)
{
    FileSystem::ArchiveFile file = FileSystem::openWithoutWaiting(path);
    if (file == nullptr) {
        std::printf("could not open data file <%s>\n", path.c_str());
        return file;
    }
    // Scans open thousands of files for a few bytes, and samples are read in large pieces: no buffer to set up or to
    // copy from.
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    return file;
}

/// The first header record; empty where memory is short.
std::string readUserHeader(std::FILE* file)
{
    std::string record;
    TerrainTile::readString(file, record, UserHeaderLength);
    return record;
}

int number(const std::string& record, std::size_t offset, std::size_t length)
{
    return std::atoi(record.substr(offset, length).c_str());
}

/// A coordinate written DDDMMSSH.
/// @param negative  the hemisphere's letter for which degrees count downwards
double coordinate(const std::string& record, std::size_t offset, char negative)
{
    const double degrees =
        number(record, offset, 3) + number(record, offset + 3, 2) / 60.0 + number(record, offset + 5, 2) / 3600.0;
    return record[offset + 7] == negative ? -degrees : degrees;
}

std::uint32_t count(const std::string& record, std::size_t offset)
{
    return static_cast<std::uint32_t>(std::max(0, number(record, offset, 4)));
}

/// Takes samples out of a data record one by one, smoothing the one before each.
/// @param words   elevations of the record, south first
/// @param column  heights of the column, of which the first `next` are there
void readColumn(const unsigned char* words, std::int16_t* column, std::size_t next, std::size_t count)
{
    for (std::size_t k = next; k < count; ++k) {
        column[k] = heightFromWord(words + 2 * k);
        if (k >= 2 && column[k - 2] == column[k - 1]) {
            // Whole numbers below 2^16: the integer division is the truncated mean.
            column[k - 1] = static_cast<std::int16_t>((column[k - 1] + column[k]) / 2);
        }
    }
}

/// Means of eight pairs, rounded toward zero.
EightSamples truncatedMean(EightSamples a, EightSamples b)
{
    const EightSamples differentBits = a ^ b;
    const EightSamples mean = (a & b) + (differentBits >> 1); // rounded down, without overflow
    return mean + (differentBits & 1 & (mean < 0));
}

/// readColumn for eight columns side by side, as far as whole blocks of eight samples go: what smoothing makes of a
/// sample decides about the next one, so a single column keeps the processor waiting.
/// @return number of samples taken from each record
std::size_t readEightColumns(const unsigned char* words, std::size_t recordLength, std::int16_t* columns,
                             std::size_t count)
{
    EightSamples last = {};
    for (std::size_t c = 0; c < 8; ++c) {
        last[c] = heightFromWord(words + c * recordLength);
    }
    EightSamples lastButOne = ~last; // differs everywhere: the southernmost sample is never smoothed
    std::size_t next = 1;
    for (; next + 8 <= count; next += 8) {
        EightSamples block[8];
        for (std::size_t c = 0; c < 8; ++c) {
            block[c] = heightsFromWords(words + c * recordLength + 2 * next);
        }
        transpose(block);
        for (EightSamples& samples : block) {
            const EightSamples current = samples;
            const EightSamples equal = last == lastButOne;
            samples = (truncatedMean(last, current) & equal) | (last & ~equal);
            lastButOne = samples;
            last = current;
        }
        transpose(block);
        for (std::size_t c = 0; c < 8; ++c) {
            store(block[c], columns + c * count + next - 1);
        }
    }
    for (std::size_t c = 0; c < 8; ++c) {
        columns[c * count + next - 1] = last[c];
    }
    return next;
}

void readColumns(const unsigned char* records, std::size_t recordLength, std::int16_t* columns, std::size_t columnCount,
                 std::size_t count)
{
    const unsigned char* words = records + RecordHeaderLength;
    std::size_t next = 0;
    for (std::size_t c = 0; c < columnCount; ++c) {
        if (c % 8 == 0) {
            next = columnCount - c >= 8 ? readEightColumns(words, recordLength, columns, count) : 0;
        }
        readColumn(words, columns, next, count);
        words += recordLength;
        columns += count;
    }
}

} // namespace

bool TerrainTile::loadTile(const std::string& path)
{
    clear();
    mFileName = path;
    const FileSystem::ArchiveFile file = openTile(path);
    if (file == nullptr) {
        return false;
    }
    mFormat = 0;
    takeUserHeader(readUserHeader(file.get()));
    return true;
}

void TerrainTile::loadHeader(std::FILE* file)
{
    takeUserHeader(readUserHeader(file));
    std::string ignored;
    readString(file, ignored, DataSetIdentificationLength + AccuracyLength);
}

void TerrainTile::takeUserHeader(const std::string& record)
{
    if (record.size() != UserHeaderLength) {
        return;
    }
    const std::uint32_t numLon = count(record, 47);
    const std::uint32_t numLat = count(record, 51);
    if (mHeights != nullptr && (numLat != mNumLat || numLon != mNumLon)) {
        return;
    }
    mLonOrigin = coordinate(record, 4, 'W');
    mLatOrigin = coordinate(record, 12, 'S');
    setGrid(numLat, numLon, number(record, 24, 4) / TenthsOfSecondsPerDegree,
            number(record, 20, 4) / TenthsOfSecondsPerDegree);
}

void TerrainTile::loadData(std::FILE* file)
{
    setSamples(nullptr);
    const std::size_t count = mNumLat;
    const std::size_t recordLength = RecordHeaderLength + 2 * count + RecordChecksumLength;
    const std::size_t columnsPerRead = std::min<std::size_t>(mNumLon, ColumnsPerRead);
    if (file == nullptr || count == 0 || columnsPerRead == 0) {
        return;
    }
    const std::unique_ptr<unsigned char[]> records(new (std::nothrow) unsigned char[columnsPerRead * recordLength]);
    std::size_t length = records != nullptr ? std::fread(records.get(), 1, columnsPerRead * recordLength, file) : 0;
    if (length <= RecordHeaderLength) {
        return; // without a single sample there is no need for room either
    }
    std::unique_ptr<std::int16_t[]> samples(new (std::nothrow) std::int16_t[count * mNumLon]);
    if (samples == nullptr) {
        return;
    }
    for (std::size_t column = 0; column < mNumLon; column += columnsPerRead) {
        const std::size_t columns = std::min(columnsPerRead, mNumLon - column);
        if (column > 0) {
            length = std::fread(records.get(), 1, columns * recordLength, file);
        }
        std::memset(records.get() + length, 0, columns * recordLength - length);
        readColumns(records.get(), recordLength, samples.get() + column * count, columns, count);
    }
    setSamples(std::move(samples));
}

bool TerrainTile::loadAllDataDTED()
{
    if (mFailed) {
        return false;
    }
    const FileSystem::ArchiveFile file = openTile(mFileName);
    if (file == nullptr) {
        mFailed = true;
        return false;
    }
    loadHeader(file.get());
    if (mHeights == nullptr) {
        loadData(file.get());
    }
    mLoaded = mHeights != nullptr;
    return mLoaded;
}

} // namespace Tavik::Geodetic
