// Zipped SRTM tiles: the first line of the input is a file name, from which tiles are told, the rest an archive.

#include <fuzz/InputFile.h>
#include <fuzz/Require.h>
#include <support/TemporaryDirectory.h>
#include <tavik/geodetic/TerrainTile.h>

#include <unistd.h>

#include <algorithm>
#include <cmath>

using Tavik::Fuzz::InputFile;
using Tavik::Fuzz::require;
using Tavik::Geodetic::TerrainTile;

namespace {

// The input under a name that makes a tile of it.
class TileFile
{
public:
    TileFile() { require(symlink(mContent.path().c_str(), path().c_str()) == 0); }

    void write(const std::uint8_t* data, std::size_t size) { mContent.write(data, size); }
    std::string path() const { return mDirectory.path() + "/S34W071.SRTMGL3.hgt.zip"; }

private:
    InputFile mContent;
    Tavik::Support::TemporaryDirectory mDirectory;
};

void checkName(const std::string& name)
{
    TerrainTile tile;
    require(tile.loadTileHGT(name) == (name.size() >= 7));
    tile.latitudeIndex();
    tile.longitudeIndex();
    require(std::isfinite(tile.latitudeOrigin()) && std::isfinite(tile.longitudeOrigin()));
}

void checkArchive(const TileFile& file)
{
    TerrainTile tile;
    require(tile.loadTileHGT(file.path()));
    const bool loaded = tile.loadAllData();
    require(loaded == tile.loaded() && loaded == (tile.samples() != nullptr));
    double height = 0.0;
    require(tile.getAltitude(-33.5, -70.5, height) == loaded && std::isfinite(height));
    unsigned char x = 0;
    unsigned char y = 0;
    unsigned char z = 0;
    require(tile.getNormal(-33.5, -70.5, x, y, z) == loaded);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static TileFile file;
    const std::uint8_t* lineEnd = std::find(data, data + size, '\n');
    checkName(std::string(data, lineEnd));
    if (lineEnd != data + size) {
        file.write(lineEnd + 1, static_cast<std::size_t>(data + size - lineEnd - 1));
        checkArchive(file);
    }
    return 0;
}
