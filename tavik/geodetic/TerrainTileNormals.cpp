#include <tavik/geodetic/TerrainTile.h>

#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/TerrainTileCell.h>
#include <tavik/math/Interpolation.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

namespace Tavik::Geodetic {

namespace {

constexpr float PackScale = 127.5f;
constexpr std::size_t BytesPerNormal = 3;

/// A component of a normal on the scale of its byte, before it is cut off: [0, 255], the ends by rounding.
float scaled(float component)
{
    return (component + 1.0f) * PackScale;
}

/// The whole part of a scaled component; 0 for NaN.
unsigned char packed(float scaledComponent)
{
    return scaledComponent > 0.0f ? static_cast<unsigned char>(std::min(scaledComponent, 255.0f)) : 0;
}

/// East and north slope of the surface.
struct Slopes
{
    double dx;
    double dy;
};

struct ScaledNormal
{
    float x;
    float y;
    float z;
};

ScaledNormal normalOf(const Slopes& slopes)
{
    const auto x = static_cast<float>(-slopes.dx);
    const auto y = static_cast<float>(-slopes.dy);
    const float s = 1.0f / std::sqrt(x * x + y * y + 1.0f);
    return {scaled(x * s), scaled(y * s), scaled(s)};
}

/// The slopes as they are defined.
/// @param heights  [column][row]
Slopes slopesByInterpolation(const double (&heights)[4][4], double ti, double tj, double latMetres, double lonMetres)
{
    // The scale of each slope comes from the other axis's cell size: it is divided out before the pass along that axis.
    double alongLongitude[4];
    double alongLatitude[4];
    for (int b = 0; b < 4; ++b) {
        double samples[4];
        for (int a = 0; a < 4; ++a) {
            samples[a] = heights[b][a] / latMetres;
        }
        alongLongitude[b] = Math::getCubicValue(samples, ti);
    }
    for (int a = 0; a < 4; ++a) {
        double samples[4];
        for (int b = 0; b < 4; ++b) {
            samples[b] = heights[b][a] / lonMetres;
        }
        alongLatitude[a] = Math::getCubicValue(samples, tj);
    }
    return {Math::getCubicDerivate(alongLongitude, tj), Math::getCubicDerivate(alongLatitude, ti)};
}

/// What each of four samples contributes to the cubic through them, and to its slope.
struct CubicWeights
{
    explicit CubicWeights(double t)
        : value{((-0.5 * t + 1.0) * t - 0.5) * t, (1.5 * t - 2.5) * t * t + 1.0, ((-1.5 * t + 2.0) * t + 0.5) * t,
                (0.5 * t - 0.5) * t * t},
          slope{(-1.5 * t + 2.0) * t - 0.5, (4.5 * t - 5.0) * t, (-4.5 * t + 4.0) * t + 0.5, (1.5 * t - 1.0) * t}
    {}

