#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace Tavik::Support {

/// What the header of a DTED file says about its grid. The default is a level 1 tile between 50 S and 50 N.
///
/// The header has four characters for each number: points, lines and intervals are in [0, 9999], degrees in [-999,
/// 999].
struct DtedGrid
{
    int latitudeDegrees = 0;  ///< south-west corner, negative south
    int longitudeDegrees = 0; ///< negative west
    unsigned int latitudePoints = 1201;
    unsigned int longitudeLines = 1201;
    unsigned int latitudeInterval = 30; ///< tenths of seconds of arc
    unsigned int longitudeInterval = 30;
};

/// What a file holds for an unknown height.
constexpr int DtedVoid = -32767;

/// How a height below zero is written.
enum class DtedSign
{
    SignAndMagnitude, ///< as MIL-PRF-89020 has it, and other programs read it
    TwosComplement    ///< as some producers write it
};

/// Height in metres of the i-th sample from the south and the j-th from the west, in [-32766, 32767]; DtedVoid where
/// unknown.
using DtedHeights = std::function<int(unsigned int i, unsigned int j)>;

/// Writes a DTED file: user header, data set identification and accuracy records, and one checksummed record for each
/// column.
///
///     writeDted("N47E011.DT1", {47, 11}, [](unsigned int i, unsigned int j) { return 500 + (i + j) % 1000; });
///
/// Ends the program where the file cannot be written.
void writeDted(const std::string& path, const DtedGrid& grid, const DtedHeights& height,
               DtedSign sign = DtedSign::SignAndMagnitude);

/// The same; false, with errno set, where the file cannot be written.
bool tryWriteDted(const std::string& path, const DtedGrid& grid, const DtedHeights& height,
                  DtedSign sign = DtedSign::SignAndMagnitude);

/// Replaces bytes of a file in the middle, to damage it. Ends the program where that fails.
void overwriteBytes(const std::string& path, long offset, const std::string& bytes);

} // namespace Tavik::Support
