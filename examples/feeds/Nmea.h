#pragma once

#include <feeds/LineSplitter.h>

#include <functional>
#include <optional>
#include <string_view>
#include <variant>

/// Sentences of NMEA 0183, as satellite receivers send them: "$GPRMC,…*5A" and "$GPGGA,…*47".
namespace Feeds {

struct NmeaDate
{
    int year = 0; ///< two digits on the wire: 1980 to 2079
    int month = 0;
    int day = 0;
};

/// RMC: position, speed and course. A field that the sender left empty is absent.
struct NmeaRmc
{
    bool isValid = false;                ///< whether the receiver trusts its position
    std::optional<double> utcSeconds;    ///< since midnight, in [0, 86401)
    std::optional<NmeaDate> date;        ///< UTC
    std::optional<double> latDegrees;    ///< north positive; absent and present together with the longitude
    std::optional<double> lonDegrees;    ///< east positive
    std::optional<double> speedKnots;    ///< over ground
    std::optional<double> trackDegrees;  ///< over ground, clockwise from true north, in [0, 360]
    std::optional<double> variationEast; ///< magnetic, degrees, east positive
};

/// GGA: position and height. A field that the sender left empty is absent.
struct NmeaGga
{
    int quality = 0; ///< 0 no position, 1 satellites alone, 2 differential, 4 and 5 real time kinematic, 6 estimated,
                     ///< 7 entered by hand, 8 simulated
    std::optional<double> utcSeconds; ///< as in NmeaRmc
    std::optional<double> latDegrees;
    std::optional<double> lonDegrees;
    std::optional<int> satellites;
    std::optional<double> horizontalDilution;
    std::optional<double> altitudeMetres; ///< above mean sea level
    std::optional<double> geoidMetres;    ///< mean sea level above the ellipsoid
};

/// The first alternative where there is nothing to use.
using NmeaSentence = std::variant<std::monostate, NmeaRmc, NmeaGga>;

/// Decodes one line. What stands before its last '$' is ignored: it is the rest of a sentence whose end was lost.
///
/// Answers nothing for other sentences than RMC and GGA (of any talker, but not proprietary ones, which begin with P),
/// where the checksum is absent or wrong, and where a field is neither empty nor what it should be.
NmeaSentence decodeNmea(std::string_view line);

/// Sentences out of datagrams, of which one may hold several, or a part.
class NmeaStream
{
public:
    using Receiver = std::function<void(const NmeaSentence& sentence)>;

    /// Calls the receiver for each RMC and GGA sentence that has come whole, be there an end of the line or not.
    void add(std::string_view datagram, const Receiver& receiver);

private:
    LineSplitter mLines{'$'};
};

} // namespace Feeds
