#pragma once

#include <moving_map/Airspace.h>
#include <moving_map/PlanLine.h>

#include <cstddef>
#include <vector>

namespace MovingMap {

/// Reads the airspaces of a flight plan, each a line of its own and lines of its boundary below it; PlanReader.h tells
/// the format. What is wrong is thrown as a PlanFault.
class AirspaceReader
{
public:
    /// @param airspaces  receives those that are complete; must outlive the reader
    explicit AirspaceReader(std::vector<Airspace>& airspaces) : mAirspaces(airspaces) {}

    /// Takes a line if its keyword is one of an airspace's, else completes the airspace above it.
    /// @param number  of the line, for messages
    /// @return whether the line was taken
    bool read(const std::string& keyword, PlanLine& line, int number);

    /// Completes the airspace that was read last; to be called behind the last line.
    void finish();

private:
    void readHeader(PlanLine& line);
    void readBoundary(const std::string& keyword, PlanLine& line);
    void append(const std::vector<Position>& points);

    std::vector<Airspace>& mAirspaces;
    Airspace mAirspace;          // being read
    std::size_t mPointCount = 0; // of all boundaries
    int mLine = 0;               // of its header; 0 where none is being read
    bool mIsWhole = false;       // a circle has closed its boundary
};

} // namespace MovingMap
