#pragma once

#include <moving_map/LocalPlane.h>

#include <sstream>
#include <string>

namespace MovingMap {

/// What is wrong with a line of a flight plan. The readers of lines throw it, and readPlan catches it.
struct PlanFault
{
    std::string what;
    int line = 0; ///< where, if it is not the line that is being read
};

/// The fields of one line of a flight plan, taken one after the other. What is missing or no such value is a PlanFault
/// that tells its name.
class PlanLine
{
public:
    PlanLine() = default;

    /// @param text  everything from '#' on is skipped
    explicit PlanLine(const std::string& text) : mFields(text.substr(0, text.find('#'))) {}

    /// @return false at the end of the line
    bool next(std::string& text) { return static_cast<bool>(mFields >> text); }

    std::string field(const std::string& what);
    double number(const std::string& what, double lowest, double highest);

    /// "clockwise" or "counterclockwise".
    bool isClockwise();

    /// Latitude and longitude, as far from the poles as the local plane needs.
    Position position();

    /// A distance in nautical miles, 0.05 to 200.
    /// @return metres
    double metres(const std::string& what);

    /// A course or radial.
    double degrees(const std::string& what) { return number(what, 0.0, 360.0); }

    /// The line must end here.
    void end();

private:
    std::istringstream mFields;
};

} // namespace MovingMap
