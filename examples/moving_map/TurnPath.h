#pragma once

#include <moving_map/Route.h>

#include <vector>

namespace MovingMap {

/// Whether the turn from one leg into the next begins over the fix between them: where the plan says so, where it would
/// begin too far before the fix, and where the plan sends it the long way round.
bool turnsOverFix(const RouteLeg& leg, const RouteLeg& next);

/// Points of the turn from one leg into the next, in the order in which they are flown: an arc, or the fix alone where
/// there is nothing to turn.
///
/// Straight legs are joined by fly-by or fly-over turns; a straight leg and a circle by an arc that touches both.
/// @param from   where the aircraft comes from on its way to the fix: an earlier point of the path
/// @param next   the leg behind the fix
/// @param nextTurnsEarly  the next leg ends in a turn of its own that begins before its fix; the two share the leg
std::vector<Position> turnPath(const RouteLeg& leg, Position from, const RouteLeg& next, bool nextTurnsEarly);

/// Angle of the arc from one position on a circle to another, the way it is flown, in [0, 360] degrees.
double sweepDegrees(const Circle& circle, Position from, Position to);

/// Points of a circle every degree, from one position on it to another the way it is flown; the first is left out.
std::vector<Position> circlePath(const Circle& circle, Position from, Position to);

} // namespace MovingMap
