#include "TerrainTables.h"
#include "Table.h"

#include <support/DtedWriter.h>
#include <support/TemporaryDirectory.h>
#include <support/ZipWriter.h>

#include <tavik/geodetic/TerrainTile.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace Accuracy {

namespace {

constexpr double RadiansPerDegree = 0.017453292519943295;
constexpr int South = 46; // degrees: where the made tiles lie
constexpr int West = 8;
constexpr double MiddleLat = South + 0.5;
constexpr int Points = 400; // to each side of the square that is asked

/// Metres to a degree on the WGS 84 ellipsoid, in the middle of the tile.
struct Degree
{
    double north;
    double east;
};

Degree degree()
{
    constexpr double EquatorialRadius = 6378137.0;
    constexpr double Eccentricity2 = 0.00669437999014;
    const double sine = std::sin(MiddleLat * RadiansPerDegree);
    const double w = std::sqrt(1.0 - Eccentricity2 * sine * sine);
    return {EquatorialRadius * (1.0 - Eccentricity2) / (w * w * w) * RadiansPerDegree,
            EquatorialRadius / w * std::cos(MiddleLat * RadiansPerDegree) * RadiansPerDegree};
}

/// Waves in both directions.
struct Ground
{
    double base;      // metres
    double amplitude; // metres
    double length;    // metres, from crest to crest

