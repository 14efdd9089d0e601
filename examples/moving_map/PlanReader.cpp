#include <moving_map/PlanReader.h>

#include <moving_map/AirspaceReader.h>
#include <moving_map/PlanLine.h>
#include <moving_map/Units.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <map>
#include <sstream>
#include <utility>

namespace MovingMap {

namespace {

constexpr double SlowestKnots = 20.0;
constexpr double FastestKnots = 2000.0;
constexpr double LowestFeet = -1500.0;
constexpr double HighestFeet = 60000.0;

constexpr double DefaultKnots = 240.0;
constexpr std::size_t LargestFileBytes = 1'000'000;

struct KindName
{
    const char* name;
    FixKind kind;
};

constexpr std::array<KindName, 7> KindNames = {{{"intersection", FixKind::Intersection},
                                                {"vor", FixKind::Vor},
                                                {"dme", FixKind::Dme},
                                                {"vortac", FixKind::Vortac},
                                                {"ndb", FixKind::Ndb},
                                                {"airport", FixKind::Airport},
                                                {"obstacle", FixKind::Obstacle}}};

bool parseKind(const std::string& text, FixKind& kind)
{
    const auto* name =
        std::find_if(KindNames.begin(), KindNames.end(), [&](const KindName& n) { return text == n.name; });
    if (name == KindNames.end()) {
        return false;
    }
    kind = name->kind;
    return true;
}

class Reader
{
public:
    explicit Reader(FlightPlan& plan) : mPlan(plan), mAirspaces(plan.airspaces)
    {
        mPlan.speedMetresPerSecond = toMetresPerSecond(DefaultKnots);
    }

    /// @return an empty string, or what is wrong and in which line
    std::string read(const std::string& text)
    {
        const std::string byteOrderMark = "\xEF\xBB\xBF"; // some editors begin UTF-8 with it
        const bool isMarked = text.compare(0, byteOrderMark.size(), byteOrderMark) == 0;
        std::istringstream lines(isMarked ? text.substr(byteOrderMark.size()) : text);
        std::string line;
        try {
            for (mLine = 1; std::getline(lines, line); ++mLine) {
                mFields = PlanLine(line);
                readLine();
            }
            mAirspaces.finish();
        } catch (const PlanFault& fault) {
            return std::to_string(fault.line == 0 ? mLine : fault.line) + ": " + fault.what;
        }
        if (mPlan.legs.size() < 2) {
            return std::to_string(mLine - 1) + ": the plan needs a 'start' and at least one leg";
        }
        return {};
    }

private:
    static double toMetresPerSecond(double knots) { return knots * MetresPerNauticalMile / SecondsPerHour; }

    void readLine()
    {
        std::string keyword;
        if (!mFields.next(keyword) || mAirspaces.read(keyword, mFields, mLine)) {
            return;
        }
        if (keyword == "speed") {
            mPlan.speedMetresPerSecond =
                toMetresPerSecond(mFields.number("speed in knots", SlowestKnots, FastestKnots));
            mFields.end();
        } else if (keyword == "station") {
            readStation();
        } else {
            readLeg(keyword);
        }
    }

    void readStation()
    {
        Station station;
        station.name = newName();
        station.position = mFields.position();
        std::string kind;
        if (mFields.next(kind) && !parseKind(kind, station.kind)) {
            throw PlanFault{"'" + kind + "' does not belong here"};
        }
        mFields.end();
        mIsStation[station.name] = true;
        mPlan.stations.push_back(std::move(station));
    }

    void readLeg(const std::string& keyword)
    {
        if ((keyword == "start") != mPlan.legs.empty()) {
            const bool known = keyword == "to" || keyword == "cross" || keyword == "arc" || keyword == "turn";
            throw PlanFault{mPlan.legs.empty() && known ? "the first leg must be a 'start'"
                            : keyword == "start"        ? "a second 'start'"
                                                        : "unknown entry '" + keyword + "'"};
        }
        PlanLeg leg;
        leg.line = mLine;
        if (keyword == "start" || keyword == "to") {
            leg.name = newName();
            leg.kind = DirectLeg{mFields.position(), false};
        } else if (keyword == "cross") {
            leg.name = newName();
            leg.kind = crossing();
            leg.fix = FixKind::Intersection;
        } else if (keyword == "arc") {
            leg.name = newName();
            leg.kind = arc();
        } else if (keyword == "turn") {
            leg.name = newName();
            leg.kind = TurnLeg{mFields.degrees("course")};
        } else {
            throw PlanFault{"unknown entry '" + keyword + "'"};
        }
        readOptions(leg);
        mIsStation[leg.name] = false; // not before its own fields are read: courses cannot cross where they begin
        mPlan.legs.push_back(std::move(leg));
    }

    void readOptions(PlanLeg& leg)
    {
        std::string option;
        while (mFields.next(option)) {
            auto* direct = std::get_if<DirectLeg>(&leg.kind);
            auto* cross = std::get_if<CrossingLeg>(&leg.kind);
            auto* circle = std::get_if<ArcLeg>(&leg.kind);
            if (option == "altitude") {
                leg.altitudeMetres = mFields.number("altitude in feet", LowestFeet, HighestFeet) * MetresPerFoot;
            } else if (option == "radius") {
                leg.radiusMetres = mFields.metres("radius");
            } else if (parseKind(option, leg.fix)) {
                continue;
            } else if (option == "left" || option == "right") {
                leg.turn = option == "left" ? TurnDirection::Left : TurnDirection::Right;
            } else if (option == "flyover" && direct != nullptr) {
                direct->flyOver = true;
            } else if (option == "flyover" && cross != nullptr) {
                cross->flyOver = true;
            } else if (option == "course" && circle != nullptr) {
                circle->courseDegrees = mFields.degrees("course");
            } else {
                throw PlanFault{"'" + option + "' does not belong here"};
            }
        }
    }

    CrossingLeg crossing()
    {
        CrossingLeg leg;
        leg.firstFix = knownFix();
        leg.firstCourseDegrees = mFields.degrees("first course");
        leg.secondFix = knownFix();
        leg.secondCourseDegrees = mFields.degrees("second course");
        return leg;
    }

    ArcLeg arc()
    {
        ArcLeg leg;
        leg.station = mFields.field("station");
        const auto station = mIsStation.find(leg.station);
        if (station == mIsStation.end() || !station->second) {
            throw PlanFault{"no station '" + leg.station + "' above this line"};
        }
        leg.distanceMetres = mFields.metres("distance");
        leg.clockwise = mFields.isClockwise();
        leg.radialDegrees = mFields.degrees("radial");
        return leg;
    }

    std::string newName()
    {
        std::string name = mFields.field("name");
        if (mIsStation.count(name) != 0) {
            throw PlanFault{"'" + name + "' is named twice"};
        }
        return name;
    }

    std::string knownFix()
    {
        std::string name = mFields.field("fix");
        if (mIsStation.count(name) == 0) {
            throw PlanFault{"no fix or station '" + name + "' above this line"};
        }
        return name;
    }

    FlightPlan& mPlan;
    AirspaceReader mAirspaces;
    PlanLine mFields;
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
