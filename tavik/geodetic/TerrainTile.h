#pragma once

#include <tavik/Export.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace Tavik::Geodetic {

/// One rectangular cell of terrain: a regular grid of heights in metres, from a DTED level 1 file or a zipped SRTM
/// height file.
///
///     TerrainTile tile;
///     tile.loadTile("N47E011.DT1"); // or loadTileHGT("N47E011.SRTMGL3.hgt.zip")
///     if (tile.loadAllData()) {
///         double metres = 0.0;
///         tile.getAltitude(47.25, 11.4, metres);
///     }
///
/// Calling order: register a file with loadTile or loadTileHGT, which is cheap; read its samples with loadAllData;
/// ask; drop the samples with clear, after which loadAllData reads them again. Registering another file drops them too.
///
/// **Grid.** Sample (i, j) is the i-th from the south and the j-th from the west, both from 0. The origin is the
/// south-west sample. All latitudes and longitudes are in degrees, negative south and west.
///
/// **Voids** (values below -9000 m) read as 0 in both formats; -9000 itself is kept.
///
/// **DTED and negative heights.** MIL-PRF-89020 stores a height as sign and magnitude, this class takes two's
/// complement. In genuine DTED a void (0xFFFF) therefore reads as -1 m, and any height below sea level as 0: -7 m is
/// stored as 0x8007, which is -32761 in two's complement and so counts as a void. Heights of 0 and above are the same
/// in both. SRTM files store two's complement.
///
/// **DTED smoothing.** Going north along each column of a DTED tile, a sample that equals the one before it becomes the
/// mean of that one and the next one, rounded toward zero: 5, 5, 5, 9 reads as 5, 5, 7, 9. This flattens the terraces
/// of heights that were rounded to metres. SRTM samples are left as they are.
///
/// **Damaged files** never do harm. A grid has 9999 x 9999 samples at most, since the fields of the DTED header have
/// four characters; a count below 0 is taken as 0. What is missing at the end of a DTED file reads as 0, but a file
/// that holds no sample at all, or names an empty grid, does not load.
///
/// Nothing throws. The const functions are safe from any number of threads as long as nobody calls the others.
class TAVIK_API TerrainTile
{
public:
    TerrainTile();
    ~TerrainTile();

    TerrainTile(const TerrainTile&) = delete;
    TerrainTile& operator=(const TerrainTile&) = delete;

    /// Registers a DTED tile: keeps the path and reads the header.
    /// @return false, after printing "could not open data file <path>", when the file cannot be opened
    bool loadTile(const std::string& path);

    /// Registers a zipped SRTM tile from its file name; the file is not touched.
    ///
    /// The text between the first and the second dot of the name tells the kind:
    /// - SRTMGL1 and SRTMGL3, one degree by one: N47E011.SRTMGL3.hgt.zip has its south-west corner at 47 N, 11 E;
    /// - SRTMGL30, an overview of 50 degrees of latitude by 40 of longitude: E020N40.SRTMGL30.dem.zip has its
    ///   *north*-west corner at 40 N, 20 E.
    ///
    /// A name of another kind is registered all the same and keeps the origin that the tile had, at first 0, 0.
    /// @return whether the path has at least 7 characters; a shorter one registers nothing
    bool loadTileHGT(const std::string& path);

    /// Reads the samples, whatever the format.
    ///
    /// DTED: the header is read again. Samples already in memory are kept, and then a header that names another grid
    /// than theirs is not taken. A file that cannot be opened prints "could not open data file <path>" and sets the
    /// tile aside: every later call returns false at once. SRTM: the first member of the archive is inflated; its size
    /// alone tells the grid (1201 x 1201, 3601 x 3601 or 6000 x 4800 samples). Where that fails, samples already in
    /// memory stay, and the next call tries again.
    /// @return whether the samples are in memory, read now or earlier
    bool loadAllData();

