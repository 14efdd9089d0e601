#include <moving_map/LabelPlacement.h>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

namespace MovingMap {

namespace {

// Costs are such that a label would rather stand at its last choice of side than across a line.
constexpr float LineCost = 1.0f;
constexpr float SideCost = 0.1f;
constexpr float StayGain = 0.6f; // how much better another place must be

constexpr float ArrivalMargin = 3.0f; // pixels

/// The part of a line that lies between two bounds of one coordinate, as an interval of its parameter.
bool clip(float start, float step, float low, float high, float& first, float& last)
{
    if (step == 0.0f) {
        return start >= low && start <= high;
    }
    const float a = (low - start) / step;
    const float b = (high - start) / step;
    first = std::max(first, std::min(a, b));
    last = std::min(last, std::max(a, b));
    return first <= last;
}

} // namespace

bool Box::touches(Pixel from, Pixel to) const
{
    float first = 0.0f;
    float last = 1.0f;
    return clip(from.x, to.x - from.x, low.x, high.x, first, last) &&
           clip(from.y, to.y - from.y, low.y, high.y, first, last);
}

void LabelPlacement::begin(Box area)
{
    mArea = area;
    mObstacles.clear();
    mLines.clear();
}

void LabelPlacement::addLine(Box::Pixel from, Box::Pixel to)
{
    if (mArea.touches(from, to)) {
        mLines.push_back({from, to});
    }
}

void LabelPlacement::place(std::vector<PlacedLabel>& labels)
{
    mOrder.resize(labels.size());
    std::iota(mOrder.begin(), mOrder.end(), std::size_t{0});
    std::sort(mOrder.begin(), mOrder.end(), [&](std::size_t a, std::size_t b) {
        return labels[a].priority != labels[b].priority ? labels[a].priority > labels[b].priority : a < b;
    });
    for (const std::size_t i : mOrder) {
        PlacedLabel& label = labels[i];
        label.chosen = choose(label);
        if (label.isShown()) {
            addObstacle(Box::about(label.centre(), label.size));
        }
    }
}

std::size_t LabelPlacement::choose(const PlacedLabel& label) const
{
    std::size_t best = PlacedLabel::None;
    float lowest = std::numeric_limits<float>::infinity();
    for (std::size_t i = 0; i < label.places.size(); ++i) {
        const bool stays = i == label.chosen;
        float cost = label.places[i].cost - (stays ? StayGain : 0.0f);
        const Box box = Box::about(label.places[i].centre, label.size);
        if (cost >= lowest || !isFree(stays ? box : box.grownBy(ArrivalMargin))) {
            continue;
        }
        cost += crossesLine(box) ? LineCost : 0.0f;
        if (cost < lowest) {
            lowest = cost;
            best = i;
        }
    }
    return best;
}

bool LabelPlacement::isFree(const Box& box) const
{
    return mArea.holds(box) && std::none_of(mObstacles.begin(), mObstacles.end(),
                                            [&](const Box& obstacle) { return obstacle.overlaps(box); });
}

bool LabelPlacement::crossesLine(const Box& box) const
{
    return std::any_of(mLines.begin(), mLines.end(), [&](const Line& line) { return box.touches(line.from, line.to); });
}

void setPlacesAround(PlacedLabel& label, Box::Pixel point, float clearance)
{
    // In which direction, as parts of the label's size; the corners stand nearer, since a corner is farther off.
    constexpr float Diagonal = 0.85f;
    constexpr std::array<Box::Pixel, 8> Sides = {{{Diagonal, Diagonal},
                                                  {Diagonal, -Diagonal},
                                                  {-Diagonal, Diagonal},
                                                  {-Diagonal, -Diagonal},
                                                  {1.0f, 0.0f},
                                                  {-1.0f, 0.0f},
                                                  {0.0f, 1.0f},
                                                  {0.0f, -1.0f}}};
    label.places.clear();
    for (const Box::Pixel& side : Sides) {
        const auto sign = [](float value) { return value > 0.0f ? 1.0f : value < 0.0f ? -1.0f : 0.0f; };
        const Box::Pixel centre = point + side * clearance +
                                  Box::Pixel(sign(side.x) * 0.5f * label.size.x, sign(side.y) * 0.5f * label.size.y);
        label.places.push_back({centre, SideCost * static_cast<float>(label.places.size())});
    }
}

} // namespace MovingMap
