#include <tavik/geodetic/TerrainTile.h>

#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/TerrainTileCell.h>
#include <tavik/geodetic/TerrainTilePacking.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

namespace Tavik::Geodetic {

namespace {

constexpr std::size_t BytesPerNormal = 3;

/// Normals computed side by side before they are written out three bytes apart.
constexpr std::size_t NormalsPerPass = 256;

// Where the bytes of a word in memory stand in its value.
constexpr bool LittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;
constexpr int FirstByteShift = LittleEndian ? 0 : 24;
constexpr int SecondByteShift = LittleEndian ? 8 : 16;
constexpr int ThirdByteShift = LittleEndian ? 16 : 8;

/// The normals of the cells between two columns, south to north, each packed into the first three bytes of a word.
/// @param west,east     heights of the columns, count + 1 of each
/// @param width         metres between the columns, not 0
/// @param rowDistances  metres from each row to the next, count of them, not 0
void packCellNormals(const std::int16_t* west, const std::int16_t* east, float width, const float* rowDistances,
                     std::size_t count, std::uint32_t* packedNormals)
{
    for (std::size_t i = 0; i < count; ++i) {
        // The sum of the normals of the triangles P0 P1 P2 and P0 P2 P3, corners counted clockwise from the south-west.
        // The terms with the differences that are 0 by construction, P1's to the east and P3's to the north, are left
        // out.
        const float distance = rowDistances[i];
        const auto dh1 = static_cast<float>(west[i + 1] - west[i]);
        const auto dh2 = static_cast<float>(east[i + 1] - west[i]);
        const auto dh3 = static_cast<float>(east[i] - west[i]);
        const float nx = (distance * dh1 - dh2 * distance) - dh3 * distance;
        const float ny = -(dh1 * width) + (width * dh3 - dh2 * width);
        const float nz = distance * width + distance * width;
        const float length = std::sqrt(nx * nx + ny * ny + nz * nz);
        const auto x = static_cast<std::uint32_t>(static_cast<int>(scaled(nx / length)));
        const auto y = static_cast<std::uint32_t>(static_cast<int>(scaled(ny / length)));
        const auto z = static_cast<std::uint32_t>(static_cast<int>(scaled(nz / length)));
        packedNormals[i] = x << FirstByteShift | y << SecondByteShift | z << ThirdByteShift;
    }
}

/// Writes the packed normals of the cells between two columns, and overwrites one byte behind them.
/// Arguments as for packCellNormals, any count.
void packColumnNormals(const std::int16_t* west, const std::int16_t* east, float width, const float* rowDistances,
                       std::size_t count, unsigned char* normals)
{
    std::uint32_t words[NormalsPerPass];
    for (std::size_t start = 0; start < count; start += NormalsPerPass) {
        const std::size_t length = std::min(NormalsPerPass, count - start);
        packCellNormals(west + start, east + start, width, rowDistances + start, length, words);
        for (std::size_t i = 0; i < length; ++i) {
            std::memcpy(normals, &words[i], sizeof words[i]); // whose fourth byte the next normal overwrites
            normals += BytesPerNormal;
        }
    }
}

} // namespace

bool TerrainTile::getNormalOld(double lat, double lon, unsigned char& x, unsigned char& y, unsigned char& z) const
{
    x = y = z = 0;
    Cell cell;
    if (mNormals == nullptr || !findNormalCell(lat, lon, cell)) {
        return false;
    }
    const double ti = cell.ti;
    const double tj = cell.tj;
    const std::size_t north = std::min(cell.i + 1, mNumLat - 1);
    const std::size_t southWest = cell.i + std::size_t{mNumLat} * cell.j;
    const std::size_t northWest = north + std::size_t{mNumLat} * cell.j;
    const std::size_t corners[4] = {southWest, northWest, northWest + mNumLat, southWest + mNumLat};
    const double distances[4] = {std::sqrt(ti * ti + tj * tj), std::sqrt((1 - ti) * (1 - ti) + tj * tj),
                                 std::sqrt((1 - ti) * (1 - ti) + (1 - tj) * (1 - tj)),
                                 std::sqrt(ti * ti + (1 - tj) * (1 - tj))};
    const double sum = distances[0] + distances[1] + distances[2] + distances[3];
    double blended[3] = {};
    for (int corner = 0; corner < 4; ++corner) {
        const unsigned char* normal = mNormals.get() + BytesPerNormal * corners[corner];
        for (int axis = 0; axis < 3; ++axis) {
            blended[axis] += (normal[axis] / double{PackScale} - 1.0) / (distances[corner] / sum);
        }
    }
    const auto nx = static_cast<float>(blended[0]);
    const auto ny = static_cast<float>(blended[1]);
    const auto nz = static_cast<float>(blended[2]);
    const float length = std::sqrt(nx * nx + ny * ny + nz * nz);
    x = packed(nx / length);
    y = packed(ny / length);
    z = packed(nz / length);
    return true;
}

void TerrainTile::calcNormals()
{
    if (mNumLat == 0 || mNumLon == 0) {
        mFailed = true;
        std::puts("TerrainTile::calcNormals load failed");
        return;
    }
    if (mHeights == nullptr) {
        return;
    }
    const std::size_t numLat = mNumLat;
    const std::size_t columnLength = BytesPerNormal * numLat;
    const std::unique_ptr<float[]> rowDistances(new (std::nothrow) float[numLat]);
    if (mNormals == nullptr && rowDistances != nullptr) {
        mNormals.reset(new (std::nothrow) unsigned char[columnLength * mNumLon]);
    }
    if (mNormals == nullptr || rowDistances == nullptr) {
        return;
    }
    if (numLat == 1 || mNumLon == 1 || mLatSpacing == 0.0 || mLonSpacing == 0.0) { // no cells, or none with an area
        std::memset(mNormals.get(), 0, columnLength * mNumLon);
        return;
    }
    // In the local plane a row keeps its distance north in all columns, and a column its distance east in all rows.
    double east = 0.0;
    double north = 0.0;
    const auto northOf = [&](std::uint32_t i) {
        latLong2Grid(mLatOrigin, mLonOrigin, mLatOrigin + mLatSpacing * i, mLonOrigin, east, north);
        return north;
    };
    const auto eastOf = [&](std::uint32_t j) {
        latLong2Grid(mLatOrigin, mLonOrigin, mLatOrigin, mLonOrigin + mLonSpacing * j, east, north);
        return east;
    };
    for (std::uint32_t i = 0; i + 1 < mNumLat; ++i) {
        rowDistances[i] = static_cast<float>(northOf(i + 1) - northOf(i));
    }
    for (std::uint32_t j = 0; j + 1 < mNumLon; ++j) {
        const auto width = static_cast<float>(eastOf(j + 1) - eastOf(j));
        const std::int16_t* west = mHeights.get() + numLat * j;
        unsigned char* column = mNormals.get() + columnLength * j;
        packColumnNormals(west, west + numLat, width, rowDistances.get(), numLat - 1, column);
        unsigned char* northEnd = column + columnLength - BytesPerNormal;
        std::memcpy(northEnd, northEnd - BytesPerNormal, BytesPerNormal);
    }
    // The easternmost column repeats its neighbour up to the north-east sample, which has no cell at all.
    unsigned char* lastColumn = mNormals.get() + columnLength * (mNumLon - 1);
    std::memcpy(lastColumn, lastColumn - columnLength, columnLength - BytesPerNormal);
    std::memset(lastColumn + columnLength - BytesPerNormal, 0, BytesPerNormal);
}

} // namespace Tavik::Geodetic
