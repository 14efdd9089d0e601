#include <tavik/geodetic/TerrainTile.h>

#include <tavik/filesystem/MemberInflater.h>
#include <tavik/filesystem/ZipFile.h>
#include <tavik/geodetic/TerrainTileSamples.h>
#include <tavik/misc/StringFields.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace Tavik::Geodetic {

namespace {

constexpr std::size_t ShortestPath = 7; // N47E011

/// Latitude span of an overview tile, degrees: its name gives the northern edge.
constexpr double OverviewSpan = 50.0;

/// What the size of the height file tells.
struct SrtmGrid
{
    std::uint32_t bytes;
    std::uint32_t numLat;
    std::uint32_t numLon;
    double spacing; // degrees
};

constexpr SrtmGrid SrtmGrids[] = {
    {2884802, 1201, 1201, 0.0008333333333333334},
    {25934402, 3601, 3601, 0.0002777777777777778},
    {57600000, 6000, 4800, 0.008333333333333333},
};

/// Rows inflated at a time. They stay in the second-level cache until they have been turned into columns, and give each
/// column two cache lines.
constexpr std::size_t RowsPerPiece = 64;

/// Whether the last piece of every grid has a whole block of eight rows, as placeRows wants it.
constexpr bool lastPiecesAreLongEnough()
{
    for (const SrtmGrid& grid : SrtmGrids) {
        if (grid.numLat % RowsPerPiece < 8) {
            return false;
        }
    }
    return true;
}
static_assert(lastPiecesAreLongEnough());

const SrtmGrid* findGrid(std::uint32_t bytes)
{
    for (const SrtmGrid& grid : SrtmGrids) {
        if (grid.bytes == bytes) {
            return &grid;
        }
    }
    return nullptr;
}

/// Degrees in a file name, negated where the letter stands for the given hemisphere.
double degreesOf(const std::string& name, std::size_t letter, std::size_t digits, std::size_t length, char negative)
{
    const double degrees = std::atoi(name.substr(digits, length).c_str());
    return std::toupper(static_cast<unsigned char>(name[letter])) == negative ? -degrees : degrees;
}

/// Turns rows of a height file into the same piece of every column.
/// @param rows      rowCount (8 at least) times numLon big-endian words, north row first
/// @param southRow  where the first column's height for the southernmost of these rows goes
void placeRows(const unsigned char* rows, std::size_t rowCount, std::int16_t* southRow, const SrtmGrid& grid)
{
    const std::size_t rowLength = 2 * std::size_t{grid.numLon};
    for (std::size_t left = 0; left < grid.numLon; left += 8) {
        // The last blocks of eight overlap the ones before them instead of being shorter.
        const std::size_t column = std::min<std::size_t>(left, grid.numLon - 8);
        for (std::size_t top = 0; top < rowCount; top += 8) {
            const std::size_t row = std::min(top, rowCount - 8);
            EightSamples block[8];
            for (std::size_t k = 0; k < 8; ++k) {
                block[7 - k] = heightsFromWords(rows + (row + k) * rowLength + 2 * column);
            }
            transpose(block);
            std::int16_t* south = southRow + (rowCount - 8 - row);
            for (std::size_t k = 0; k < 8; ++k) {
                store(block[k], south + (column + k) * grid.numLat);
            }
        }
    }
}

/// Inflates a height file and places its samples; null where it is damaged or memory is short.
std::unique_ptr<std::int16_t[]> readSamples(FileSystem::MemberInflater& inflater, const SrtmGrid& grid)
{
    const std::size_t rowLength = 2 * std::size_t{grid.numLon};
    const std::unique_ptr<unsigned char[]> rows(new (std::nothrow) unsigned char[RowsPerPiece * rowLength]);
    std::unique_ptr<std::int16_t[]> samples(new (std::nothrow) std::int16_t[grid.bytes / 2]);
    if (rows == nullptr || samples == nullptr) {
        return nullptr;
    }
    std::size_t rowCount = 0;
    for (std::size_t rowsLeft = grid.numLat; rowsLeft > 0; rowsLeft -= rowCount) {
        rowCount = std::min(RowsPerPiece, rowsLeft);
        const std::size_t length = inflater.read(rows.get(), rowCount * rowLength);
        std::memset(rows.get() + length, 0, rowCount * rowLength - length);
        placeRows(rows.get(), rowCount, samples.get() + (rowsLeft - rowCount), grid);
    }
    if (!inflater.finish()) {
        samples.reset();
    }
    return samples;
}

} // namespace

bool TerrainTile::loadTileHGT(const std::string& path)
{
    if (path.size() < ShortestPath) {
        return false;
    }
    clear();
    mFileName = path;
    mFormat = 1;
    const std::string name = Misc::StringSection(path, "/", -1, -1);
    const std::string kind = Misc::StringSection(name, ".", 1, 1);
    if (kind == "SRTMGL1" || kind == "SRTMGL3") { // N47E011
        mLatOrigin = degreesOf(name, 0, 1, 2, 'S');
        mLonOrigin = degreesOf(name, 3, 4, 3, 'W');
        mLowRes = false;
    } else if (kind == "SRTMGL30") { // E020N40
        mLonOrigin = degreesOf(name, 0, 1, 3, 'W');
        mLatOrigin = degreesOf(name, 4, 5, 2, 'S') - OverviewSpan;
        mLowRes = true;
    }
    return true;
}

bool TerrainTile::loadAllDataHGT()
{
    FileSystem::ZipFile archive(mFileName);
    if (!archive.exists() || archive.members().empty()) {
        return false;
    }
    const FileSystem::ZipFile::FileData& member = archive.members().front();
    const SrtmGrid* grid = findGrid(member.uncompressedSize);
    if (grid == nullptr) {
        return false;
    }
    FileSystem::MemberInflater inflater(mFileName, member);
    if (!inflater.isOpen()) {
        return false;
    }
    std::unique_ptr<std::int16_t[]> samples = readSamples(inflater, *grid);
    if (samples == nullptr) {
        return false;
    }
    setSamples(std::move(samples));
    setGrid(grid->numLat, grid->numLon, grid->spacing, grid->spacing);
    mLoaded = true;
    return true;
}

} // namespace Tavik::Geodetic