    /// loadAllData for a tile that is known to be DTED.
    bool loadAllDataDTED();

    /// loadAllData for a tile that is known to be SRTM.
    bool loadAllDataHGT();

    /// Frees the samples and the normal map; the tile stays registered.
    /// @return true
    bool clear();

    /// Whether loadAllData has put the samples into memory.
    bool loaded() const { return mLoaded; }

    /// Whether this is an overview tile (SRTMGL30).
    bool isLowRes() const { return mLowRes; }

    /// @{
    /// Whole degrees of the origin, counted from 90 S and from 180 W. Rounded down after a push of 1e-6 degrees, so
    /// that an origin a rounding error below a whole degree still counts as that degree.
    std::uint32_t latitudeIndex() const;
    std::uint32_t longitudeIndex() const;
    /// @}

    /// @{
    /// Samples along a meridian, and number of meridians. Known for DTED once registered, for SRTM once loaded.
    std::uint32_t latitudeCount() const { return mNumLat; }
    std::uint32_t longitudeCount() const { return mNumLon; }
    /// @}

    /// @{
    /// The south-west sample, degrees.
    double latitudeOrigin() const { return mLatOrigin; }
    double longitudeOrigin() const { return mLonOrigin; }
    /// @}

    /// @{
    /// Step between samples, degrees; and the span of the tile, which is the step times the number of samples. Known
    /// when the counts are.
    double latitudeSpacing() const { return mLatSpacing; }
    double longitudeSpacing() const { return mLonSpacing; }
    double latitudeExtent() const { return mLatExtent; }
    double longitudeExtent() const { return mLonExtent; }
    /// @}

    /// The samples in metres: sample (i, j) is element i + latitudeCount() * j. Null when there are none; valid until
    /// the next call that is not const.
    const std::int16_t* samples() const { return mHeights.get(); }

    /// Bilinear height at a point.
    ///
    /// Answers up to, but not including, one spacing beyond the outermost samples. South and west of the origin the
    /// first cell is extrapolated; in a cell beyond the last row or column, every corner without a sample takes the
    /// height of the cell's south-western corner.
    /// @param lat,lon  degrees
    /// @param height   receives metres; left alone where the answer is false
    /// @return false when no samples are loaded, the point is outside or a coordinate is NaN
    bool getAltitude(double lat, double lon, double& height) const;

    /// Height at a grid index, in metres.
    ///
    /// Any index outside the grid gets the value one step outside: twice the nearest sample less the next one inward,
    /// diagonally at the corners. Along an axis with a single sample, that sample goes on unchanged.
    /// @param i,j  latitude and longitude index; any value
    /// @return 0 when there are no samples
    double getAltitude(int i, int j) const;

    /// Surface normal at a point, from the bicubic (Catmull-Rom) surface through the 4 x 4 samples around it.
    ///
    /// Each slope is divided by the length of the other axis's step: in a tile whose south edge has the latitude L,
    /// slopes to the east come out cos(L) times as steep as they are, slopes to the north 1 / cos(L) times. Shading
    /// takes no harm; for true slopes divide the normal's x by cos(L), multiply its y by it, and bring it to length 1
    /// again.
    /// @param lat,lon  degrees: as for getAltitude to the south, west and north; in the east the point must lie before
    ///                 the last column
    /// @param x,y,z    receive east, north and up, each component c in [-1, 1] packed as trunc((c + 1) * 127.5): level
    ///                 ground gives 127, 127, 255; 0, 0, 0 where the answer is false
    /// @return false when no samples are loaded, the tile was set aside, the point is outside or a coordinate is NaN
    bool getNormal(double lat, double lon, unsigned char& x, unsigned char& y, unsigned char& z) const;

