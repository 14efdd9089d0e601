#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The lines of text that receivers for aircraft transponders serve on TCP port 30003: "MSG,3,…".
namespace Feeds {

constexpr int SbsPort = 30003;

/// What one transmission of an aircraft told. Which values are there depends on its kind; the others are absent.
struct SbsMessage
{
    int kind = 0; ///< 1 callsign, 2 position on ground, 3 position in flight, 4 velocity, 5 and 7 altitude,
                  ///< 6 squawk, 8 all-call reply
    std::uint32_t address = 0;          ///< of the transponder, 24 bits
    std::string callsign;               ///< without spaces at its ends; empty where absent
    std::optional<double> altitudeFeet; ///< pressure altitude
    std::optional<double> speedKnots;   ///< over ground
    std::optional<double> trackDegrees; ///< over ground, clockwise from true north, in [0, 360]
    std::optional<double> latDegrees;   ///< north positive; absent and present together with the longitude
    std::optional<double> lonDegrees;   ///< east positive
    std::optional<double> climbFeetPerMinute;
    std::optional<int> squawk; ///< four octal digits, read as a decimal number: 7700
    std::optional<bool> alert; ///< the squawk has changed
    std::optional<bool> emergency;
    std::optional<bool> ident; ///< the pilot has pressed the button
    std::optional<bool> isOnGround;
};

/// Decodes one line. Times and the receiver's own numbers are not looked at.
/// @return nothing for lines of other kinds than MSG (selections, status), which do not tell where an aircraft is, for
///         such as have not 22 fields, and where a field is neither empty nor what it should be
std::optional<SbsMessage> decodeSbs(std::string_view line);

} // namespace Feeds
