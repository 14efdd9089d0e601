#include <moving_map/Route.h>

#include <moving_map/Units.h>
#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/Intersections.h>
#include <tavik/geodetic/Turns.h>

#include <cmath>
#include <cstddef>
#include <map>

namespace MovingMap {

namespace {

constexpr double Gravity = 9.81; // m/s²
constexpr double BankDegrees = 25.0;

// The local plane about one end of a leg must still fit at the other end.
constexpr double LongestLegMetres = 600.0 * MetresPerNauticalMile;

constexpr double LargestLatitude = 88.0; // the plane needs a cosine of the latitude that is not near zero

/// Closer than this, two fixes are one.
constexpr double CoincidenceMetres = 1.0;

/// Stops the resolving of a leg; never leaves this file.
struct Fault
{
    std::string what;
};

bool liesAhead(Position from, double courseDegrees, Position place)
{
    return LocalPlane(from).toPoint(place).dot(directionOf(courseDegrees)) > 0.0;
}

class Resolver
{
public:
    Resolver(const FlightPlan& plan, Route& route) : mPlan(plan), mRoute(route)
    {
        for (const Station& station : plan.stations) {
            mFixes[station.name] = station.position;
        }
    }

    void resolve()
    {
        const PlanLeg& departure = mPlan.legs.front();
        mRoute.speedMetresPerSecond = mPlan.speedMetresPerSecond;
        mRoute.stations = mPlan.stations;
        mRoute.airspaces = mPlan.airspaces;
        mRoute.startName = departure.name;
        mRoute.startFix = departure.fix;
        mRoute.start = std::get<DirectLeg>(departure.kind).to;
        mRoute.startAltitudeMetres = departure.altitudeMetres;
        mFixes[departure.name] = mRoute.start;
        for (std::size_t i = 1; i < mPlan.legs.size(); ++i) {
            mLeg = &mPlan.legs[i];
            std::visit([this](const auto& kind) { resolve(kind); }, mLeg->kind);
            mFixes[mLeg->name] = mRoute.legs.back().to;
        }
    }

    int line() const { return mLeg == nullptr ? 0 : mLeg->line; }

private:
    Position lastPosition() const { return mRoute.legs.empty() ? mRoute.start : mRoute.legs.back().to; }

    RouteLeg& append(const std::string& name, Position to)
    {
        RouteLeg leg;
        leg.name = name;
        leg.fix = mLeg->fix;
        leg.from = lastPosition();
        leg.to = to;
        leg.turn = mLeg->turn;
        leg.turnRadiusMetres = mLeg->radiusMetres.value_or(turnRadius(mPlan.speedMetresPerSecond));
        if (!(std::abs(to.latDegrees) < LargestLatitude) || !(std::abs(to.lonDegrees) <= 180.0)) {
            throw Fault{"'" + mLeg->name + "' lies beyond the 180th meridian or too near a pole"};
        }
        if (!(planeDistance(leg.from, leg.to) < LongestLegMetres)) {
            throw Fault{"the leg to '" + mLeg->name + "' is longer than 600 miles"};
        }
        mRoute.legs.push_back(leg);
        return mRoute.legs.back();
    }

    void appendStraight(const std::string& name, Position to, bool flyOver)
    {
        if (planeDistance(lastPosition(), to) < CoincidenceMetres) {
            throw Fault{"the leg to '" + mLeg->name + "' has no length"};
        }
        RouteLeg& leg = append(name, to);
        leg.flyOver = flyOver;
        leg.altitudeMetres = mLeg->altitudeMetres;
    }

    void resolve(const DirectLeg& kind) { appendStraight(mLeg->name, kind.to, kind.flyOver); }

