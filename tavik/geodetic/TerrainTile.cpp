#include <tavik/geodetic/TerrainTile.h>

#include <tavik/geodetic/EarthModel.h>
#include <tavik/math/Trigonometry.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

namespace Tavik::Geodetic {

namespace {

int readBytes(std::FILE* file, void* destination, std::size_t length)
{
    return file != nullptr ? static_cast<int>(std::fread(destination, 1, length, file)) : 0;
}

/// Pushes an origin that rounding left just below a whole degree over it.
constexpr double WholeDegreeBias = 1e-6;

} // namespace

TerrainTile::TerrainTile() = default;
TerrainTile::~TerrainTile() = default;

bool TerrainTile::loadAllData()
{
    return mFormat == 1 ? loadAllDataHGT() : loadAllDataDTED();
}

bool TerrainTile::clear()
{
    setSamples(nullptr);
    return true;
}

/// The normal map belongs to the samples that it was computed from, and goes with them.
void TerrainTile::setSamples(std::unique_ptr<std::int16_t[]> samples)
{
    mHeights = std::move(samples);
    mNormals.reset();
    mLoaded = mLoaded && mHeights != nullptr;
}

/// The origin must be known: degrees of longitude shrink with latitude.
void TerrainTile::setGrid(std::uint32_t numLat, std::uint32_t numLon, double latSpacing, double lonSpacing)
{
    mNumLat = numLat;
    mNumLon = numLon;
    mLatSpacing = latSpacing;
    mLonSpacing = lonSpacing;
    mLatExtent = latSpacing * numLat;
    mLonExtent = lonSpacing * numLon;
    mLatSpacingMetres = latSpacing * MinutesPerDegree * MetresPerArcMinute;
    mLonSpacingMetres =
        lonSpacing * MinutesPerDegree * MetresPerArcMinute * std::cos(mLatOrigin * Math::DegreesToRadians);
}

// The origin comes from fields of two and three characters, so it fits an int by far. The negative numbers of an origin
// beyond a pole wrap, and make a key that no point has.

std::uint32_t TerrainTile::latitudeIndex() const
{
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(mLatOrigin + 90.0 + WholeDegreeBias));
}

std::uint32_t TerrainTile::longitudeIndex() const
{
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(mLonOrigin + 180.0 + WholeDegreeBias));
}

void TerrainTile::readString(std::FILE* file, std::string& out, unsigned int length)
{
    try {
        out.assign(length, '\0');
    } catch (const std::exception&) {
        return;
    }
    readBytes(file, out.data(), length);
}

int TerrainTile::readBinary(std::FILE* file, int& value, unsigned int length)
{
    value = 0;
    return readBytes(file, &value, std::min<std::size_t>(length, sizeof value));
}

int TerrainTile::readBinary(std::FILE* file, short& value)
{
    value = 0;
    const int count = readBytes(file, &value, sizeof value);
    swap2(&value);
    return count;
}

void TerrainTile::swap2(void* value)
{
    auto* bytes = static_cast<unsigned char*>(value);
    std::swap(bytes[0], bytes[1]);
}

} // namespace Tavik::Geodetic
