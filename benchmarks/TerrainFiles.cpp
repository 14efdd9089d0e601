#include "TerrainFiles.h"

#include <support/DtedWriter.h>
#include <support/TemporaryDirectory.h>
#include <support/ZipWriter.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace TerrainFiles {

namespace {

constexpr char MemberName[] = "N47E011.hgt";

const std::string& folder()
{
    static const Tavik::Support::TemporaryDirectory directory;
    return directory.path();
}

/// A random value in [0, 1) for each point of a lattice.
double lattice(std::int64_t row, std::int64_t column)
{
    std::uint64_t bits = static_cast<std::uint64_t>(row) * 0x9E3779B97F4A7C15u + static_cast<std::uint64_t>(column);
    bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9u;
    bits = (bits ^ bits >> 27) * 0x94D049BB133111EBu;
    return static_cast<double>((bits ^ bits >> 31) >> 11) * 0x1p-53;
}

/// The lattice with smooth slopes between its points.
double noise(double row, double column)
{
    const double i = std::floor(row);
    const double j = std::floor(column);
    const double ti = (row - i) * (row - i) * (3 - 2 * (row - i));
    const double tj = (column - j) * (column - j) * (3 - 2 * (column - j));
    const auto r = static_cast<std::int64_t>(i);
    const auto c = static_cast<std::int64_t>(j);
    const double south = lattice(r, c) + tj * (lattice(r, c + 1) - lattice(r, c));
    const double north = lattice(r + 1, c) + tj * (lattice(r + 1, c + 1) - lattice(r + 1, c));
    return south + ti * (north - south);
}

} // namespace

int mountainHeight(double row, double column)
{
    double height = 0.0;
    double amplitude = 1800.0; // metres
    double wave = 900.0;       // seconds of arc
    while (wave >= 1.5) {
        height += amplitude * noise(row / wave, column / wave);
        amplitude *= 0.48;
        wave /= 2;
    }
    return static_cast<int>(height);
}

const std::string& srtm1Archive()
{
    static const std::string path = [] {
        std::string heights(2 * Srtm1Side * Srtm1Side, '\0');
        for (std::size_t k = 0; k < Srtm1Side * Srtm1Side; ++k) {
            const std::size_t row = k / Srtm1Side;
            const std::size_t column = k % Srtm1Side;
            const int height = mountainHeight(static_cast<double>(row), static_cast<double>(column));
            heights[2 * k] = static_cast<char>(height >> 8);
            heights[2 * k + 1] = static_cast<char>(height & 0xFF);
        }
        std::string archive = folder() + "/N47E011.SRTMGL1.hgt.zip";
        Tavik::Support::ZipWriter writer(archive);
        writer.add(MemberName, heights.data(), heights.size());
        if (!writer.close()) {
            std::exit(EXIT_FAILURE);
        }
        return archive;
    }();
    return path;
}

std::string srtm1MemberForGdal()
{
    return "/vsizip/" + srtm1Archive() + "/" + MemberName;
}

const std::string& dtedFile()
{
    static const std::string path = [] {
        std::string file = folder() + "/N47E011.DT1";
        Tavik::Support::writeDted(file, {47, 11}, [](unsigned int i, unsigned int j) {
            return mountainHeight(3.0 * (DtedSide - 1.0 - i), 3.0 * j);
        });
        return file;
    }();
    return path;
}

} // namespace TerrainFiles
