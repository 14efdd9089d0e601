#include <tavik/geodetic/TerrainTile.h>

#include <tavik/geodetic/TerrainTileCell.h>
#include <tavik/geodetic/TerrainTilePacking.h>
#include <tavik/geodetic/TerrainTileSamples.h>
#include <tavik/math/Interpolation.h>

#include <cmath>
#include <cstring>

namespace Tavik::Geodetic {

namespace {

// Level ground.
constexpr unsigned char LevelByte = 127;
constexpr unsigned char VerticalByte = 255;

/// One number for each axis, latitude first; or one for each of two rows. Small vectors that every processor has.
using Pair = double __attribute__((vector_size(16)));
using FourInts = std::int32_t __attribute__((vector_size(16)));
using TwoWords = std::int64_t __attribute__((vector_size(16)));

inline Pair ofLongitude(Pair both)
{
    return __builtin_shufflevector(both, both, 1, 1);
}

inline Pair ofLatitude(Pair southern, Pair northern)
{
    return __builtin_shufflevector(southern, northern, 0, 2);
}

/// What each of the four samples along either axis contributes to the cubic through them, and to its slope.
struct CubicWeights
{
    /// @param t  positions between the middle samples, in [0, 1)
    explicit CubicWeights(Pair t)
    {
        const Pair u = 1.0 - t;
        const Pair tu = t * u;
        const Pair negativeHalfTu = -0.5 * tu;
        const Pair r = 1.5 * t;
        const Pair threeR = 3.0 * r;
        const Pair rise = r - 0.5;
        value[0] = negativeHalfTu * u;
        value[1] = u + tu * (1.0 - r);
        value[2] = t + tu * rise;
        value[3] = negativeHalfTu * t;
        slope[0] = u * rise;
        slope[1] = t * (threeR - 5.0);
        slope[2] = u * (threeR + 0.5);
        slope[3] = t * (r - 1.0);
    }

    Pair value[4];
    Pair slope[4];
};

/// Four samples of a column.
struct FourRows
{
    explicit FourRows(const std::int16_t* samples)
    {
        std::int64_t bits = 0;
        std::memcpy(&bits, samples, sizeof bits);
        const auto words = reinterpret_cast<EightSamples>(TwoWords{bits, 0});
        // Each sample twice, of which the upper one is shifted down with its sign.
        const auto rows =
            reinterpret_cast<FourInts>(__builtin_shufflevector(words, words, 0, 0, 1, 1, 2, 2, 3, 3)) >> 16;
        south = Pair{static_cast<double>(rows[0]), static_cast<double>(rows[1])};
        north = Pair{static_cast<double>(rows[2]), static_cast<double>(rows[3])};
    }

    FourRows(Pair southern, Pair northern) : south(southern), north(northern) {}

