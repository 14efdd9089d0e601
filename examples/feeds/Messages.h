#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

/// What traffic_feed sends: the own ship in UDP datagrams, other aircraft as the payload of TCP messages.
///
/// Numbers are little-endian, doubles and floats in IEEE 754, without gaps in the order of the fields.
namespace Feeds {

/// Where an aircraft is, and where it is going.
struct Movement
{
    double latDegrees = 0.0;           ///< in [-90, 90], north positive
    double lonDegrees = 0.0;           ///< in [-180, 180], east positive
    float altitudeMetres = 0.0f;       ///< in [-100000, 100000]
    float speedMetresPerSecond = 0.0f; ///< over ground, in [0, 10000]
    float trackDegrees = 0.0f;         ///< over ground, clockwise from true north, in [0, 360]
    float climbMetresPerSecond = 0.0f; ///< in [-10000, 10000]
};

struct OwnShip
{
    std::uint32_t sequence = 0; ///< counts the datagrams, so that a late one is known
    Movement movement;
};

struct Traffic
{
    std::uint32_t address = 0; ///< tells aircraft apart
    std::string callsign;      ///< at most 8 printable characters of ASCII
    Movement movement;
};

constexpr float LargestAltitudeMetres = 100'000.0f;
constexpr float LargestSpeedMetresPerSecond = 10'000.0f;

/// The type in the header of a message that carries Traffic.
constexpr std::uint32_t TrafficMessage = 1;

/// The type of one without a payload, which comes each second: an empty sky is no lost feed.
constexpr std::uint32_t HeartbeatMessage = 2;

/// Where they go, unless told otherwise.
constexpr int OwnShipPort = 4100; // UDP
constexpr int TrafficPort = 4101; // TCP

constexpr std::size_t MovementBytes = 32;
constexpr std::size_t CallsignBytes = 8;                                // filled up with NUL
constexpr std::size_t OwnShipBytes = 4 + 4 + MovementBytes;             // "TVOS", sequence, movement
constexpr std::size_t TrafficBytes = 4 + CallsignBytes + MovementBytes; // address, callsign, movement

std::array<unsigned char, OwnShipBytes> encode(const OwnShip& ownShip);
std::array<unsigned char, TrafficBytes> encode(const Traffic& traffic);

/// @return nothing where the length or the first four bytes differ, or a number is out of its range
std::optional<OwnShip> decodeOwnShip(const unsigned char* bytes, std::size_t length);

/// @return nothing where the length differs, a number is out of its range, or the callsign has other characters
std::optional<Traffic> decodeTraffic(const unsigned char* bytes, std::size_t length);

} // namespace Feeds
