#include <moving_map/PlanLine.h>

#include <moving_map/Numbers.h>
#include <moving_map/Units.h>

namespace MovingMap {

namespace {

// What an aircraft display can mean by these; everything computed from them stays far from overflow. The local plane
// needs a cosine of the latitude that is not near zero.
constexpr double LargestLatitude = 85.0;
constexpr double SmallestMiles = 0.05;
constexpr double LargestMiles = 200.0;

} // namespace

std::string PlanLine::field(const std::string& what)
{
    std::string text;
    if (!next(text)) {
        throw PlanFault{what + " is missing"};
    }
    return text;
}

double PlanLine::number(const std::string& what, double lowest, double highest)
{
    const std::string text = field(what);
    double value = 0.0;
    if (!parseNumber(text, lowest, highest, value)) {
        std::ostringstream message;
        message << what << " '" << text << "' is no number from " << lowest << " to " << highest;
        throw PlanFault{message.str()};
    }
    return value;
}

bool PlanLine::isClockwise()
{
    const std::string direction = field("direction");
    if (direction != "clockwise" && direction != "counterclockwise") {
        throw PlanFault{"direction '" + direction + "' is neither 'clockwise' nor 'counterclockwise'"};
    }
    return direction == "clockwise";
}

Position PlanLine::position()
{
    Position result;
    result.latDegrees = number("latitude", -LargestLatitude, LargestLatitude);
    result.lonDegrees = number("longitude", -180.0, 180.0);
    return result;
}

double PlanLine::metres(const std::string& what)
{
    return number(what + " in miles", SmallestMiles, LargestMiles) * MetresPerNauticalMile;
}

void PlanLine::end()
{
    std::string extra;
    if (next(extra)) {
        throw PlanFault{"'" + extra + "' does not belong here"};
    }
}

} // namespace MovingMap
