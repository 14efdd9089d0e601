#include <feeds/Messages.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Feeds {

namespace {

constexpr std::uint32_t OwnShipMark = 0x534F5654; // "TVOS"

/// Writes one number behind the other.
class Writer
{
public:
    explicit Writer(unsigned char* bytes) : mBytes(bytes) {}

    template <typename Unsigned>
    void add(Unsigned value)
    {
        for (std::size_t i = 0; i < sizeof value; ++i) {
            *mBytes++ = static_cast<unsigned char>(value >> 8 * i & 0xFF);
        }
    }

    void add(double value) { addBits<std::uint64_t>(value); }
    void add(float value) { addBits<std::uint32_t>(value); }

    void add(const std::string& text, std::size_t length)
    {
        std::fill_n(mBytes, length, static_cast<unsigned char>('\0'));
        std::copy_n(text.begin(), std::min(length, text.size()), mBytes);
        mBytes += length;
    }

    void add(const Movement& movement)
    {
        add(movement.latDegrees);
        add(movement.lonDegrees);
        add(movement.altitudeMetres);
        add(movement.speedMetresPerSecond);
        add(movement.trackDegrees);
        add(movement.climbMetresPerSecond);
    }

private:
    template <typename Bits, typename Real>
    void addBits(Real value)
    {
        static_assert(sizeof(Bits) == sizeof(Real));
        Bits bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        add(bits);
    }

    unsigned char* mBytes;
};

/// Reads what Writer has written.
class Reader
{
public:
    explicit Reader(const unsigned char* bytes) : mBytes(bytes) {}

    template <typename Unsigned>
    Unsigned takeInteger()
    {
        Unsigned value = 0;
        for (std::size_t i = 0; i < sizeof value; ++i) {
            value |= static_cast<Unsigned>(*mBytes++) << 8 * i;
        }
        return value;
    }

    double takeDouble() { return takeReal<std::uint64_t, double>(); }
    float takeFloat() { return takeReal<std::uint32_t, float>(); }

    std::string takeText(std::size_t length)
    {
        const unsigned char* end = std::find(mBytes, mBytes + length, static_cast<unsigned char>('\0'));
        std::string text(mBytes, end);
        mBytes += length;
        return text;
    }

    Movement takeMovement()
    {
        Movement movement;
        movement.latDegrees = takeDouble();
        movement.lonDegrees = takeDouble();
        movement.altitudeMetres = takeFloat();
        movement.speedMetresPerSecond = takeFloat();
        movement.trackDegrees = takeFloat();
        movement.climbMetresPerSecond = takeFloat();
        return movement;
    }

private:
    template <typename Bits, typename Real>
    Real takeReal()
    {
        const Bits bits = takeInteger<Bits>();
        Real value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    const unsigned char* mBytes;
};

/// False for NaN, too.
bool isUsable(const Movement& movement)
{
    return std::fabs(movement.latDegrees) <= 90.0 && std::fabs(movement.lonDegrees) <= 180.0 &&
           std::fabs(movement.altitudeMetres) <= LargestAltitudeMetres && movement.speedMetresPerSecond >= 0.0f &&
           movement.speedMetresPerSecond <= LargestSpeedMetresPerSecond && movement.trackDegrees >= 0.0f &&
           movement.trackDegrees <= 360.0f && std::fabs(movement.climbMetresPerSecond) <= LargestSpeedMetresPerSecond;
}

bool isPrintable(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

} // namespace

std::array<unsigned char, OwnShipBytes> encode(const OwnShip& ownShip)
{
    std::array<unsigned char, OwnShipBytes> bytes{};
    Writer writer(bytes.data());
    writer.add(OwnShipMark);
    writer.add(ownShip.sequence);
    writer.add(ownShip.movement);
    return bytes;
}

std::array<unsigned char, TrafficBytes> encode(const Traffic& traffic)
{
    std::array<unsigned char, TrafficBytes> bytes{};
    Writer writer(bytes.data());
    writer.add(traffic.address);
    writer.add(traffic.callsign, CallsignBytes);
    writer.add(traffic.movement);
    return bytes;
}

std::optional<OwnShip> decodeOwnShip(const unsigned char* bytes, std::size_t length)
{
    Reader reader(bytes);
    if (length != OwnShipBytes || reader.takeInteger<std::uint32_t>() != OwnShipMark) {
        return std::nullopt;
    }
    OwnShip ownShip;
    ownShip.sequence = reader.takeInteger<std::uint32_t>();
    ownShip.movement = reader.takeMovement();
    return isUsable(ownShip.movement) ? std::optional(ownShip) : std::nullopt;
}

std::optional<Traffic> decodeTraffic(const unsigned char* bytes, std::size_t length)
{
    if (length != TrafficBytes) {
        return std::nullopt;
    }
    Reader reader(bytes);
    Traffic traffic;
    traffic.address = reader.takeInteger<std::uint32_t>();
    traffic.callsign = reader.takeText(CallsignBytes);
    traffic.movement = reader.takeMovement();
    return isUsable(traffic.movement) && isPrintable(traffic.callsign) ? std::optional(traffic) : std::nullopt;
}

} // namespace Feeds
