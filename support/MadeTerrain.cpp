#include <support/MadeTerrain.h>

#include <support/DtedWriter.h>
#include <support/ErodedLandscape.h>
#include <support/ZipWriter.h>

#include <unistd.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <system_error>
#include <vector>

namespace Tavik::Support::MadeTerrain {

namespace {

namespace fs = std::filesystem;

constexpr unsigned int Posts = 1201; // along each edge of a tile

// Another number makes another directory: to be raised with every change of the heights.
constexpr const char* DirectoryName = "made-terrain-1";

int heightAt(const ErodedLandscape& land, int tileRow, int tileColumn, unsigned int i, unsigned int j)
{
    constexpr double Span = SizeDegrees * (Posts - 1);
    const double north = (tileRow * (Posts - 1.0) + i) / Span;
    const double east = (tileColumn * (Posts - 1.0) + j) / Span;
    return static_cast<int>(std::lround(land.height(east, north)));
}

/// "N45W032"
std::string cellName(int south, int west)
{
    char name[32];
    std::snprintf(name, sizeof name, "%c%02d%c%03d", south < 0 ? 'S' : 'N', std::abs(south), west < 0 ? 'W' : 'E',
                  std::abs(west));
    return name;
}

bool writeDtedTile(const std::string& directory, const ErodedLandscape& land, int row, int column)
{
    DtedGrid grid;
    grid.latitudeDegrees = SouthDegrees + row;
    grid.longitudeDegrees = WestDegrees + column;
    const std::string name = cellName(grid.latitudeDegrees, grid.longitudeDegrees);
    return tryWriteDted(directory + "/" + name + ".DT1", grid,
                        [&](unsigned int i, unsigned int j) { return heightAt(land, row, column, i, j); });
}

/// Rows from the north, big-endian.
bool writeSrtmTile(const std::string& directory, const ErodedLandscape& land, int row, int column)
{
    std::vector<unsigned char> bytes;
    bytes.reserve(std::size_t{2} * Posts * Posts);
    for (unsigned int i = Posts; i-- > 0;) {
        for (unsigned int j = 0; j < Posts; ++j) {
            const int height = heightAt(land, row, column, i, j);
            bytes.push_back(static_cast<unsigned char>((height >> 8) & 0xFF));
            bytes.push_back(static_cast<unsigned char>(height & 0xFF));
        }
    }
    const std::string name = cellName(SouthDegrees + row, WestDegrees + column);
    ZipWriter writer(directory + "/" + name + ".SRTMGL3.hgt.zip");
    writer.add(name + ".hgt", bytes.data(), bytes.size(), 1);
    return writer.close();
}

/// Where files may be kept, the best place first.
std::vector<fs::path> cacheRoots()
{
    std::vector<fs::path> roots;
    const char* cache = std::getenv("XDG_CACHE_HOME");
    if (cache != nullptr && fs::path(cache).is_absolute()) {
        roots.emplace_back(cache);
    }
    const char* home = std::getenv("HOME");
    if (home != nullptr && fs::path(home).is_absolute()) {
        roots.push_back(fs::path(home) / ".cache");
    }
    std::error_code error;
    const fs::path temporary = fs::temp_directory_path(error);
    if (!error) {
        roots.push_back(temporary / ("cache-" + std::to_string(getuid())));
    }
    return roots;
}

/// @return an empty string when nothing can be written there
std::string directoryBelow(const fs::path& root)
{
    const fs::path parent = root / "tavik";
    const fs::path directory = parent / DirectoryName;
    std::error_code error;
    if (fs::is_directory(directory, error)) {
        return directory.string();
    }
    fs::create_directories(parent, error);
    std::string draft = (parent / (std::string(DirectoryName) + "-XXXXXX")).string();
    if (mkdtemp(draft.data()) == nullptr) {
        return {};
    }
    const bool written = write(draft);
    if (written) {
        fs::rename(draft, directory, error);
    }
    if (!written || error) { // no room, or another program was faster
        std::error_code ignored;
        fs::remove_all(draft, ignored);
    }
    return fs::is_directory(directory, error) ? directory.string() : std::string();
}

} // namespace

bool write(const std::string& directory)
{
    const ErodedLandscape land;
    std::vector<std::future<bool>> tiles;
    for (int row = 0; row < SizeDegrees; ++row) {
        for (int column = 0; column < SizeDegrees; ++column) {
            tiles.push_back(std::async(std::launch::async, [&directory, &land, row, column] {
                return (row + column) % 2 != 0 ? writeSrtmTile(directory, land, row, column)
                                               : writeDtedTile(directory, land, row, column);
            }));
        }
    }
    bool good = true;
    for (std::future<bool>& tile : tiles) {
        good = tile.get() && good;
    }
    return good;
}

std::string cachedDirectory()
{
    for (const fs::path& root : cacheRoots()) {
        std::string directory = directoryBelow(root);
        if (!directory.empty()) {
            return directory;
        }
    }
    return {};
}

} // namespace Tavik::Support::MadeTerrain
