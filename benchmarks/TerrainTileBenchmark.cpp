#include "TerrainFiles.h"

#include <tavik/geodetic/TerrainTile.h>
#include <tavik/geodetic/TerrainTileSamples.h>

#include <benchmark/benchmark.h>
#include <zlib.h>

#ifdef TAVIK_PEER_GDAL
#include <gdal.h>
#endif

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

// From a terrain file to samples in memory.

namespace {

using namespace Tavik::Geodetic;
using namespace TerrainFiles;

constexpr std::size_t RowsPerPiece = 64;

void srtm1Ours(benchmark::State& state)
{
    TerrainTile tile;
    tile.loadTileHGT(srtm1Archive());
    while (state.KeepRunning()) {
        if (!tile.loadAllData()) {
            state.SkipWithError("not loaded");
        }
        tile.clear();
    }
}

/// 64 rows into 64 samples of each column, blocks of eight by eight at a time.
void placeRows(const unsigned char* rows, std::size_t rowCount, std::int16_t* samples)
{
    for (std::size_t left = 0; left < Srtm1Side; left += 8) {
        const std::size_t column = std::min(left, Srtm1Side - 8);
        for (std::size_t top = 0; top < rowCount; top += 8) {
            const std::size_t row = std::min(top, rowCount - 8);
            EightSamples block[8];
            for (std::size_t k = 0; k < 8; ++k) {
                block[7 - k] = heightsFromWords(rows + 2 * ((row + k) * Srtm1Side + column));
            }
            transpose(block);
            for (std::size_t k = 0; k < 8; ++k) {
                store(block[k], samples + (column + k) * Srtm1Side + (rowCount - 8 - row));
            }
        }
    }
}

/// zlib's inflation, with swap and transposition in the cache; all buffers kept.
void srtm1Limit(benchmark::State& state)
{
    std::vector<unsigned char> archive(64u << 20);
    std::vector<unsigned char> rows(2 * Srtm1Side * RowsPerPiece);
    std::vector<std::int16_t> samples(Srtm1Side * Srtm1Side);
    const std::string& path = srtm1Archive();
    while (state.KeepRunning()) {
        std::FILE* file = std::fopen(path.c_str(), "rb");
        const std::size_t length = std::fread(archive.data(), 1, archive.size(), file);
        std::fclose(file);
        const std::size_t data = 30u + archive[26] + archive[28];
        z_stream stream = {};
        stream.next_in = archive.data() + data;
        stream.avail_in = static_cast<uInt>(length - data);
        inflateInit2(&stream, -15);
        std::size_t rowCount = 0;
        for (std::size_t rowsLeft = Srtm1Side; rowsLeft > 0; rowsLeft -= rowCount) {
            rowCount = std::min(RowsPerPiece, rowsLeft);
            stream.next_out = rows.data();
            stream.avail_out = static_cast<uInt>(2 * Srtm1Side * rowCount);
            inflate(&stream, Z_NO_FLUSH);
            placeRows(rows.data(), rowCount, samples.data() + (rowsLeft - rowCount));
        }
        inflateEnd(&stream);
        benchmark::DoNotOptimize(samples.data());
        benchmark::ClobberMemory();
    }
}

void dtedOurs(benchmark::State& state)
{
    TerrainTile tile;
    tile.loadTile(dtedFile());
    while (state.KeepRunning()) {
        if (!tile.loadAllData()) {
            state.SkipWithError("not loaded");
        }
        tile.clear();
    }
}

/// Eight columns smoothed side by side; smoothing starts at the third sample.
void smoothEight(const unsigned char* records, std::int16_t* columns)
{
    EightSamples last = {};
    for (std::size_t c = 0; c < 8; ++c) {
        last[c] = heightFromWord(records + c * DtedRecordLength + 8);
    }
    EightSamples lastButOne = ~last;
    for (std::size_t k = 1; k + 8 <= DtedSide; k += 8) {
        EightSamples block[8];
        for (std::size_t c = 0; c < 8; ++c) {
            block[c] = heightsFromWords(records + c * DtedRecordLength + 8 + 2 * k);
        }
        transpose(block);
        for (EightSamples& samples : block) {
            const EightSamples current = samples;
            const EightSamples different = last ^ current;
            EightSamples mean = (last & current) + (different >> 1);
            mean += different & 1 & (mean < 0);
            const EightSamples equal = last == lastButOne;
            samples = (mean & equal) | (last & ~equal);
            lastButOne = samples;
            last = current;
        }
        transpose(block);
        for (std::size_t c = 0; c < 8; ++c) {
            store(block[c], columns + c * DtedSide + k - 1);
        }
    }
    for (std::size_t c = 0; c < 8; ++c) {
        columns[c * DtedSide + DtedSide - 1] = last[c];
    }
}

/// One read, swap, and the smoothing; all buffers kept.
void dtedLimit(benchmark::State& state)
{
    std::vector<unsigned char> bytes(DtedHeaderLength + DtedSide * DtedRecordLength);
    std::vector<std::int16_t> samples(DtedSide * DtedSide);
    const std::string& path = dtedFile();
    while (state.KeepRunning()) {
        std::FILE* file = std::fopen(path.c_str(), "rb");
        if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) {
            state.SkipWithError("short file");
        }
        std::fclose(file);
        for (std::size_t left = 0; left < DtedSide; left += 8) {
            const std::size_t column = std::min(left, DtedSide - 8);
            smoothEight(bytes.data() + DtedHeaderLength + column * DtedRecordLength,
                        samples.data() + column * DtedSide);
        }
        benchmark::DoNotOptimize(samples.data());
        benchmark::ClobberMemory();
    }
}

#ifdef TAVIK_PEER_GDAL
void readWithGdal(benchmark::State& state, const std::string& path, int side)
{
    GDALAllRegister();
    std::vector<std::int16_t> samples(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    while (state.KeepRunning()) {
        const GDALDatasetH dataset = GDALOpen(path.c_str(), GA_ReadOnly);
        if (dataset == nullptr || GDALRasterIO(GDALGetRasterBand(dataset, 1), GF_Read, 0, 0, side, side, samples.data(),
                                               side, side, GDT_Int16, 0, 0) != CE_None) {
            state.SkipWithError("not read");
            return;
        }
        GDALClose(dataset);
        benchmark::ClobberMemory();
    }
}

void srtm1Gdal(benchmark::State& state)
{
    readWithGdal(state, srtm1MemberForGdal(), Srtm1Side);
}

void dtedGdal(benchmark::State& state)
{
    readWithGdal(state, dtedFile(), DtedSide);
}

BENCHMARK(srtm1Gdal)->Name("srtm1_load/peer_gdal")->Unit(benchmark::kMillisecond);
BENCHMARK(dtedGdal)->Name("dted_load/peer_gdal")->Unit(benchmark::kMicrosecond);
#endif

BENCHMARK(srtm1Ours)->Name("srtm1_load/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(srtm1Limit)->Name("srtm1_load/limit")->Unit(benchmark::kMillisecond);
BENCHMARK(dtedOurs)->Name("dted_load/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(dtedLimit)->Name("dted_load/limit")->Unit(benchmark::kMicrosecond);

} // namespace
