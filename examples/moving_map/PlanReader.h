#pragma once

#include <moving_map/FlightPlan.h>

#include <string>

namespace MovingMap {

/// Reads a flight plan from text, one entry a line; blank lines, and everything from '#' on, are skipped.
///
///     speed   KNOTS
///     station NAME LAT LON [KIND]
///     start   NAME LAT LON                                         the first leg, once
///     to      NAME LAT LON                                         straight on
///     cross   NAME FIX COURSE FIX COURSE                           to where two courses cross
///     arc     NAME STATION MILES clockwise|counterclockwise RADIAL along a circle about a station
///     turn    NAME COURSE                                          a turn on the spot to a course
///
/// Behind the fields of a leg, in any order:
///
///     altitude FEET        planned at the end of the leg
///     flyover              turn after the waypoint instead of before it (to, cross)
///     left | right         side of the turn at the end of the leg, else the shorter way; for turn: of the leg itself
///     radius MILES         of that turn, else that of a turn at 25 degrees of bank
///     course COURSE        on which an arc is approached, else towards its station
///     KIND                 what stands at the fix: intersection, vor, dme, vortac, ndb, airport or obstacle; without
///                          one, a station is a vortac, the fix of a crossing an intersection, and others are waypoints
///
/// An airspace has its boundary on the lines below it: one circle, or corners and curves in their order. The last
/// corner is joined to the first.
///
///     airspace NAME CLASS FLOOR CEILING
///     circle   LAT LON RADIUS
///     corner   LAT LON
///     curve    LAT LON RADIUS clockwise|counterclockwise RADIAL RADIAL     about a centre, from one radial to another
///
/// A class is A to G, prohibited, restricted or danger; floor and ceiling are feet, a flight level such as FL95,
/// 'ground' or 'unlimited'.
///
/// Latitudes and longitudes are decimal degrees, south and west negative; courses and radials degrees from true north;
/// miles are nautical. A fix or station is named before it is used, and no two of them have one name.
///
/// @param source  named in messages, such as the file's name
/// @param error   receives one sentence with source and line when the text is no plan
/// @return whether plan holds the plan
bool readPlan(const std::string& text, const std::string& source, FlightPlan& plan, std::string& error);

/// The same for a file of at most 1 MB.
bool readPlanFile(const std::string& path, FlightPlan& plan, std::string& error);

} // namespace MovingMap
