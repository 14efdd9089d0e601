#pragma once

#include <string>

namespace Tavik::Support {

/// Terrain files of an invented region in the open sea, for examples and tests that have no real ones.
///
/// Four tiles of one degree: two DTED level 1 files and two zipped SRTM files, side by side like black and white
/// fields. A coast in the south with islands before it, mountains up to about 4000 m in the north. See ErodedLandscape.
namespace MadeTerrain {

constexpr int SouthDegrees = 45;
constexpr int WestDegrees = -32;
constexpr int SizeDegrees = 2;

/// Writes the files into a directory that exists. Takes about two seconds.
/// @return false when one cannot be written
bool write(const std::string& directory);

/// The directory where this user's programs keep the files, made and filled by the first that asks.
///
/// It lies below the first of $XDG_CACHE_HOME, $HOME/.cache and the system's directory for temporary files where it can
/// be written. Programs that start at the same time do not disturb each other: the files appear there all at once.
/// @return an empty string when there is no place to write to
std::string cachedDirectory();

} // namespace MadeTerrain

} // namespace Tavik::Support
