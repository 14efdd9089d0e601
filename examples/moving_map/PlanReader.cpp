#include <moving_map/PlanReader.h>

#include <moving_map/Numbers.h>
#include <moving_map/Units.h>

#include <cstddef>
#include <fstream>
#include <map>
#include <sstream>
#include <utility>

namespace MovingMap {

namespace {

// What an aircraft display can mean by these; everything computed from them stays far from overflow. The local plane
// needs a cosine of the latitude that is not near zero.
constexpr double LargestLatitude = 85.0;
constexpr double SlowestKnots = 20.0;
constexpr double FastestKnots = 2000.0;
constexpr double LowestFeet = -1500.0;
constexpr double HighestFeet = 60000.0;
constexpr double SmallestMiles = 0.05;
constexpr double LargestMiles = 200.0;

constexpr double DefaultKnots = 240.0;
constexpr std::size_t LargestFileBytes = 1'000'000;

/// Stops the reading of a line; caught in Reader::read, and never leaves this file.
struct Fault
{
    std::string what;
};

class Reader
{
public:
    explicit Reader(FlightPlan& plan) : mPlan(plan) { mPlan.speedMetresPerSecond = toMetresPerSecond(DefaultKnots); }

    /// @return an empty string, or what is wrong and in which line
    std::string read(const std::string& text)
    {
        std::istringstream lines(text);
        std::string line;
        for (mLine = 1; std::getline(lines, line); ++mLine) {
            try {
                readLine(line.substr(0, line.find('#')));
            } catch (const Fault& fault) {
                return std::to_string(mLine) + ": " + fault.what;
            }
        }
        if (mPlan.legs.size() < 2) {
            return std::to_string(mLine - 1) + ": the plan needs a 'start' and at least one leg";
        }
        return {};
    }

private:
    static double toMetresPerSecond(double knots) { return knots * MetresPerNauticalMile / SecondsPerHour; }

    void readLine(const std::string& line)
    {
        mFields = std::istringstream(line);
        std::string keyword;
        if (!(mFields >> keyword)) {
            return;
        }
        if (keyword == "speed") {
            mPlan.speedMetresPerSecond = toMetresPerSecond(number("speed in knots", SlowestKnots, FastestKnots));
            end();
        } else if (keyword == "station") {
            const std::string name = newName(true);
            mPlan.stations.push_back({name, position()});
            end();
        } else {
            readLeg(keyword);
        }
    }

    void readLeg(const std::string& keyword)
    {
        if ((keyword == "start") != mPlan.legs.empty()) {
            const bool known = keyword == "to" || keyword == "cross" || keyword == "arc" || keyword == "turn";
            throw Fault{mPlan.legs.empty() && known ? "the first leg must be a 'start'"
                        : keyword == "start"        ? "a second 'start'"
                                                    : "unknown entry '" + keyword + "'"};
        }
        PlanLeg leg;
        leg.line = mLine;
        if (keyword == "start" || keyword == "to") {
            leg.name = newName(false);
            leg.kind = DirectLeg{position(), false};
        } else if (keyword == "cross") {
            leg.name = newName(false);
            leg.kind = crossing();
        } else if (keyword == "arc") {
            leg.name = newName(false);
            leg.kind = arc();
        } else if (keyword == "turn") {
            leg.name = newName(false);
            leg.kind = TurnLeg{number("course", 0.0, 360.0)};
        } else {
            throw Fault{"unknown entry '" + keyword + "'"};
        }
        readOptions(leg);
        mPlan.legs.push_back(std::move(leg));
    }