    void resolve(const CrossingLeg& kind)
    {
        const Position first = mFixes.at(kind.firstFix);
        const Position second = mFixes.at(kind.secondFix);
        Position crossing;
        Tavik::Geodetic::calcIntersection(first.latDegrees, first.lonDegrees, kind.firstCourseDegrees,
                                          second.latDegrees, second.lonDegrees, kind.secondCourseDegrees,
                                          crossing.latDegrees, crossing.lonDegrees);
        if (!liesAhead(first, kind.firstCourseDegrees, crossing) ||
            !liesAhead(second, kind.secondCourseDegrees, crossing)) {
            throw Fault{"the courses from '" + kind.firstFix + "' and '" + kind.secondFix + "' do not cross ahead"};
        }
        appendStraight(mLeg->name, crossing, kind.flyOver);
    }

    void resolve(const ArcLeg& kind)
    {
        const Position station = mFixes.at(kind.station);
        const Position from = lastPosition();
        const double course = kind.courseDegrees.value_or(planeCourse(from, station));
        Position entry;
        const bool reached = Tavik::Geodetic::calcDmeDistIntersection(
            from.latDegrees, from.lonDegrees, course, station.latDegrees, station.lonDegrees, kind.distanceMetres,
            entry.latDegrees, entry.lonDegrees);
        if (!reached || !liesAhead(from, course, entry)) {
            throw Fault{"the course to the arc of '" + mLeg->name + "' does not reach its circle ahead"};
        }
        appendStraight({}, entry, false);
        mRoute.legs.back().altitudeMetres.reset();
        mRoute.legs.back().turn = TurnDirection::Automatic;

        const LocalPlane plane(station);
        RouteLeg& arc = append(mLeg->name, plane.toPosition(directionOf(kind.radialDegrees) * kind.distanceMetres));
        arc.circle = Circle{station, kind.distanceMetres, kind.clockwise};
        arc.altitudeMetres = mLeg->altitudeMetres;
    }

    void resolve(const TurnLeg& kind)
    {
        if (mRoute.legs.empty()) {
            throw Fault{"'" + mLeg->name + "' turns where no leg has been flown"};
        }
        const Position from = lastPosition();
        const double inbound = mRoute.legs.back().courseAtEnd();
        const double radius = mLeg->radiusMetres.value_or(turnRadius(mPlan.speedMetresPerSecond));
        const double change = Tavik::Geodetic::getHeadingDifference(inbound, kind.courseDegrees);
        const bool right =
            mLeg->turn == TurnDirection::Right || (mLeg->turn == TurnDirection::Automatic && change >= 0.0);
        Position rollOut;
        Tavik::Geodetic::calcOutboundPoint(from.latDegrees, from.lonDegrees, inbound, radius, kind.courseDegrees,
                                           static_cast<int>(mLeg->turn), rollOut.latDegrees, rollOut.lonDegrees);
        mRoute.legs.back().flyOver = true;
        RouteLeg& turn = append(mLeg->name, rollOut);
        turn.turn = TurnDirection::Automatic;
        turn.flyOver = true;
        turn.altitudeMetres = mLeg->altitudeMetres;
        if (std::abs(change) >= 1.0) { // below, the roll-out point lies straight ahead
            const LocalPlane::Point centre = directionOf(inbound + (right ? 90.0 : -90.0)) * radius;
            turn.circle = Circle{LocalPlane(from).toPosition(centre), radius, right};
        }
    }

    const FlightPlan& mPlan;
    Route& mRoute;
    const PlanLeg* mLeg = nullptr;
    std::map<std::string, Position> mFixes;
};

} // namespace

double RouteLeg::courseAtEnd() const
{
    if (!circle) {
        return planeCourse(from, to);
    }
    const double radial = planeCourse(circle->centre, to);
    return std::fmod(radial + (circle->clockwise ? 90.0 : 270.0), 360.0);
}

bool resolveRoute(const FlightPlan& plan, Route& route, std::string& error)
{
    Route resolved;
    Resolver resolver(plan, resolved);
    try {
        resolver.resolve();
    } catch (const Fault& fault) {
        error = plan.source + ":" + std::to_string(resolver.line()) + ": " + fault.what;
        return false;
    }
    route = std::move(resolved);
    return true;
}

double turnRadius(double speedMetresPerSecond)
{
    return speedMetresPerSecond * speedMetresPerSecond / (Gravity * std::tan(BankDegrees * RadiansPerDegree));
}

} // namespace MovingMap