    Pair south;
    Pair north;
};

inline FourRows operator*(const FourRows& rows, Pair weight)
{
    return {rows.south * weight, rows.north * weight};
}

inline FourRows operator+(const FourRows& a, const FourRows& b)
{
    return {a.south + b.south, a.north + b.north};
}

/// The four samples of each row together, by the longitude's weights.
inline FourRows alongRows(const FourRows (&columns)[4], const Pair (&weights)[4])
{
    return columns[0] * ofLongitude(weights[0]) + columns[1] * ofLongitude(weights[1]) +
           columns[2] * ofLongitude(weights[2]) + columns[3] * ofLongitude(weights[3]);
}

/// The four rows together, by the latitude's weights.
inline double alongColumn(const FourRows& rows, const Pair (&weights)[4])
{
    const Pair products =
        rows.south * ofLatitude(weights[0], weights[1]) + rows.north * ofLatitude(weights[2], weights[3]);
    return products[0] + products[1];
}

/// Between cells of at least this size, metres, slopes stay below 2e5, and whichever way they are computed agree to
/// 1e-8.
constexpr double SmallestCellForWeights = 1.0;

/// Scaled components then agree to 1.7e-4: about ten roundings to single precision, of 2^-24 each, go into either of
/// them. Farther than this from a whole number, both are cut off to the same byte.
constexpr float DoubtfulDistance = 4e-4f;

/// Below this slope a normal is vertical in single precision, and its bytes are those of level ground.
constexpr float LevelSlope = 1e-4f;

/// Whether rounding may decide about the whole part of a scaled component.
bool isDoubtful(float scaledComponent, int wholePart)
{
    return std::abs(scaledComponent - static_cast<float>(wholePart) - 0.5f) > 0.5f - DoubtfulDistance;
}

/// The normal by precomputed weights: no division for each sample, and rows and axes side by side.
/// @param southWest  the first of the 4 x 4 samples
/// @param stride     samples from one column to the next
/// @param ti,tj      position in the middle cell, in [0, 1)
/// @return false where rounding may decide about a byte; the bytes are good otherwise
[[gnu::always_inline]] inline bool packNormalByWeights(const std::int16_t* southWest, std::size_t stride, double ti,
                                                       double tj, double latMetres, double lonMetres, unsigned char& x,
                                                       unsigned char& y, unsigned char& z)
{
    const CubicWeights weights(Pair{ti, tj});
    const FourRows columns[4] = {FourRows(southWest), FourRows(southWest + stride), FourRows(southWest + 2 * stride),
                                 FourRows(southWest + 3 * stride)};
    const double dx = alongColumn(alongRows(columns, weights.slope), weights.value);
    const double dy = alongColumn(alongRows(columns, weights.value), weights.slope);
    // The vector (-dx, -dy, 1) times both cell sizes, which saves dividing by them.
    const auto nx = static_cast<float>(-dx * lonMetres);
    const auto ny = static_cast<float>(-dy * latMetres);
    const auto nz = static_cast<float>(latMetres * lonMetres);
    const float s = 1.0f / std::sqrt(nx * nx + ny * ny + nz * nz);
    const float scaledX = scaled(nx * s);
    const float scaledY = scaled(ny * s);
    const float scaledZ = scaled(nz * s);
    const int wholeX = static_cast<int>(scaledX);
    const int wholeY = static_cast<int>(scaledY);
    const int wholeZ = static_cast<int>(scaledZ);
    if (isDoubtful(scaledX, wholeX) || isDoubtful(scaledY, wholeY) || isDoubtful(scaledZ, wholeZ)) {
        // Level ground, which is common, is always near a whole number.
        x = y = LevelByte;
        z = VerticalByte;
        return nx * nx + ny * ny < LevelSlope * LevelSlope * nz * nz;
    }
    x = static_cast<unsigned char>(wholeX);
    y = static_cast<unsigned char>(wholeY);
    z = static_cast<unsigned char>(wholeZ);
    return true;
}

} // namespace

bool TerrainTile::getNormal(double lat, double lon, unsigned char& x, unsigned char& y, unsigned char& z) const
{
    x = y = z = 0;
    Cell cell;
    if (!findNormalCell(lat, lon, cell)) {
        return false;
    }
    const bool inside = cell.i >= 1 && cell.i + 2 < mNumLat && cell.j >= 1 && cell.j + 2 < mNumLon;
    if (inside && mLatSpacingMetres >= SmallestCellForWeights && mLonSpacingMetres >= SmallestCellForWeights) {
        const std::int16_t* southWest = mHeights.get() + (cell.i - 1) + std::size_t{mNumLat} * (cell.j - 1);
        if (packNormalByWeights(southWest, mNumLat, cell.ti, cell.tj, mLatSpacingMetres, mLonSpacingMetres, x, y, z)) {
            return true;
        }
    }
    packNormalByInterpolation(cell, x, y, z);
    return true;
}

/// The normal as it is defined, step by step. Kept out of the way of the common case.
[[gnu::noinline]] void TerrainTile::packNormalByInterpolation(const Cell& cell, unsigned char& x, unsigned char& y,
                                                              unsigned char& z) const
{
    // The scale of each slope comes from the other axis's cell size: it is divided out before the pass along that axis.
    double alongLongitude[4];
    double alongLatitude[4];
    for (int k = 0; k < 4; ++k) {
        double column[4];
        double row[4];
        for (int l = 0; l < 4; ++l) {
            const int i = static_cast<int>(cell.i) - 1;
            const int j = static_cast<int>(cell.j) - 1;
            column[l] = getAltitude(i + l, j + k) / mLatSpacingMetres;
            row[l] = getAltitude(i + k, j + l) / mLonSpacingMetres;
        }
        alongLongitude[k] = Math::getCubicValue(column, cell.ti);
        alongLatitude[k] = Math::getCubicValue(row, cell.tj);
    }
    const auto nx = static_cast<float>(-Math::getCubicDerivate(alongLongitude, cell.tj));
    const auto ny = static_cast<float>(-Math::getCubicDerivate(alongLatitude, cell.ti));
    const float s = 1.0f / std::sqrt(nx * nx + ny * ny + 1.0f);
    x = packed(nx * s);
    y = packed(ny * s);
    z = packed(s);
}

} // namespace Tavik::Geodetic
