// A folder of DTED tiles scanned for their headers. Times are for all tiles together; items are tiles.

#include <tavik/geodetic/HeightMap.h>

#include <support/DtedWriter.h>
#include <support/TemporaryDirectory.h>

#include <benchmark/benchmark.h>

#ifdef TAVIK_PEER_GDAL
#include <gdal.h>
#endif

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

using namespace Tavik::Support;

namespace {

constexpr int TileCount = 1000;
constexpr std::size_t UserHeaderLength = 80;

/// A thousand cells; how large their grids are makes no difference to a scan.
struct Folder
{
    Folder()
    {
        for (int i = 0; i < TileCount; ++i) {
            paths.push_back(directory.path() + "/" + std::to_string(i) + ".DT1");
            writeDted(paths.back(), {i / 100, i % 100, 5, 5, 9000, 9000}, [](unsigned, unsigned) { return 0; });
        }
    }

    TemporaryDirectory directory;
    std::vector<std::string> paths;
};

Folder& folder()
{
    static Folder tiles;
    return tiles;
}

/// Standard output goes nowhere: the scan prints a line for each tile, which is part of its work.
class SilentOutput
{
public:
    SilentOutput() : mOutput(dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    ~SilentOutput()
    {
        std::fflush(stdout);
        dup2(mOutput, STDOUT_FILENO);
        close(mOutput);
    }

    SilentOutput(const SilentOutput&) = delete;
    SilentOutput& operator=(const SilentOutput&) = delete;

private:
    int mOutput;
};

void ours(benchmark::State& state)
{
    Folder& tiles = folder();
    const SilentOutput silent;
    for ([[maybe_unused]] auto _ : state) {
        Tavik::Geodetic::HeightMap map;
        map.setDataPath(tiles.directory.path());
        map.loadThread();
        benchmark::DoNotOptimize(map.getCurrentTile(0.5, 0.5, false));
    }
    state.SetItemsProcessed(state.iterations() * TileCount);
}
BENCHMARK(ours)->Name("scan/ours")->Unit(benchmark::kMillisecond);

void limit(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        for (const std::string& path : folder().paths) {
            char header[UserHeaderLength];
            const int file = open(path.c_str(), O_RDONLY);
            if (read(file, header, sizeof header) != sizeof header) {
                std::abort();
            }
            benchmark::DoNotOptimize(header);
            close(file);
        }
    }
    state.SetItemsProcessed(state.iterations() * TileCount);
}
BENCHMARK(limit)->Name("scan/limit")->Unit(benchmark::kMillisecond);

#ifdef TAVIK_PEER_GDAL
void peerGdal(benchmark::State& state)
{
    GDALAllRegister();
    for ([[maybe_unused]] auto _ : state) {
        for (const std::string& path : folder().paths) {
            GDALDatasetH tile = GDALOpen(path.c_str(), GA_ReadOnly);
            double origin[6] = {};
            if (GDALGetGeoTransform(tile, origin) != CE_None) {
                std::abort();
            }
            benchmark::DoNotOptimize(origin);
            GDALClose(tile);
        }
    }
    state.SetItemsProcessed(state.iterations() * TileCount);
}
BENCHMARK(peerGdal)->Name("scan/peer_gdal")->Unit(benchmark::kMillisecond);
#endif

} // namespace