    double value[4];
    double slope[4];
};

/// The same slopes but for rounding, at a fraction of the cost: no division for each sample, and four rows side by
/// side.
Slopes slopesByWeights(const double (&heights)[4][4], double ti, double tj, double latMetres, double lonMetres)
{
    const CubicWeights latitude(ti);
    const CubicWeights longitude(tj);
    double values[4] = {};
    double slopes[4] = {};
    for (int b = 0; b < 4; ++b) {
        for (int a = 0; a < 4; ++a) {
            values[a] += longitude.value[b] * heights[b][a];
            slopes[a] += longitude.slope[b] * heights[b][a];
        }
    }
    double dx = 0.0;
    double dy = 0.0;
    for (int a = 0; a < 4; ++a) {
        dx += latitude.value[a] * slopes[a];
        dy += latitude.slope[a] * values[a];
    }
    return {dx / latMetres, dy / lonMetres};
}

/// Between cells of at least this size, metres, slopes stay below 3e7, and both ways to them agree to 1e-6.
constexpr double SmallestCellForWeights = 1.0;

/// Scaled components from such slopes agree to 3e-4: half of it from the slopes, half from about ten roundings to
/// single precision in either way. Farther than this from a whole number, both are cut off to the same byte.
constexpr float DoubtfulDistance = 1e-3f;

/// Below this sum of squares a normal is vertical in single precision, and its bytes are those of level ground.
constexpr double LevelSlopeSquared = 1e-8;

bool isDoubtful(float scaledComponent)
{
    const float fraction = scaledComponent - static_cast<float>(static_cast<int>(scaledComponent));
    return !(fraction > DoubtfulDistance && fraction < 1.0f - DoubtfulDistance);
}

/// The normal that slopesByInterpolation gives, or one that is cut off to the same bytes.
ScaledNormal surfaceNormal(const double (&heights)[4][4], double ti, double tj, double latMetres, double lonMetres)
{
    if (latMetres >= SmallestCellForWeights && lonMetres >= SmallestCellForWeights) {
        const Slopes slopes = slopesByWeights(heights, ti, tj, latMetres, lonMetres);
        if (slopes.dx * slopes.dx + slopes.dy * slopes.dy < LevelSlopeSquared) {
            return {PackScale, PackScale, 2 * PackScale};
        }
        const ScaledNormal normal = normalOf(slopes);
        if (!isDoubtful(normal.x) && !isDoubtful(normal.y) && !isDoubtful(normal.z)) {
            return normal;
        }
    }
    return normalOf(slopesByInterpolation(heights, ti, tj, latMetres, lonMetres));
}

/// Packs a vector of any length; 0, 0, 0 where it has no direction.
void packDirection(float nx, float ny, float nz, unsigned char& x, unsigned char& y, unsigned char& z)
{
    const float length = std::sqrt(nx * nx + ny * ny + nz * nz);
    x = packed(scaled(nx / length));
    y = packed(scaled(ny / length));
    z = packed(scaled(nz / length));
}

/// Normals computed side by side before they are written out three bytes apart.
constexpr std::size_t NormalsPerPass = 256;

// Where the bytes of a word in memory stand in its value.
constexpr bool LittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;
constexpr int FirstByteShift = LittleEndian ? 0 : 24;
constexpr int SecondByteShift = LittleEndian ? 8 : 16;
constexpr int ThirdByteShift = LittleEndian ? 16 : 8;

/// The normals of the cells between two columns, south to north, each packed into the first three bytes of a word.
/// @param west,east     heights of the columns, count + 1 of each
/// @param width         metres between the columns
/// @param rowDistances  metres from each row to the next, count of them
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
        const std::uint32_t x = packed(scaled(nx / length));
        const std::uint32_t y = packed(scaled(ny / length));
        const std::uint32_t z = packed(scaled(nz / length));
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

bool TerrainTile::getNormal(double lat, double lon, unsigned char& x, unsigned char& y, unsigned char& z) const
{
    x = y = z = 0;
    std::uint32_t i = 0;
    std::uint32_t j = 0;
    double ti = 0.0;
    double tj = 0.0;
    if (!findNormalCell(lat, lon, i, j, ti, tj)) {
        return false;
    }
    double heights[4][4];
    getNeighbourhood(i, j, heights);
    const ScaledNormal normal = surfaceNormal(heights, ti, tj, mLatSpacingMetres, mLonSpacingMetres);
    x = packed(normal.x);
    y = packed(normal.y);
    z = packed(normal.z);
    return true;
}

/// Rows end at the last sample, columns one before it.
bool TerrainTile::findNormalCell(double lat, double lon, std::uint32_t& i, std::uint32_t& j, double& ti,
                                 double& tj) const
{
    return mLoaded && !mFailed && findCell(lat, mLatOrigin, mLatSpacing, mNumLat, i, ti) &&
           findCell(lon, mLonOrigin, mLonSpacing, mNumLon - 1, j, tj);
}

/// The 4 x 4 heights around a cell, [column][row], extrapolated at the edges.
void TerrainTile::getNeighbourhood(std::uint32_t i, std::uint32_t j, double (&heights)[4][4]) const
{
    const bool inside = i >= 1 && i + 2 < mNumLat && j >= 1 && j + 2 < mNumLon;
    for (int b = 0; b < 4; ++b) {
        for (int a = 0; a < 4; ++a) {
            if (inside) {
                heights[b][a] = sample(i + static_cast<unsigned int>(a) - 1, j + static_cast<unsigned int>(b) - 1);
            } else {
                heights[b][a] = getAltitude(static_cast<int>(i) + a - 1, static_cast<int>(j) + b - 1);
            }
        }
    }
}

bool TerrainTile::getNormalOld(double lat, double lon, unsigned char& x, unsigned char& y, unsigned char& z) const
{
    x = y = z = 0;
    std::uint32_t i = 0;
    std::uint32_t j = 0;
    double ti = 0.0;
    double tj = 0.0;
    if (mNormals == nullptr || !findNormalCell(lat, lon, i, j, ti, tj)) {
        return false;
    }
    const std::size_t north = std::min<std::size_t>(i + 1, mNumLat - 1);
    const std::size_t southWest = i + std::size_t{mNumLat} * j;
    const std::size_t northWest = north + std::size_t{mNumLat} * j;
    const std::size_t corners[4] = {southWest, northWest, northWest + mNumLat, southWest + mNumLat};
    const double distances[4] = {std::sqrt(ti * ti + tj * tj), std::sqrt((1 - ti) * (1 - ti) + tj * tj),
                                 std::sqrt((1 - ti) * (1 - ti) + (1 - tj) * (1 - tj)),
                                 std::sqrt(ti * ti + (1 - tj) * (1 - tj))};
    const double sum = distances[0] + distances[1] + distances[2] + distances[3];
    double n[3] = {};
    for (int corner = 0; corner < 4; ++corner) {
        const unsigned char* normal = mNormals.get() + BytesPerNormal * corners[corner];
        for (int axis = 0; axis < 3; ++axis) {
            n[axis] += (normal[axis] / double{PackScale} - 1.0) / (distances[corner] / sum);
        }
    }
    packDirection(static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2]), x, y, z);
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
    if (numLat == 1 || mNumLon == 1) {
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
