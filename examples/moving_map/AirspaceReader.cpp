#include <moving_map/AirspaceReader.h>

#include <cstddef>
#include <utility>

namespace MovingMap {

namespace {

// The boundaries are tessellated before the first frame, which must not take long for any file.
constexpr std::size_t MostAirspaces = 500;
constexpr std::size_t MostPoints = 2000;
constexpr std::size_t MostPointsInAll = 50000;

HeightLimit heightLimit(PlanLine& line, const std::string& what)
{
    const std::string text = line.field(what);
    HeightLimit limit;
    if (!parseHeightLimit(text, limit)) {
        throw PlanFault{what + " '" + text + "' is neither feet from -1500 to 60000, nor FL0 to FL600, nor 'ground'" +
                        " nor 'unlimited'"};
    }
    return limit;
}

} // namespace

bool AirspaceReader::read(const std::string& keyword, PlanLine& line, int number)
{
    if (keyword == "corner" || keyword == "curve" || keyword == "circle") {
        if (mLine == 0) {
            throw PlanFault{"'" + keyword + "' belongs below an 'airspace'"};
        }
        readBoundary(keyword, line);
        return true;
    }
    finish();
    if (keyword != "airspace") {
        return false;
    }
    readHeader(line);
    mLine = number;
    return true;
}

void AirspaceReader::finish()
{
    if (mLine == 0) {
        return;
    }
    if (mAirspace.outline.size() < 3) {
        throw PlanFault{"the boundary of '" + mAirspace.name + "' has fewer than three corners", mLine};
    }
    mAirspaces.push_back(std::move(mAirspace));
    mAirspace = {};
    mIsWhole = false;
    mLine = 0;
}

void AirspaceReader::readHeader(PlanLine& line)
{
    if (mAirspaces.size() == MostAirspaces) {
        throw PlanFault{"the plan has more than " + std::to_string(MostAirspaces) + " airspaces"};
    }
    mAirspace.name = line.field("name");
    const std::string airspaceClass = line.field("class");
    if (!parseAirspaceClass(airspaceClass, mAirspace.airspaceClass)) {
        throw PlanFault{"class '" + airspaceClass + "' is neither 'A' to 'G', nor 'prohibited', 'restricted' or " +
                        "'danger'"};
    }
    mAirspace.floor = heightLimit(line, "floor");
    mAirspace.ceiling = heightLimit(line, "ceiling");
    if (!(mAirspace.floor.metres < mAirspace.ceiling.metres)) {
        throw PlanFault{"the ceiling of '" + mAirspace.name + "' is not above its floor"};
    }
    line.end();
}

void AirspaceReader::readBoundary(const std::string& keyword, PlanLine& line)
{
    if (mIsWhole || (keyword == "circle" && !mAirspace.outline.empty())) {
        throw PlanFault{"a 'circle' is the whole boundary"};
    }
    const Position position = line.position();
    if (keyword == "corner") {
        append({position});
    } else if (keyword == "circle") {
        append(circlePoints(position, line.metres("radius")));
        mIsWhole = true;
    } else {
        const double radiusMetres = line.metres("radius");
        const bool clockwise = line.isClockwise();
        const double from = line.degrees("first radial");
        const double to = line.degrees("second radial");
        append(arcPoints(position, radiusMetres, clockwise, from, to));
    }
    line.end();
}

void AirspaceReader::append(const std::vector<Position>& points)
{
    if (mAirspace.outline.size() + points.size() > MostPoints) {
        throw PlanFault{"the boundary of '" + mAirspace.name + "' has too many corners"};
    }
    mPointCount += points.size();
    if (mPointCount > MostPointsInAll) {
        throw PlanFault{"the boundaries of the airspaces have too many corners in all"};
    }
    mAirspace.outline.insert(mAirspace.outline.end(), points.begin(), points.end());
}

} // namespace MovingMap
