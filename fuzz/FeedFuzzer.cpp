// Feeds of the examples: satellite receivers' sentences, transponder receivers' lines and the traffic feed's messages,
// all from the same bytes. Each line is tried as it is and with a checksum that fits, without which sentences end
// early.

#include <feeds/Messages.h>
#include <feeds/Nmea.h>
#include <feeds/Sbs.h>
#include <fuzz/Require.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

using namespace Feeds;
using Tavik::Fuzz::require;

namespace {

using Value = std::optional<double>;

bool isWithin(const Value& value, double lowest, double highest)
{
    return !value || (*value >= lowest && *value <= highest);
}

bool isPosition(const Value& lat, const Value& lon)
{
    return lat.has_value() == lon.has_value() && isWithin(lat, -90.0, 90.0) && isWithin(lon, -180.0, 180.0);
}

void check(std::monostate /*nothing*/) {}

void check(const NmeaRmc& rmc)
{
    require(isPosition(rmc.latDegrees, rmc.lonDegrees));
    require(isWithin(rmc.utcSeconds, 0.0, 86401.0) && isWithin(rmc.trackDegrees, 0.0, 360.0));
    require(!rmc.date || (rmc.date->year >= 1980 && rmc.date->year <= 2079));
    require(!rmc.date || (rmc.date->month >= 1 && rmc.date->month <= 12 && rmc.date->day >= 1 && rmc.date->day <= 31));
}

void check(const NmeaGga& gga)
{
    require(isPosition(gga.latDegrees, gga.lonDegrees));
    require(isWithin(gga.utcSeconds, 0.0, 86401.0) && gga.quality >= 0 && gga.quality <= 9);
}

void check(const SbsMessage& message)
{
    require(isPosition(message.latDegrees, message.lonDegrees) && isWithin(message.trackDegrees, 0.0, 360.0));
    require(message.kind >= 1 && message.kind <= 8 && message.address <= 0xFFFFFF);
}

std::string withChecksum(const std::string& line)
{
    const std::string text = line.substr(0, line.find('*'));
    unsigned int sum = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        sum ^= static_cast<unsigned char>(text[i]);
    }
    char digits[4];
    std::snprintf(digits, sizeof digits, "*%02X", sum);
    return text + digits;
}

std::vector<std::string> linesOf(std::string_view bytes, std::size_t pieceSize)
{
    std::vector<std::string> lines;
    LineSplitter splitter;
    for (std::size_t begin = 0; begin < bytes.size(); begin += pieceSize) {
        splitter.add(bytes.substr(begin, pieceSize), [&](std::string_view line) { lines.emplace_back(line); });
        require(splitter.begun().size() <= LineSplitter::LongestLine);
    }
    return lines;
}

// What has been decoded comes back from its own encoding.
void checkMessages(const unsigned char* bytes, std::size_t size)
{
    if (const auto ownShip = decodeOwnShip(bytes, std::min(size, OwnShipBytes))) {
        const auto sent = encode(*ownShip);
        const auto received = decodeOwnShip(sent.data(), sent.size());
        require(received && encode(*received) == sent);
    }
    if (const auto traffic = decodeTraffic(bytes, std::min(size, TrafficBytes))) {
        const auto sent = encode(*traffic);
        const auto received = decodeTraffic(sent.data(), sent.size());
        require(received && encode(*received) == sent);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const std::vector<std::string> lines = linesOf(bytes, std::max<std::size_t>(size, 1));
    require(lines == linesOf(bytes, 1) && lines == linesOf(bytes, 7));
    for (const std::string& line : lines) {
        for (const std::string& text : {line, withChecksum(line)}) {
            std::visit([](const auto& sentence) { check(sentence); }, decodeNmea(text));
        }
        if (const auto message = decodeSbs(line)) {
            check(*message);
        }
    }
    NmeaStream stream;
    stream.add(bytes, [](const NmeaSentence& sentence) { require(sentence.index() != 0); });
    checkMessages(data, size);
    return 0;
}