    void readOptions(PlanLeg& leg)
    {
        std::string option;
        while (mFields >> option) {
            auto* direct = std::get_if<DirectLeg>(&leg.kind);
            auto* cross = std::get_if<CrossingLeg>(&leg.kind);
            auto* circle = std::get_if<ArcLeg>(&leg.kind);
            if (option == "altitude") {
                leg.altitudeMetres = number("altitude in feet", LowestFeet, HighestFeet) * MetresPerFoot;
            } else if (option == "radius") {
                leg.radiusMetres = number("radius in miles", SmallestMiles, LargestMiles) * MetresPerNauticalMile;
            } else if (option == "left" || option == "right") {
                leg.turn = option == "left" ? TurnDirection::Left : TurnDirection::Right;
            } else if (option == "flyover" && direct != nullptr) {
                direct->flyOver = true;
            } else if (option == "flyover" && cross != nullptr) {
                cross->flyOver = true;
            } else if (option == "course" && circle != nullptr) {
                circle->courseDegrees = number("course", 0.0, 360.0);
            } else {
                throw Fault{"'" + option + "' does not belong here"};
            }
        }
    }

    CrossingLeg crossing()
    {
        CrossingLeg leg;
        leg.firstFix = knownFix();
        leg.firstCourseDegrees = number("first course", 0.0, 360.0);
        leg.secondFix = knownFix();
        leg.secondCourseDegrees = number("second course", 0.0, 360.0);
        return leg;
    }

    ArcLeg arc()
    {
        ArcLeg leg;
        leg.station = field("station");
        const auto station = mIsStation.find(leg.station);
        if (station == mIsStation.end() || !station->second) {
            throw Fault{"no station '" + leg.station + "' above this line"};
        }
        leg.distanceMetres = number("distance in miles", SmallestMiles, LargestMiles) * MetresPerNauticalMile;
        const std::string direction = field("direction");
        if (direction != "clockwise" && direction != "counterclockwise") {
            throw Fault{"direction '" + direction + "' is neither 'clockwise' nor 'counterclockwise'"};
        }
        leg.clockwise = direction == "clockwise";
        leg.radialDegrees = number("radial", 0.0, 360.0);
        return leg;
    }

    Position position()
    {
        Position result;
        result.latDegrees = number("latitude", -LargestLatitude, LargestLatitude);
        result.lonDegrees = number("longitude", -180.0, 180.0);
        return result;
    }

    std::string field(const std::string& what)
    {
        std::string text;
        if (!(mFields >> text)) {
            throw Fault{what + " is missing"};
        }
        return text;
    }

    double number(const std::string& what, double lowest, double highest)
    {
        const std::string text = field(what);
        double value = 0.0;
        if (!parseNumber(text, lowest, highest, value)) {
            std::ostringstream message;
            message << what << " '" << text << "' is no number from " << lowest << " to " << highest;
            throw Fault{message.str()};
        }
        return value;
    }

    void end()
    {
        std::string extra;
        if (mFields >> extra) {
            throw Fault{"'" + extra + "' does not belong here"};
        }
    }

    std::string newName(bool isStation)
    {
        std::string name = field("name");
        if (!mIsStation.emplace(name, isStation).second) {
            throw Fault{"'" + name + "' is named twice"};
        }
        return name;
    }

    std::string knownFix()
    {
        std::string name = field("fix");
        if (mIsStation.count(name) == 0) {
            throw Fault{"no fix or station '" + name + "' above this line"};
        }
        return name;
    }

    FlightPlan& mPlan;
    std::istringstream mFields;
    std::map<std::string, bool> mIsStation; // every name so far
    int mLine = 0;
};

} // namespace

bool readPlan(const std::string& text, const std::string& source, FlightPlan& plan, std::string& error)
{
    FlightPlan read;
    const std::string fault = Reader(read).read(text);
    if (!fault.empty()) {
        error = source + ":" + fault;
        return false;
    }
    read.source = source;
    plan = std::move(read);
    return true;
}

bool readPlanFile(const std::string& path, FlightPlan& plan, std::string& error)
{
    std::ifstream file(path, std::ios::binary);
    std::string text(LargestFileBytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    // A directory opens, and then cannot be read.
    if (file.bad() || !file.eof()) {
        error = file.is_open() && !file.bad() && file.gcount() > 0 ? path + ": the file is too large for a flight plan"
                                                                   : path + ": cannot read the flight plan";
        return false;
    }
    text.resize(static_cast<std::size_t>(file.gcount()));
    return readPlan(text, path, plan, error);
}

} // namespace MovingMap
