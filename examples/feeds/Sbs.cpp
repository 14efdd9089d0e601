#include <feeds/Sbs.h>

#include <feeds/Fields.h>

#include <charconv>

namespace Feeds {

namespace {

constexpr std::size_t FieldCount = 22;
constexpr std::size_t AddressLength = 6;
constexpr std::size_t LongestCallsign = 8;
constexpr double HighestFeet = 200'000.0;
constexpr double FastestKnots = 10'000.0;

/// Six hexadecimal digits.
std::uint32_t readAddress(FieldReader& reader, std::string_view field)
{
    std::uint32_t address = 0;
    const char* end = field.data() + field.size();
    reader.require(field.size() == AddressLength && std::from_chars(field.data(), end, address, 16).ptr == end);
    return address;
}

/// Printable characters, without spaces at either end.
std::string readCallsign(FieldReader& reader, std::string_view field)
{
    for (const char c : field) {
        reader.require(c >= ' ' && c <= '~');
    }
    const std::size_t begin = field.find_first_not_of(' ');
    if (begin == std::string_view::npos) {
        return {};
    }
    field = field.substr(begin, field.find_last_not_of(' ') + 1 - begin);
    reader.require(field.size() <= LongestCallsign);
    return std::string(field.substr(0, LongestCallsign));
}

std::optional<int> readSquawk(FieldReader& reader, std::string_view field)
{
    reader.require(field.find_first_not_of("01234567") == std::string_view::npos);
    return reader.integer(field, 0, 7777);
}

/// Senders write −1 for true, and some of them 1.
std::optional<bool> readFlag(FieldReader& reader, std::string_view field)
{
    const std::optional<int> value = reader.integer(field, -1, 1);
    return value ? std::optional(*value != 0) : std::nullopt;
}

} // namespace

std::optional<SbsMessage> decodeSbs(std::string_view line)
{
    const Fields fields(line);
    if (fields.size() != FieldCount || fields[0] != "MSG") {
        return std::nullopt;
    }
    FieldReader reader;
    SbsMessage message;
    message.kind = reader.integer(fields[1], 1, 8).value_or(0);
    message.address = readAddress(reader, fields[4]);
    message.callsign = readCallsign(reader, fields[10]);
    message.altitudeFeet = reader.number(fields[11], -HighestFeet, HighestFeet);
    message.speedKnots = reader.number(fields[12], 0.0, FastestKnots);
    message.trackDegrees = reader.number(fields[13], 0.0, 360.0);
    message.latDegrees = reader.number(fields[14], -90.0, 90.0);
    message.lonDegrees = reader.number(fields[15], -180.0, 180.0);
    message.climbFeetPerMinute = reader.number(fields[16], -HighestFeet, HighestFeet);
    message.squawk = readSquawk(reader, fields[17]);
    message.alert = readFlag(reader, fields[18]);
    message.emergency = readFlag(reader, fields[19]);
    message.ident = readFlag(reader, fields[20]);
    message.isOnGround = readFlag(reader, fields[21]);
    reader.require(message.kind != 0 && message.latDegrees.has_value() == message.lonDegrees.has_value());
    return reader.isGood() ? std::optional(message) : std::nullopt;
}

} // namespace Feeds
