// Distance fields: the atlas of a font's 224 glyphs from the font file to the texture, and the field by rings of a
// picture of 1024 × 1024 pixels.
//
// The limit of the atlas is FreeType's own work for the glyphs and one sweep over the atlas in each direction; its peer
// is FreeType's renderer of distance fields. The limit by rings is a chessboard distance transform in two passes.

#include "BenchmarkWindow.h"

#include <support/Fonts.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/TextureFontSdf.h>

#include <GL/gl.h>
#include <GL/glext.h>
#include <benchmark/benchmark.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_MODULE_H

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

using namespace Tavik::OpenGL;

namespace {

constexpr FT_UInt PixelSize = 50;
constexpr int Side = 1024; // pixels, of the atlas and of the picture
constexpr int Radius = 14; // of the field by rings

const std::vector<char>& fontData()
{
    static const std::vector<char> data = [] {
        std::ifstream file(Tavik::Support::sansFontPath(), std::ios::binary);
        return std::vector<char>(std::istreambuf_iterator<char>(file), {});
    }();
    return data;
}

bool openWindow()
{
    return openBenchmarkWindow(64, 64) && GlHandler::instance().isLoaded();
}

// The font's face, for as long as it lives.
class Face
{
public:
    Face()
    {
        FT_Init_FreeType(&mLibrary);
        const auto* data = reinterpret_cast<const FT_Byte*>(fontData().data());
        if (FT_New_Memory_Face(mLibrary, data, static_cast<FT_Long>(fontData().size()), 0, &mFace) != 0) {
            mFace = nullptr;
            return;
        }
        FT_Set_Pixel_Sizes(mFace, 0, PixelSize);
    }