    /// Surface normal at a point, blended from the four nearest entries of the normal map; cheaper and rougher than
    /// getNormal. Needs calcNormals after each load.
    ///
    /// The weight of an entry *falls* with its closeness to the point in a way that has no value exactly on a sample:
    /// there the outputs are 0, 0, 0 and the answer is true. North of the last row its normals go on. The north-east
    /// sample has no normal of its own (0, 0, 0 in the map), which shows in the cell before it.
    /// @param lat,lon,x,y,z  as for getNormal
    /// @return false where getNormal says so, and without a normal map
    bool getNormalOld(double lat, double lon, unsigned char& x, unsigned char& y, unsigned char& z) const;

    /// Builds the map of packed normals for getNormalOld, one for each sample but the north-east one, from flat
    /// triangles.
    ///
    /// A tile with an empty grid prints "TerrainTile::calcNormals load failed" and is set aside; without samples, or
    /// without memory, nothing happens. A grid without cells (a single row or column, a spacing of 0) gets a map of
    /// 0, 0, 0. 3 bytes per sample, freed by clear.
    void calcNormals();

    /// @{
    /// The steps of loading, for files that stand inside something else.
    ///
    /// loadHeader reads the 3428 bytes of header records from the file's position on and leaves the file behind them;
    /// fields that are missing or not numbers count as 0. While samples are in memory, a header that names another grid
    /// than theirs is not taken. loadData reads the data records from the file's position on, in place of the samples
    /// in memory; loaded() is false afterwards.
    /// @param file  open for reading; null reads like an empty file
    void loadHeader(std::FILE* file);
    void loadData(std::FILE* file);
    /// @}

    /// Reads text of a given length.
    /// @param file    open for reading
    /// @param out     receives exactly length characters, NUL where the file ends first; left alone, with nothing read,
    ///                when memory is short
    /// @param length  characters
    static void readString(std::FILE* file, std::string& out, unsigned int length);

    /// Reads a whole number in this processor's byte order.
    /// @param file    open for reading
    /// @param value   receives the bytes, the missing ones 0
    /// @param length  bytes; of more than 4 the first 4 are read
    /// @return number of bytes read
    static int readBinary(std::FILE* file, int& value, unsigned int length);

    /// Reads a big-endian 16-bit number.
    /// @param file   open for reading
    /// @param value  receives the number; bytes that are missing count as 0
    /// @return number of bytes read
    static int readBinary(std::FILE* file, short& value);

    /// Swaps the two bytes of a 16-bit value in place.
    /// @param value  two bytes, at any alignment
    static void swap2(void* value);

private:
    void takeUserHeader(const std::string& record);
    void setGrid(std::uint32_t numLat, std::uint32_t numLon, double latSpacing, double lonSpacing);
    void setSamples(std::unique_ptr<std::int16_t[]> samples);
    std::int16_t sample(std::size_t i, std::size_t j) const { return mHeights[i + mNumLat * j]; }
    struct Cell;
    bool findCell(double lat, double lon, std::uint32_t columns, Cell& cell) const;
    bool findNormalCell(double lat, double lon, Cell& cell) const;
    void packNormalByInterpolation(const Cell& cell, unsigned char& x, unsigned char& y, unsigned char& z) const;

    std::int32_t mFormat = 0; // 0 DTED, 1 SRTM
    std::unique_ptr<std::int16_t[]>
        mHeights; // mNumLat x mNumLon whenever it is there; south to north, then west to east
    std::unique_ptr<unsigned char[]> mNormals; // likewise, three bytes for each sample
    double mLatOrigin = 0.0;
    double mLonOrigin = 0.0;
    double mLatExtent = 0.0;
    double mLonExtent = 0.0;
    std::uint32_t mNumLat = 0;
    std::uint32_t mNumLon = 0;
    double mLatSpacing = 0.0;
    double mLonSpacing = 0.0;
    double mLatSpacingMetres = 0.0;
    double mLonSpacingMetres = 0.0;
    bool mLoaded = false;
    bool mFailed = false;
    bool mLowRes = false;
    std::string mFileName;
};

} // namespace Tavik::Geodetic
