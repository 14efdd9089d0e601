#pragma once

#include <cstddef>
#include <string>

/// Terrain files for the benchmarks, made once and removed when the program ends.
namespace TerrainFiles {

constexpr std::size_t Srtm1Side = 3601;
constexpr std::size_t DtedSide = 1201;
constexpr std::size_t DtedHeaderLength = 3428;
constexpr std::size_t DtedRecordLength = 8 + 2 * DtedSide + 4;

/// Height in metres at a point of the made mountains, as rough and as hard to compress as real ones.
/// @param row,column  in seconds of arc from the north-west corner
int mountainHeight(double row, double column);

/// N47E011.SRTMGL1.hgt.zip.
const std::string& srtm1Archive();

/// The only member of srtm1Archive(), as GDAL takes it.
std::string srtm1MemberForGdal();

/// N47E011.DT1: every third sample of the same mountains.
const std::string& dtedFile();

} // namespace TerrainFiles
