#include <feeds/LineSplitter.h>
#include <feeds/Messages.h>
#include <feeds/Nmea.h>
#include <feeds/Sbs.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <limits>
#include <vector>

using namespace Feeds;

namespace {

/// "$" + text + "*" + checksum.
std::string sentence(const std::string& text)
{
    unsigned int sum = 0;
    for (const char c : text) {
        sum ^= static_cast<unsigned char>(c);
    }
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02X", sum);
    return "$" + text + "*" + digits.data();
}

const std::string Rmc = "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A";
const std::string Gga = "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47";

std::vector<std::string> split(LineSplitter splitter, const std::string& text, std::size_t piece)
{
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < text.size(); i += piece) {
        splitter.add(std::string_view(text).substr(i, piece), [&](std::string_view line) { lines.emplace_back(line); });
    }
    return lines;
}

} // namespace

TEST(FeedsTest, makesLinesHoweverTheStreamIsCut)
{
    const std::string longest(512, 'a');
    const std::string text =
        "one\r\ntwo\n\n" + longest + "\n" + longest + "b\n" + std::string(5000, 'c') + "\nthree\rfour";
    const std::vector<std::string> expected = {"one", "two", longest, "three"};
    for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, std::size_t{513}, text.size()}) {
        EXPECT_EQ(split(LineSplitter(), text, piece), expected) << piece;
        EXPECT_EQ(split(LineSplitter('$'), "x$a$b\n" + std::string(600, 'd') + "$e\n", piece),
                  (std::vector<std::string>{"x", "$a", "$b", "$e"}))
            << piece;
    }
}

TEST(FeedsTest, decodesPositionSentences)
{
    const NmeaSentence first = decodeNmea(Rmc);
    ASSERT_TRUE(std::holds_alternative<NmeaRmc>(first));
    const auto& rmc = std::get<NmeaRmc>(first);
    EXPECT_TRUE(rmc.isValid);
    EXPECT_EQ(rmc.utcSeconds, 12 * 3600 + 35 * 60 + 19);
    EXPECT_EQ(rmc.date->year * 10000 + rmc.date->month * 100 + rmc.date->day, 19940323);
    EXPECT_NEAR(rmc.latDegrees.value(), 48.0 + 7.038 / 60.0, 1e-12);
    EXPECT_NEAR(rmc.lonDegrees.value(), 11.0 + 31.0 / 60.0, 1e-12);
    EXPECT_EQ(rmc.speedKnots, 22.4);
    EXPECT_EQ(rmc.trackDegrees, 84.4);
    EXPECT_EQ(rmc.variationEast, -3.1);

    const NmeaSentence second = decodeNmea("rest of another" + Gga);
    ASSERT_TRUE(std::holds_alternative<NmeaGga>(second));
    const auto& gga = std::get<NmeaGga>(second);
    EXPECT_EQ(gga.quality, 1);
    EXPECT_EQ(gga.satellites, 8);
    EXPECT_EQ(gga.horizontalDilution, 0.9);
    EXPECT_EQ(gga.altitudeMetres, 545.4);
    EXPECT_EQ(gga.geoidMetres, 46.9);

    const NmeaSentence third = decodeNmea(sentence("GNRMC,,V,,,,,,,,,,N"));
    ASSERT_TRUE(std::holds_alternative<NmeaRmc>(third)) << "a receiver that has nothing yet";
    const auto& empty = std::get<NmeaRmc>(third);
    EXPECT_FALSE(empty.isValid || empty.utcSeconds || empty.date || empty.latDegrees || empty.lonDegrees ||
                 empty.speedKnots || empty.trackDegrees || empty.variationEast);

    const NmeaSentence fourth = decodeNmea(sentence("BDRMC,235960.5,A,9000.0,S,18000,W,0,360,311279"));
    ASSERT_TRUE(std::holds_alternative<NmeaRmc>(fourth)) << "the ends of all ranges, and the older, shorter form";
    EXPECT_EQ(std::get<NmeaRmc>(fourth).utcSeconds, 86400.5);
    EXPECT_EQ(std::get<NmeaRmc>(fourth).latDegrees, -90.0);
    EXPECT_EQ(std::get<NmeaRmc>(fourth).lonDegrees, -180.0);
    EXPECT_EQ(std::get<NmeaRmc>(fourth).date->year, 2079);
}