    ~Face()
    {
        FT_Done_Face(mFace);
        FT_Done_FreeType(mLibrary);
    }

    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    FT_Library library() const { return mLibrary; }
    FT_Face face() const { return mFace; }

private:
    FT_Library mLibrary = nullptr;
    FT_Face mFace = nullptr;
};

void atlasOurs(benchmark::State& state)
{
    if (!openWindow()) {
        state.SkipWithError("no OpenGL");
        return;
    }
    TextureFontSdf font;
    FontType type;
    for ([[maybe_unused]] auto _ : state) {
        const unsigned int texture =
            font.createGlyphTexture(fontData().data(), static_cast<int>(fontData().size()), type);
        if (texture == 0) {
            state.SkipWithError("no font");
            return;
        }
        glDeleteTextures(1, &texture);
    }
}

struct Cell
{
    float squared;
    float x;
    float y;
};

void take(Cell& cell, const Cell& neighbour, float x, float y)
{
    const float dx = neighbour.x - x;
    const float dy = neighbour.y - y;
    const float squared = dx * dx + dy * dy;
    if (squared < cell.squared) {
        cell = {squared, neighbour.x, neighbour.y};
    }
}

// One sweep each way over a picture whose covered pixels are their own edge points.
void sweepOnce(const std::vector<unsigned char>& coverage, std::vector<Cell>& cells)
{
    for (int y = 0; y < Side; ++y) {
        for (int x = 0; x < Side; ++x) {
            const std::size_t i = static_cast<std::size_t>(y) * Side + static_cast<std::size_t>(x);
            const bool isEdge = coverage[i] != 0 && coverage[i] != 255;
            cells[i] = isEdge ? Cell{0.0f, static_cast<float>(x), static_cast<float>(y)} : Cell{1e37f, 1e18f, 1e18f};
        }
    }
    for (int y = 1; y < Side - 1; ++y) {
        Cell* row = cells.data() + static_cast<std::ptrdiff_t>(y) * Side;
        for (int x = 1; x < Side - 1; ++x) {
            for (const int neighbour : {-Side - 1, -Side, -Side + 1, -1}) {
                take(row[x], row[x + neighbour], static_cast<float>(x), static_cast<float>(y));
            }
        }
    }
    for (int y = Side - 2; y > 0; --y) {
        Cell* row = cells.data() + static_cast<std::ptrdiff_t>(y) * Side;
        for (int x = Side - 2; x > 0; --x) {
            for (const int neighbour : {Side + 1, Side, Side - 1, 1}) {
                take(row[x], row[x + neighbour], static_cast<float>(x), static_cast<float>(y));
            }
        }
    }
}

void copyGlyph(const FT_Bitmap& bitmap, std::vector<unsigned char>& coverage, int x, int y)
{
    for (unsigned int r = 0; r < bitmap.rows; ++r) {
        const unsigned char* row = bitmap.buffer + static_cast<std::ptrdiff_t>(r) * bitmap.pitch;
        std::copy_n(row, bitmap.width,
                    coverage.begin() + static_cast<std::ptrdiff_t>(y + static_cast<int>(r)) * Side + x);
    }
}

// FreeType loads and rasterises each glyph once, 17 in a row.
void atlasLimit(benchmark::State& state)
{
    std::vector<Cell> cells(static_cast<std::size_t>(Side) * Side);
    for ([[maybe_unused]] auto _ : state) {
        const Face font;
        if (font.face() == nullptr) {
            state.SkipWithError("no font");
            return;
        }
        std::vector<unsigned char> coverage(cells.size());
        for (int i = 0; i < 224; ++i) {
            if (FT_Load_Char(font.face(), static_cast<FT_ULong>(i) + 32, FT_LOAD_RENDER | FT_LOAD_FORCE_AUTOHINT) ==
                0) {
                copyGlyph(font.face()->glyph->bitmap, coverage, i % 17 * 60 + 2, i / 17 * 72 + 2);
            }
        }
        sweepOnce(coverage, cells);
        benchmark::DoNotOptimize(cells.data());
    }
}

void atlasFreeType(benchmark::State& state)
{
    const Face font;
    if (font.face() == nullptr) {
        state.SkipWithError("no font");
        return;
    }
    FT_UInt spread = 8;
    FT_Property_Set(font.library(), "sdf", "spread", &spread);
    for ([[maybe_unused]] auto _ : state) {
        for (FT_ULong code = 32; code < 256; ++code) {
            if (FT_Load_Char(font.face(), code, FT_LOAD_FORCE_AUTOHINT) == 0) {
                FT_Render_Glyph(font.face()->glyph, FT_RENDER_MODE_SDF);
            }
        }
    }
}

// Blots of a few to some dozens of pixels.
std::vector<unsigned char> picture()
{
    std::vector<unsigned char> pixels(static_cast<std::size_t>(Side) * Side);
    std::mt19937 random(1);
    for (int i = 0; i < 600; ++i) {
        const auto x = static_cast<int>(random() % Side);
        const auto y = static_cast<int>(random() % Side);
        const auto r = static_cast<int>(random() % 25);
        for (int dy = -r; dy <= r; ++dy) {
            for (int dx = -r; dx <= r; ++dx) {
                if (dx * dx + dy * dy <= r * r && x + dx >= 0 && x + dx < Side && y + dy >= 0 && y + dy < Side) {
                    pixels[static_cast<std::size_t>(y + dy) * Side + static_cast<std::size_t>(x + dx)] = 255;
                }
            }
        }
    }
    return pixels;
}

void ringsOurs(benchmark::State& state)
{
    TextureFontSdf font;
    const std::vector<unsigned char> source = picture();
    std::vector<unsigned char> pixels;
    // Each run prints its range, which is not to stand among the figures.
    std::FILE* const shown = stdout;
    stdout = std::fopen("/dev/null", "w");
    for ([[maybe_unused]] auto _ : state) {
        pixels = source;
        font.calcSdf(pixels.data(), Side, Side);
        benchmark::DoNotOptimize(pixels.data());
    }
    std::fclose(stdout);
    stdout = shown;
}

// Distance to the other state, then the byte that it becomes where rings are not cut off.
void ringsLimit(benchmark::State& state)
{
    const std::vector<unsigned char> source = picture();
    std::vector<unsigned char> pixels;
    std::vector<std::uint8_t> rings(source.size());
    std::uint8_t bytes[2][256] = {};
    for (int ring = 0; ring < 256; ++ring) {
        bytes[0][ring] = static_cast<std::uint8_t>(std::max(0, 127 - ring * 127 / Radius));
        bytes[1][ring] = static_cast<std::uint8_t>(std::min(255, 128 + ring * 127 / Radius));
    }
    for ([[maybe_unused]] auto _ : state) {
        pixels = source;
        std::fill(rings.begin(), rings.end(), static_cast<std::uint8_t>(Radius + 1));
        const auto pass = [&](int start, int end, int step) {
            for (int y = start; y != end; y += step) {
                const unsigned char* row = pixels.data() + static_cast<std::ptrdiff_t>(y) * Side;
                std::uint8_t* to = rings.data() + static_cast<std::ptrdiff_t>(y) * Side;
                for (int x = start; x != end; x += step) {
                    int nearest = to[x];
                    for (const int neighbour : {-step * Side - 1, -step * Side, -step * Side + 1, -step}) {
                        nearest = std::min<int>(nearest, row[x] != row[x + neighbour] ? 1 : to[x + neighbour] + 1);
                    }
                    to[x] = static_cast<std::uint8_t>(nearest);
                }
            }
        };
        pass(1, Side - 1, 1);
        pass(Side - 2, 0, -1);
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            pixels[i] = bytes[pixels[i] & 1][rings[i]];
        }
        benchmark::DoNotOptimize(pixels.data());
    }
}

BENCHMARK(atlasOurs)->Name("atlas_sdf/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(atlasLimit)->Name("atlas_sdf/limit")->Unit(benchmark::kMillisecond);
BENCHMARK(atlasFreeType)->Name("atlas_sdf/peer_freetype_sdf")->Unit(benchmark::kMillisecond);
BENCHMARK(ringsOurs)->Name("calc_sdf_1024/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(ringsLimit)->Name("calc_sdf_1024/limit")->Unit(benchmark::kMillisecond);

} // namespace
