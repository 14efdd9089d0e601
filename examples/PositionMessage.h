#pragma once

#include <cstdint>

/// What position_sender tells and position_receiver prints: 16 bytes, all numbers in network byte order (the highest
/// byte first), so that machines of either byte order understand each other.
struct PositionMessage
{
    static constexpr std::uint32_t Size = 16;
    static constexpr std::uint32_t Type = 1; ///< MsgHeader::msgType over TCP

    std::uint32_t number = 0;     ///< counts the messages of a sender, so that a receiver sees what got lost
    std::int32_t latitude = 0;    ///< 1e-7 degrees, north positive
    std::int32_t longitude = 0;   ///< 1e-7 degrees, east positive
    std::int32_t centimetres = 0; ///< height above mean sea level

    void write(unsigned char* bytes) const
    {
        writeNumber(bytes, number);
        writeNumber(bytes + 4, static_cast<std::uint32_t>(latitude));
        writeNumber(bytes + 8, static_cast<std::uint32_t>(longitude));
        writeNumber(bytes + 12, static_cast<std::uint32_t>(centimetres));
    }

    /// @return false for anything but a message: what comes from the network is checked before it is used
    bool read(const unsigned char* bytes, std::uint32_t size)
    {
        if (size != Size) {
            return false;
        }
        number = readNumber(bytes);
        latitude = static_cast<std::int32_t>(readNumber(bytes + 4));
        longitude = static_cast<std::int32_t>(readNumber(bytes + 8));
        centimetres = static_cast<std::int32_t>(readNumber(bytes + 12));
        return latitude >= -900000000 && latitude <= 900000000 && longitude >= -1800000000 && longitude <= 1800000000;
    }

private:
    static void writeNumber(unsigned char* bytes, std::uint32_t value)
    {
        for (int i = 0; i < 4; ++i) {
            bytes[i] = static_cast<unsigned char>(value >> (24 - 8 * i));
        }
    }

    static std::uint32_t readNumber(const unsigned char* bytes)
    {
        return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
    }
};