TEST(FeedsTest, refusesOtherSentences)
{
    const std::string texts[] = {
        "PGRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W", // proprietary
        "GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4",                // cut
        "GPRMC,123519,B,4807.038,N,01131.000,E,022.4,084.4,230394,,",       // status
        "GPRMC,123519,A,4860.000,N,01131.000,E,022.4,084.4,230394,,",       // minutes
        "GPRMC,123519,A,9000.001,N,01131.000,E,022.4,084.4,230394,,",       // beyond the pole
        "GPRMC,123519,A,4807.038,E,01131.000,E,022.4,084.4,230394,,",       // half
        "GPRMC,123519,A,4807.038,N,,,022.4,084.4,230394,,",                 // half a position
        "GPRMC,123519,A,-4807.038,N,01131.000,E,022.4,084.4,230394,,",
        "GPRMC,123519,A,4807.038,N,01131.000,E,nan,084.4,230394,,",
        "GPRMC,123519,A,4807.038,N,01131.000,E,1e3,084.4,230394,,",
        "GPRMC,126019,A,4807.038,N,01131.000,E,022.4,084.4,230394,,",
        "GPRMC,1235,A,4807.038,N,01131.000,E,022.4,084.4,230394,,",
        "GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,231394,,",
        "GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,2303,,",
        "GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,F,46.9,M,,", // feet
        "GPVTG,1,2,3,4",
    };
    for (const std::string& text : texts) {
        EXPECT_EQ(decodeNmea(sentence(text)).index(), 0u) << text;
    }
    std::string changed = Rmc;
    changed[20] = '9';
    for (const std::string& line : {changed, Rmc + "0", Rmc.substr(0, Rmc.size() - 3), Rmc.substr(1), Rmc + "\r",
                                    std::string("$*00"), std::string("$"), std::string()}) {
        EXPECT_EQ(decodeNmea(line).index(), 0u) << line;
    }
}

TEST(FeedsTest, takesSentencesFromDatagrams)
{
    const auto kinds = [](const std::vector<std::string>& datagrams) {
        NmeaStream stream;
        std::string found;
        for (const std::string& datagram : datagrams) {
            stream.add(datagram, [&](const NmeaSentence& s) { found += s.index() == 1 ? 'R' : 'G'; });
            found += '.';
        }
        return found;
    };
    EXPECT_EQ(kinds({Rmc + "\r\n" + Gga + "\r\n"}), "RG.");
    EXPECT_EQ(kinds({Rmc.substr(0, 30), Rmc.substr(30) + "\r\n" + Gga.substr(0, 40), Gga.substr(40) + "\n"}), ".R.G.");
    EXPECT_EQ(kinds({Rmc, Gga, "\r\n"}), "R.G..") << "without ends of lines, each is there at once and once";
    EXPECT_EQ(kinds({Rmc.substr(0, 30), Gga + "\r\n"}), ".G.") << "the rest was lost";
}

