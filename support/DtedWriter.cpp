#include <support/DtedWriter.h>

#include <cstdio>
#include <cstdlib>

// Format: MIL-PRF-89020, Digital Terrain Elevation Data.

namespace Tavik::Support {

namespace {

constexpr std::size_t DataSetIdentificationLength = 648;
constexpr std::size_t AccuracyLength = 2700;

constexpr char DataRecordSentinel = '\xAA';

std::string number(unsigned int value, int digits)
{
    char text[16];
    std::snprintf(text, sizeof text, "%0*u", digits, value);
    return text;
}

/// A whole degree as DDDMMSSH.
std::string origin(int degrees, char positive, char negative)
{
    return number(static_cast<unsigned int>(std::abs(degrees)), 3) + "0000" + (degrees < 0 ? negative : positive);
}

/// The same with two digits for a latitude and tenths of seconds, as the data set identification has it.
std::string corner(int degrees, int digits, const char* tail, char positive, char negative)
{
    return number(static_cast<unsigned int>(std::abs(degrees)), digits) + tail + (degrees < 0 ? negative : positive);
}

void put(std::string& record, std::size_t offset, const std::string& text)
{
    record.replace(offset, text.size(), text);
}

std::string userHeader(const DtedGrid& grid)
{
    return "UHL1" + origin(grid.longitudeDegrees, 'E', 'W') + origin(grid.latitudeDegrees, 'N', 'S') +
           number(grid.longitudeInterval, 4) + number(grid.latitudeInterval, 4) + "NA  " + "U  " +
           std::string(12, ' ') + number(grid.longitudeLines, 4) + number(grid.latitudePoints, 4) + "0" +
           std::string(24, ' ');
}

std::string dataSetIdentification(const DtedGrid& grid)
{
    std::string record(DataSetIdentificationLength, ' ');
    put(record, 0, "DSIU");
    put(record, 59, "DTED1");
    put(record, 87, "01A");
    put(record, 141, "MSLWGS84");
    const int south = grid.latitudeDegrees;
    const int west = grid.longitudeDegrees;
    put(record, 185, corner(south, 2, "0000.0", 'N', 'S') + corner(west, 3, "0000.0", 'E', 'W'));
    const int latitudes[4] = {south, south + 1, south + 1, south};
    const int longitudes[4] = {west, west, west + 1, west + 1};
    for (std::size_t i = 0; i < 4; ++i) {
        put(record, 204 + 15 * i,
            corner(latitudes[i], 2, "0000", 'N', 'S') + corner(longitudes[i], 3, "0000", 'E', 'W'));
    }
    put(record, 264, "0000000.0");
    put(record, 273, number(grid.latitudeInterval, 4) + number(grid.longitudeInterval, 4));
    put(record, 281, number(grid.latitudePoints, 4) + number(grid.longitudeLines, 4));
    put(record, 289, "00");
    return record;
}

std::string accuracy()
{
    std::string record(AccuracyLength, ' ');
    put(record, 0, "ACCNA  NA  NA  NA  ");
    put(record, 55, "00");
    return record;
}

void appendWord(std::string& record, unsigned int value)
{
    record += static_cast<char>(value >> 8 & 0xFF);
    record += static_cast<char>(value & 0xFF);
}

unsigned int wordOf(int height, DtedSign sign)
{
    if (height < 0 && sign == DtedSign::SignAndMagnitude) {
        return 0x8000u | static_cast<unsigned int>(-height);
    }
    return static_cast<std::uint16_t>(height);
}

std::string dataRecord(const DtedGrid& grid, unsigned int column, const DtedHeights& height, DtedSign sign)
{
    std::string record(1, DataRecordSentinel);
    record += static_cast<char>(column >> 16 & 0xFF);
    appendWord(record, column);
    appendWord(record, column);
    appendWord(record, 0);
    for (unsigned int i = 0; i < grid.latitudePoints; ++i) {
        appendWord(record, wordOf(height(i, column), sign));
    }
    unsigned int checksum = 0;
    for (const char byte : record) {
        checksum += static_cast<unsigned char>(byte);
    }
    appendWord(record, checksum >> 16);
    appendWord(record, checksum);
    return record;
}

} // namespace

void writeDted(const std::string& path, const DtedGrid& grid, const DtedHeights& height, DtedSign sign)
{
    if (!tryWriteDted(path, grid, height, sign)) {
        std::perror(path.c_str());
        std::exit(EXIT_FAILURE);
    }
}

bool tryWriteDted(const std::string& path, const DtedGrid& grid, const DtedHeights& height, DtedSign sign)
{
    std::string bytes = userHeader(grid) + dataSetIdentification(grid) + accuracy();
    for (unsigned int column = 0; column < grid.longitudeLines; ++column) {
        bytes += dataRecord(grid, column, height, sign);
    }
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && written;
}

void overwriteBytes(const std::string& path, long offset, const std::string& bytes)
{
    std::FILE* file = std::fopen(path.c_str(), "r+b");
    const bool written = file != nullptr && std::fseek(file, offset, SEEK_SET) == 0 &&
                         std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    if (!written || std::fclose(file) != 0) {
        std::perror(path.c_str());
        std::exit(EXIT_FAILURE);
    }
}

} // namespace Tavik::Support
