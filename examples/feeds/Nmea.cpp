#include <feeds/Nmea.h>

#include <feeds/Fields.h>

#include <array>
#include <charconv>
#include <cmath>

namespace Feeds {

namespace {

constexpr std::size_t AddressLength = 5; // two of the talker, three of the sentence
constexpr std::size_t ChecksumLength = 2;
constexpr std::size_t FewestRmcFields = 10; // up to the date
constexpr std::size_t FewestGgaFields = 10; // up to the altitude

/// The text between '$' and '*' of a sentence whose checksum is right.
std::optional<std::string_view> checkedText(std::string_view line)
{
    const std::size_t begin = line.rfind('$');
    if (begin == std::string_view::npos) {
        return std::nullopt;
    }
    line.remove_prefix(begin + 1);
    const std::size_t star = line.find('*');
    if (star == std::string_view::npos || line.size() != star + 1 + ChecksumLength) {
        return std::nullopt;
    }
    unsigned int told = 0;
    const char* end = line.data() + line.size();
    if (std::from_chars(line.data() + star + 1, end, told, 16).ptr != end) {
        return std::nullopt;
    }
    unsigned int sum = 0;
    for (const char c : line.substr(0, star)) {
        sum ^= static_cast<unsigned char>(c);
    }
    return sum == told ? std::optional(line.substr(0, star)) : std::nullopt;
}

/// The seconds may be 60, in a leap second.
std::optional<double> readTime(FieldReader& reader, std::string_view field)
{
    if (field.empty()) {
        return std::nullopt;
    }
    const auto hours = reader.integer(field.substr(0, 2), 0, 23);
    const auto minutes = reader.integer(field.size() > 2 ? field.substr(2, 2) : "x", 0, 59);
    const auto seconds = reader.number(field.size() > 4 ? field.substr(4) : "x", 0.0, 60.999999);
    return 3600.0 * hours.value_or(0) + 60.0 * minutes.value_or(0) + seconds.value_or(0.0);
}

std::optional<NmeaDate> readDate(FieldReader& reader, std::string_view field)
{
    if (field.empty()) {
        return std::nullopt;
    }
    reader.require(field.size() == 6);
    if (!reader.isGood()) {
        return std::nullopt;
    }
    NmeaDate date;
    date.day = reader.integer(field.substr(0, 2), 1, 31).value_or(0);
    date.month = reader.integer(field.substr(2, 2), 1, 12).value_or(0);
    const int year = reader.integer(field.substr(4, 2), 0, 99).value_or(0);
    date.year = year + (year < 80 ? 2000 : 1900);
    return date;
}

/// Degrees and minutes without a gap, such as 4717.11 for 47° 17.11', and the half of the globe.
/// @param positive,negative  letters of the halves
std::optional<double> readAngle(FieldReader& reader, std::string_view field, std::string_view half, char positive,
                                char negative, double limit)
{
    const std::optional<double> packed = reader.number(field, 0.0, limit * 100.0);
    reader.require(packed ? half.size() == 1 && (half[0] == positive || half[0] == negative) : half.empty());
    if (!packed || !reader.isGood()) {
        return std::nullopt;
    }
    const double whole = std::floor(*packed / 100.0);
    const double minutes = *packed - 100.0 * whole;
    const double degrees = whole + minutes / 60.0;
    reader.require(minutes < 60.0 && degrees <= limit);
    return half[0] == positive ? degrees : -degrees;
}

/// @param first  number of the latitude's field, followed by its half, the longitude and that one's half
template <typename Sentence>
void readPosition(FieldReader& reader, const Fields& fields, std::size_t first, Sentence& sentence)
{
    sentence.latDegrees = readAngle(reader, fields[first], fields[first + 1], 'N', 'S', 90.0);
    sentence.lonDegrees = readAngle(reader, fields[first + 2], fields[first + 3], 'E', 'W', 180.0);
    reader.require(sentence.latDegrees.has_value() == sentence.lonDegrees.has_value());
}

std::optional<double> readVariation(FieldReader& reader, std::string_view field, std::string_view direction)
{
    const std::optional<double> degrees = reader.number(field, 0.0, 180.0);
    if (!degrees) {
        return std::nullopt; // some senders give the direction all the same
    }
    reader.require(direction == "E" || direction == "W");
    return direction == "E" ? *degrees : -*degrees;
}

/// A length with its unit.
std::optional<double> readMetres(FieldReader& reader, std::string_view field, std::string_view unit)
{
    const std::optional<double> metres = reader.number(field, -100'000.0, 1e9);
    reader.require(!metres || unit == "M");
    return metres;
}

NmeaSentence decodeRmc(const Fields& fields)
{
    FieldReader reader;
    NmeaRmc rmc;
    rmc.utcSeconds = readTime(reader, fields[1]);
    reader.require(fields[2] == "A" || fields[2] == "V");
    rmc.isValid = fields[2] == "A" && fields[12] != "N"; // the mode of newer receivers
    readPosition(reader, fields, 3, rmc);
    rmc.speedKnots = reader.number(fields[7], 0.0, 1e6);
    rmc.trackDegrees = reader.number(fields[8], 0.0, 360.0);
    rmc.date = readDate(reader, fields[9]);
    rmc.variationEast = readVariation(reader, fields[10], fields[11]);
    return fields.size() >= FewestRmcFields && reader.isGood() ? NmeaSentence(rmc) : NmeaSentence();
}

NmeaSentence decodeGga(const Fields& fields)
{
    FieldReader reader;
    NmeaGga gga;
    gga.utcSeconds = readTime(reader, fields[1]);
    readPosition(reader, fields, 2, gga);
    gga.quality = reader.integer(fields[6], 0, 9).value_or(0);
    gga.satellites = reader.integer(fields[7], 0, 999);
    gga.horizontalDilution = reader.number(fields[8], 0.0, 1e6);
    gga.altitudeMetres = readMetres(reader, fields[9], fields[10]);
    gga.geoidMetres = readMetres(reader, fields[11], fields[12]);
    return fields.size() >= FewestGgaFields && reader.isGood() ? NmeaSentence(gga) : NmeaSentence();
}

} // namespace

NmeaSentence decodeNmea(std::string_view line)
{
    const std::optional<std::string_view> text = checkedText(line);
    if (!text) {
        return {};
    }
    const Fields fields(*text);
    const std::string_view address = fields[0];
    if (address.size() != AddressLength || address[0] == 'P') {
        return {};
    }
    const std::string_view kind = address.substr(2);
    return kind == "RMC" ? decodeRmc(fields) : kind == "GGA" ? decodeGga(fields) : NmeaSentence();
}

void NmeaStream::add(std::string_view datagram, const Receiver& receiver)
{
    const auto deliver = [&receiver](std::string_view line) {
        const NmeaSentence sentence = decodeNmea(line);
        const bool isUseful = !std::holds_alternative<std::monostate>(sentence);
        if (isUseful) {
            receiver(sentence);
        }
        return isUseful;
    };
    mLines.add(datagram, deliver);
    if (deliver(mLines.begun())) { // its checksum says that it is whole
        mLines.clear();
    }
}

} // namespace Feeds