    double eastPhase(double lon) const { return 2.0 * M_PI * (lon - West) * degree().east / length; }
    double northPhase(double lat) const { return 2.0 * M_PI * (lat - South) * degree().north / length; }
    double height(double lat, double lon) const
    {
        return base + amplitude * std::sin(eastPhase(lon)) * std::sin(northPhase(lat));
    }
    double slopeEast(double lat, double lon) const
    {
        return 2.0 * M_PI / length * amplitude * std::cos(eastPhase(lon)) * std::sin(northPhase(lat));
    }
    double slopeNorth(double lat, double lon) const
    {
        return 2.0 * M_PI / length * amplitude * std::sin(eastPhase(lon)) * std::cos(northPhase(lat));
    }
};

enum class Format
{
    Dted1,
    Srtm3,
    Srtm1
};

void writeTile(const std::string& path, Format format, const Ground& ground)
{
    const unsigned int points = format == Format::Srtm1 ? 3601 : 1201;
    const auto sample = [&](unsigned int fromSouth, unsigned int fromWest) {
        const double step = 1.0 / (points - 1);
        return static_cast<int>(std::lround(ground.height(South + fromSouth * step, West + fromWest * step)));
    };
    if (format == Format::Dted1) {
        Tavik::Support::writeDted(path, {South, West}, sample);
        return;
    }
    std::vector<unsigned char> bytes; // rows from the north, the high byte first
    for (unsigned int row = 0; row < points; ++row) {
        for (unsigned int column = 0; column < points; ++column) {
            const int metres = sample(points - 1 - row, column);
            bytes.push_back(static_cast<unsigned char>(metres >> 8));
            bytes.push_back(static_cast<unsigned char>(metres));
        }
    }
    Tavik::Support::ZipWriter writer(path);
    writer.add("N46E008.hgt", bytes.data(), bytes.size(), 1);
    writer.close();
}

struct Errors
{
    double meanHeight = 0.0; // root of the mean square, metres
    double worstHeight = 0.0;
    double meanNormal = 0.0; // degrees
    double meanCorrected = 0.0;
    double worstCorrected = 0.0;
};

/// Between the two directions, degrees.
double angleBetween(const double (&a)[3], const double (&b)[3])
{
    const double crossed[3] = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    const double sine = std::sqrt(crossed[0] * crossed[0] + crossed[1] * crossed[1] + crossed[2] * crossed[2]);
    return std::atan2(sine, a[0] * b[0] + a[1] * b[1] + a[2] * b[2]) / RadiansPerDegree;
}

Errors measure(Format format, const Ground& ground)
{
    const Tavik::Support::TemporaryDirectory directory;
    Tavik::Geodetic::TerrainTile tile;
    if (format == Format::Dted1) {
        const std::string path = directory.path() + "/N46E008.DT1";
        writeTile(path, format, ground);
        tile.loadTile(path);
    } else {
        const std::string path =
            directory.path() + (format == Format::Srtm1 ? "/N46E008.SRTMGL1.hgt.zip" : "/N46E008.SRTMGL3.hgt.zip");
        writeTile(path, format, ground);
        tile.loadTileHGT(path);
    }
    tile.loadAllData();

    Errors errors;
    for (int i = 0; i < Points; ++i) {
        for (int j = 0; j < Points; ++j) {
            // A tenth of a degree about the middle, with steps that fall on no sample twice in the same way.
            const double lat = MiddleLat - 0.05 + 0.1 * (i + 0.37) / Points;
            const double lon = West + 0.45 + 0.1 * (j + 0.61) / Points;
            double height = 0.0;
            tile.getAltitude(lat, lon, height);
            const double heightError = std::abs(height - ground.height(lat, lon));
            unsigned char x = 0, y = 0, z = 0;
            tile.getNormal(lat, lon, x, y, z);
            const double found[3] = {(x + 0.5) / 127.5 - 1.0, (y + 0.5) / 127.5 - 1.0, (z + 0.5) / 127.5 - 1.0};
            // Each slope has been measured by the step of the other axis.
            const double corrected[3] = {found[0] / std::cos(South * RadiansPerDegree),
                                         found[1] * std::cos(South * RadiansPerDegree), found[2]};
            const double normal[3] = {-ground.slopeEast(lat, lon), -ground.slopeNorth(lat, lon), 1.0};
            const double normalError = angleBetween(found, normal);
            const double correctedError = angleBetween(corrected, normal);
            errors.meanHeight += heightError * heightError;
            errors.meanNormal += normalError * normalError;
            errors.worstHeight = std::max(errors.worstHeight, heightError);
            errors.meanCorrected += correctedError * correctedError;
            errors.worstCorrected = std::max(errors.worstCorrected, correctedError);
        }
    }
    errors.meanHeight = std::sqrt(errors.meanHeight / (Points * Points));
    errors.meanNormal = std::sqrt(errors.meanNormal / (Points * Points));
    errors.meanCorrected = std::sqrt(errors.meanCorrected / (Points * Points));
    return errors;
}

void addRow(Table& table, const std::string& name, Format format, const Ground& ground)
{
    const Errors errors = measure(format, ground);
    table.add(name,
              {errors.meanHeight, errors.worstHeight, errors.meanNormal, errors.meanCorrected, errors.worstCorrected});
}

const std::vector<std::string> Columns = {"height", "worst", "normal", "corrected", "worst"};

} // namespace

void printHills()
{
    Table table("file, hills", Columns);
    for (const double length : {500.0, 1000.0, 2000.0, 5000.0}) {
        const Ground ground = {1000.0, 0.05 * length, length};
        const std::string hills = std::to_string(static_cast<int>(length)) + " m";
        addRow(table, "DTED 1, " + hills, Format::Dted1, ground);
        addRow(table, "SRTMGL3, " + hills, Format::Srtm3, ground);
        addRow(table, "SRTMGL1, " + hills, Format::Srtm1, ground);
    }
    table.print();
}

void printTerraces()
{
    Table table("file, slope", Columns);
    for (const double percent : {0.2, 1.0, 5.0}) {
        constexpr double Length = 20000.0;
        const Ground ground = {1000.0, percent / 100.0 * Length / (2.0 * M_PI), Length};
        const std::string slope = std::to_string(percent).substr(0, 3) + " %";
        addRow(table, "DTED 1, " + slope, Format::Dted1, ground);
        addRow(table, "SRTMGL3, " + slope, Format::Srtm3, ground);
        addRow(table, "SRTMGL1, " + slope, Format::Srtm1, ground);
    }
    table.print();
}

} // namespace Accuracy
