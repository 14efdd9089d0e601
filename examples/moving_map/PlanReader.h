#pragma once

#include <moving_map/FlightPlan.h>

#include <string>

namespace MovingMap {

/// Reads a flight plan from text, one entry a line; blank lines, and everything from '#' on, are skipped.
///
///     speed   KNOTS
///     station NAME LAT LON
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
///
/// Latitudes and longitudes are decimal degrees, south and west negative; courses and radials degrees from true north;
/// miles are nautical. A fix or station is named before it is used, and no name is used twice.
///
/// @param source  named in messages, such as the file's name
/// @param error   receives one sentence with source and line when the text is no plan
/// @return whether plan holds the plan
bool readPlan(const std::string& text, const std::string& source, FlightPlan& plan, std::string& error);

/// The same for a file of at most 1 MB.
bool readPlanFile(const std::string& path, FlightPlan& plan, std::string& error);

} // namespace MovingMap
