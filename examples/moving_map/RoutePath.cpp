#include <moving_map/RoutePath.h>

#include <moving_map/TurnPath.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace MovingMap {

namespace {

// The track is the direction between the places this far behind and ahead: smooth over the one-degree steps of arcs.
constexpr double TrackSpanMetres = 120.0;

constexpr double RoundingDegrees = 1.0; // a turn ends within one step of its arc

/// Whether the turn at the end of a leg begins before its fix.
bool turnsEarly(const Route& route, std::size_t leg)
{
    return leg + 1 < route.legs.size() && !turnsOverFix(route.legs[leg], route.legs[leg + 1]);
}

} // namespace

RoutePath::RoutePath(const Route& route)
{
    mFixes.push_back({route.startName, route.startFix, route.start, 0.0, false});
    if (route.startAltitudeMetres) {
        mAltitudes.push_back({0.0, *route.startAltitudeMetres});
    }
    mPoints.push_back({route.start, 0.0, 0});
    for (std::size_t i = 0; i < route.legs.size(); ++i) {
        const RouteLeg& leg = route.legs[i];
        std::vector<Position> join = {leg.to};
        if (i + 1 < route.legs.size()) {
            join = turnPath(leg, mPoints.back().position, route.legs[i + 1], turnsEarly(route, i + 1));
        }
        if (leg.circle) {
            appendCircle(leg, i, join);
        }
        // The next leg begins where the fix is passed: over it, or in the middle of a turn before it.
        const std::size_t passed = turnsEarly(route, i) ? join.size() / 2 : 0;
        const std::size_t legBehind = std::min(i + 1, route.legs.size() - 1);
        for (std::size_t k = 0; k < join.size(); ++k) {
            append(join[k], k <= passed ? i : legBehind);
        }
        appendFix(leg, mPoints[mPoints.size() - join.size() + passed].distanceMetres);
    }
}

void RoutePath::append(Position position, std::size_t leg)
{
    const double step = planeDistance(mPoints.back().position, position);
    mPoints.push_back({position, mPoints.back().distanceMetres + step, leg});
}

/// Follows the circle from where the path has come to to where the next turn begins; a turn for which the arc is too
/// short is left out.
void RoutePath::appendCircle(const RouteLeg& leg, std::size_t index, std::vector<Position>& join)
{
    const Circle& circle = *leg.circle;
    const Position begin = mPoints.back().position;
    const double whole = sweepDegrees(circle, leg.from, leg.to) + RoundingDegrees;
    if (sweepDegrees(circle, begin, join.front()) > whole) {
        join = {leg.to};
    }
    if (sweepDegrees(circle, begin, join.front()) > whole) {
        return;
    }
    for (const Position& position : circlePath(circle, begin, join.front())) {
        append(position, index);
    }
}

void RoutePath::appendFix(const RouteLeg& leg, double distanceMetres)
{
    if (!leg.name.empty()) {
        mFixes.push_back({leg.name, leg.fix, leg.to, distanceMetres, leg.flyOver});
    }
    if (leg.altitudeMetres) {
        mAltitudes.push_back({distanceMetres, *leg.altitudeMetres});
    }
}

RoutePath::State RoutePath::at(double distanceMetres) const
{
    const double distance = std::clamp(distanceMetres, 0.0, length());
    State state;
    state.position = positionAt(distance);
    state.leg = mPoints[segmentAt(distance) + 1].leg;
    state.trackDegrees = planeCourse(positionAt(std::max(distance - TrackSpanMetres, 0.0)),
                                     positionAt(std::min(distance + TrackSpanMetres, length())));
    return state;
}

std::size_t RoutePath::nextFix(double distanceMetres) const
{
    const auto next =
        std::upper_bound(mFixes.begin(), mFixes.end() - 1, distanceMetres,
                         [](double distance, const PathFix& fix) { return distance < fix.distanceMetres; });
    return static_cast<std::size_t>(next - mFixes.begin());
}

double RoutePath::altitudeMetres(double distanceMetres) const
{
    if (mAltitudes.empty()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const auto next =
        std::upper_bound(mAltitudes.begin(), mAltitudes.end(), distanceMetres,
                         [](double distance, const PlannedAltitude& a) { return distance < a.distanceMetres; });
    if (next == mAltitudes.begin()) {
        return next->altitudeMetres;
    }
    const PlannedAltitude& before = *(next - 1);
    if (next == mAltitudes.end()) {
        return before.altitudeMetres;
    }
    const double part = (distanceMetres - before.distanceMetres) / (next->distanceMetres - before.distanceMetres);
    return before.altitudeMetres + part * (next->altitudeMetres - before.altitudeMetres);
}

Position RoutePath::positionAt(double distanceMetres) const
{
    const std::size_t segment = segmentAt(distanceMetres);
    const PathPoint& a = mPoints[segment];
    const PathPoint& b = mPoints[segment + 1];
    const double length = b.distanceMetres - a.distanceMetres;
    const double part = length > 0.0 ? std::clamp((distanceMetres - a.distanceMetres) / length, 0.0, 1.0) : 0.0;
    return {a.position.latDegrees + part * (b.position.latDegrees - a.position.latDegrees),
            a.position.lonDegrees + part * (b.position.lonDegrees - a.position.lonDegrees)};
}

/// Index of the point at which the segment begins that holds this distance; a point ends the segment before it.
std::size_t RoutePath::segmentAt(double distanceMetres) const
{
    const auto end =
        std::lower_bound(mPoints.begin() + 1, mPoints.end() - 1, distanceMetres,
                         [](const PathPoint& point, double distance) { return point.distanceMetres < distance; });
    return static_cast<std::size_t>(end - mPoints.begin()) - 1;
}

} // namespace MovingMap
