#pragma once

#include <tavik/math/Vector2.h>

#include <cstddef>
#include <vector>

namespace MovingMap {

/// An upright rectangle on the screen, in pixels.
struct Box
{
    using Pixel = Tavik::Math::Vector2<float>;

    Pixel low;
    Pixel high;

    static Box about(Pixel centre, Pixel size) { return {centre - size * 0.5f, centre + size * 0.5f}; }

    Box grownBy(float margin) const { return {low - Pixel(margin, margin), high + Pixel(margin, margin)}; }

    /// Whether they have more than an edge in common.
    bool overlaps(const Box& b) const
    {
        return low.x < b.high.x && b.low.x < high.x && low.y < b.high.y && b.low.y < high.y;
    }

    bool holds(const Box& b) const
    {
        return low.x <= b.low.x && b.high.x <= high.x && low.y <= b.low.y && b.high.y <= high.y;
    }

    /// Whether a straight line has a point in the box.
    bool touches(Pixel from, Pixel to) const;

    bool operator==(const Box& b) const
    {
        return low.x == b.low.x && low.y == b.low.y && high.x == b.high.x && high.y == b.high.y;
    }
};

/// Where a label may stand.
struct LabelPlace
{
    Box::Pixel centre;
    float cost = 0.0f; ///< the lower, the better
};

/// A label looking for its place. It remembers where it stood, so keep one object for each label.
struct PlacedLabel
{
    Box::Pixel size;                ///< width and height in pixels
    int priority = 0;               ///< the highest is placed first
    std::vector<LabelPlace> places; ///< the same ones in the same order in each frame; none for no label

    static constexpr std::size_t None = ~std::size_t{0};
    std::size_t chosen = None; ///< index into places

    bool isShown() const { return chosen != None; }
    Box::Pixel centre() const { return places[chosen].centre; }
};

/// Puts labels on a map so that none overlaps another, an obstacle or the map's edge; what finds no place is not
/// shown.
///
///     placement.begin(map);
///     placement.addObstacle(aircraft);          // never covered
///     placement.addLine(from, to);              // covered where there is no better place
///     placement.place(labels);
///
/// Labels are placed one after the other by priority, each at its cheapest free place. From frame to frame a label
/// stays where it is as long as that place is free and no other one is much better; another place, or one for a label
/// that was not shown, must be free by some pixels. So labels neither flicker nor jump to and fro.
class LabelPlacement
{
public:
    /// Drops all obstacles.
    /// @param area  that the labels must keep to
    void begin(Box area);

    void addObstacle(Box box) { mObstacles.push_back(box); }

    /// Lines outside the area cost nothing.
    void addLine(Box::Pixel from, Box::Pixel to);

    /// Chooses a place for each label.
    void place(std::vector<PlacedLabel>& labels);

private:
    struct Line
    {
        Box::Pixel from;
        Box::Pixel to;
    };

    std::size_t choose(const PlacedLabel& label) const;
    bool isFree(const Box& box) const;
    bool crossesLine(const Box& box) const;

    Box mArea;
    std::vector<Box> mObstacles; // in place(): the placed labels as well
    std::vector<Line> mLines;
    std::vector<std::size_t> mOrder;
};

/// Places around a point, beside it first to the upper right.
/// @param clearance  from the point to the label, pixels
void setPlacesAround(PlacedLabel& label, Box::Pixel point, float clearance);

} // namespace MovingMap