TEST(FeedsTest, decodesTransponderLines)
{
    const auto decoded =
        decodeSbs("MSG,3,1,1,4CA2D6,1,2023/01/02,03:04:05.678,2023/01/02,03:04:05.700, RYR 12 ,37000,451.5,"
                  "0,-53.25,179.5,-640,7700,-1,0,1,0");
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->kind, 3);
    EXPECT_EQ(decoded->address, 0x4CA2D6u);
    EXPECT_EQ(decoded->callsign, "RYR 12");
    EXPECT_EQ(decoded->altitudeFeet, 37000.0);
    EXPECT_EQ(decoded->speedKnots, 451.5);
    EXPECT_EQ(decoded->trackDegrees, 0.0);
    EXPECT_EQ(decoded->latDegrees, -53.25);
    EXPECT_EQ(decoded->lonDegrees, 179.5);
    EXPECT_EQ(decoded->climbFeetPerMinute, -640.0);
    EXPECT_EQ(decoded->squawk, 7700);
    EXPECT_EQ(decoded->alert, true);
    EXPECT_EQ(decoded->emergency, false);
    EXPECT_EQ(decoded->ident, true);
    EXPECT_EQ(decoded->isOnGround, false);

    const auto empty = decodeSbs("MSG,8,,,abcdef,,,,,,,,,,,,,,,,,");
    ASSERT_TRUE(empty);
    EXPECT_FALSE(empty->altitudeFeet || empty->latDegrees || empty->squawk || empty->alert || empty->isOnGround);

    const char* const refused[] = {
        "MSG,9,,,abcdef,,,,,,,,,,,,,,,,,",           // kind
        "MSG,,,,abcdef,,,,,,,,,,,,,,,,,",            // no kind
        "MSG,3,,,abcdef,,,,,,,,,,,,,,,,",            // 21 fields
        "MSG,3,,,abcdef,,,,,,,,,,,,,,,,,,",          // 23
        "MSG,3,,,abcdeg,,,,,,,,,,,,,,,,,",           // address
        "MSG,3,,,abcde,,,,,,,,,,,,,,,,,",            // short
        "MSG,3,,,abcdef,,,,,,,,,,50.5,,,,,,,",       // half a position
        "MSG,3,,,abcdef,,,,,,,,,,90.5,1,,,,,,",      // beyond the pole
        "MSG,3,,,abcdef,,,,,,,high,,,,,,,,,,",       // altitude
        "MSG,3,,,abcdef,,,,,,,,,,,,,7800,,,,",       // squawk
        "MSG,1,,,abcdef,,,,,,TOO LONG 1,,,,,,,,,,,", // callsign
        "MSG,1,,,abcdef,,,,,,A\x1B[2J,,,,,,,,,,,",   // control characters
        "STA,,1,1,abcdef,1,,,,,RM,,,,,,,,,,,",
        "",
        ",",
    };
    for (const char* line : refused) {
        EXPECT_FALSE(decodeSbs(line)) << line;
    }
}

TEST(FeedsTest, carriesItsOwnMessages)
{
    const Movement movement = {-33.9, 151.25, 3000.5f, 120.25f, 359.5f, -2.5f};
    const auto bytes = encode(OwnShip{0xFEDCBA98, movement});
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 8), "TVOS\x98\xBA\xDC\xFE");
    const auto ownShip = decodeOwnShip(bytes.data(), bytes.size());
    ASSERT_TRUE(ownShip);
    EXPECT_EQ(ownShip->sequence, 0xFEDCBA98u);
    EXPECT_EQ(ownShip->movement.latDegrees, movement.latDegrees);
    EXPECT_EQ(ownShip->movement.lonDegrees, movement.lonDegrees);
    EXPECT_EQ(ownShip->movement.altitudeMetres, movement.altitudeMetres);
    EXPECT_EQ(ownShip->movement.speedMetresPerSecond, movement.speedMetresPerSecond);
    EXPECT_EQ(ownShip->movement.trackDegrees, movement.trackDegrees);
    EXPECT_EQ(ownShip->movement.climbMetresPerSecond, movement.climbMetresPerSecond);
    EXPECT_FALSE(decodeOwnShip(bytes.data(), bytes.size() - 1));
    EXPECT_FALSE(decodeOwnShip(bytes.data() + 1, bytes.size() - 1));

    const auto whole = encode(Traffic{7, "EIGHT888+", movement});
    const auto traffic = decodeTraffic(whole.data(), whole.size());
    ASSERT_TRUE(traffic);
    EXPECT_EQ(traffic->address, 7u);
    EXPECT_EQ(traffic->callsign, "EIGHT888");
    EXPECT_EQ(traffic->movement.climbMetresPerSecond, -2.5f);

    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const Movement& bad :
         {Movement{90.1, 0, 0, 0, 0, 0}, Movement{nan, 0, 0, 0, 0, 0}, Movement{0, nan, 0, 0, 0, 0},
          Movement{0, 0, static_cast<float>(nan), 0, 0, 0}, Movement{0, 0, 3e38f, 0, 0, 0}, Movement{0, 0, 0, -1, 0, 0},
          Movement{0, 0, 0, 0, -1, 0}, Movement{0, 0, 0, 0, 0, -1e5f}}) {
        const auto wrong = encode(Traffic{7, "", bad});
        EXPECT_FALSE(decodeTraffic(wrong.data(), wrong.size()));
    }
    const auto hidden = encode(Traffic{7, "A\x1B[2J", movement});
    EXPECT_FALSE(decodeTraffic(hidden.data(), hidden.size()));
}
