#include <moving_map/LabelPlacement.h>

#include <gtest/gtest.h>

#include <random>
#include <utility>

using namespace MovingMap;

namespace {

using Pixel = Box::Pixel;

constexpr Box Map = {{0.0f, 0.0f}, {640.0f, 400.0f}};
constexpr Pixel Size(60.0f, 16.0f);
constexpr float Clearance = 12.0f;

PlacedLabel labelAt(Pixel point, int priority = 0)
{
    PlacedLabel label;
    label.size = Size;
    label.priority = priority;
    setPlacesAround(label, point, Clearance);
    return label;
}

Box boxOf(const PlacedLabel& label)
{
    return Box::about(label.centre(), label.size);
}

/// A map of points that drifts by.
class Crowd
{
public:
    explicit Crowd(unsigned int seed)
    {
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> x(-50.0f, 690.0f);
        std::uniform_real_distribution<float> y(-50.0f, 450.0f);
        for (int i = 0; i < 60; ++i) {
            points.emplace_back(x(random), y(random));
            labels.push_back(labelAt(points.back(), i % 3));
        }
    }

    void place(Pixel offset)
    {
        placement.begin(Map);
        placement.addObstacle(Aircraft);
        for (std::size_t i = 0; i < points.size(); ++i) {
            placement.addObstacle(Box::about(points[i] + offset, {10.0f, 10.0f}));
            setPlacesAround(labels[i], points[i] + offset, Clearance);
        }
        placement.place(labels);
    }

    static constexpr Box Aircraft = {{300.0f, 180.0f}, {340.0f, 220.0f}};
    std::vector<Pixel> points;
    std::vector<PlacedLabel> labels;
    LabelPlacement placement;
};

} // namespace

TEST(LabelPlacement, NothingOverlapsAndEverythingIsInside)
{
    for (unsigned int seed = 1; seed <= 10; ++seed) {
        Crowd crowd(seed);
        std::size_t shown = 0;
        for (int frame = 0; frame < 50; ++frame) {
            crowd.place(Pixel(0.7f, -0.4f) * static_cast<float>(frame));
            for (std::size_t i = 0; i < crowd.labels.size(); ++i) {
                if (!crowd.labels[i].isShown()) {
                    continue;
                }
                ++shown;
                const Box box = boxOf(crowd.labels[i]);
                EXPECT_TRUE(Map.holds(box)) << "seed " << seed << " frame " << frame << " label " << i;
                EXPECT_FALSE(box.overlaps(Crowd::Aircraft)) << "seed " << seed << " frame " << frame << " label " << i;
                for (std::size_t j = 0; j < i; ++j) {
                    EXPECT_FALSE(crowd.labels[j].isShown() && boxOf(crowd.labels[j]).overlaps(box))
                        << "seed " << seed << " frame " << frame << " labels " << i << " and " << j;
                }
            }
        }
        EXPECT_GT(shown, 50u * 25u) << "seed " << seed;
    }
}

TEST(LabelPlacement, HigherPrioritiesComeFirst)
{
    // Room for one label only: a slot as wide as it.
    for (const std::size_t winner : {std::size_t{0}, std::size_t{1}, std::size_t{2}}) {
        LabelPlacement placement;
        placement.begin(Box::about({100.0f, 100.0f}, Size * 1.5f));
        std::vector<PlacedLabel> labels(3);
        for (std::size_t i = 0; i < 3; ++i) {
            labels[i].size = Size;
            labels[i].priority = i == winner ? 5 : 1;
            labels[i].places = {{{100.0f, 100.0f}, 0.0f}};
        }
        placement.place(labels);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(labels[i].isShown(), i == winner) << winner << " " << i;
        }
    }
}

TEST(LabelPlacement, LinesAreAvoidedWhereThereIsABetterPlace)
{
    const Pixel point(300.0f, 200.0f);
    const auto placeWith = [&](const std::vector<std::pair<Pixel, Pixel>>& lines) {
        LabelPlacement placement;
        placement.begin(Map);
        for (const auto& [from, to] : lines) {
            placement.addLine(from, to);
        }
        std::vector<PlacedLabel> labels = {labelAt(point)};
        placement.place(labels);
        return labels[0].chosen;
    };
    EXPECT_EQ(placeWith({}), 0u);
    EXPECT_EQ(placeWith({{point, point + Pixel(400.0f, 120.0f)}}), 1u); // the line leaves to the upper right
    EXPECT_EQ(placeWith({{point, point + Pixel(120.0f, 400.0f)}}), 0u); // steep, it passes beside the label
    EXPECT_EQ(placeWith({{{0.0f, 216.0f}, {640.0f, 216.0f}}}), 1u);     // an end within the box on neither side
    EXPECT_EQ(placeWith({{{340.0f, 0.0f}, {340.0f, 400.0f}}}), 2u);
    EXPECT_EQ(placeWith({{{0.0f, 211.0f}, {640.0f, 211.0f}},
                         {{0.0f, 189.0f}, {640.0f, 189.0f}},
                         {{0.0f, 200.0f}, {640.0f, 200.0f}}}),
              6u); // above all of them
}

TEST(LabelPlacement, LabelsStayWhereTheyAre)
{
    // A drift of 40 pixels in steps below one: a label changes its place when something drives it off, not otherwise.
    std::size_t changes = 0;
    std::size_t labels = 0;
    for (unsigned int seed = 1; seed <= 10; ++seed) {
        Crowd crowd(seed);
        std::vector<std::size_t> before;
        for (int frame = 0; frame < 160; ++frame) {
            // The map trembles while it drifts.
            const float tremble = frame % 2 == 0 ? 0.0f : 1.0f;
            crowd.place(Pixel(0.25f * static_cast<float>(frame) + tremble, -tremble));
            for (std::size_t i = 0; i < crowd.labels.size(); ++i) {
                changes += !before.empty() && crowd.labels[i].chosen != before[i] ? 1 : 0;
            }
            before.clear();
            for (const PlacedLabel& label : crowd.labels) {
                before.push_back(label.chosen);
            }
        }
        labels += crowd.labels.size();
    }
    EXPECT_LT(changes, labels); // fewer than one change a label in all 160 frames

    // A label that was driven off does not come back at once, but when its new place is bad.
    LabelPlacement placement;
    std::vector<PlacedLabel> label = {labelAt({300.0f, 200.0f})};
    const Box upperRight = boxOf([&] {
        placement.begin(Map);
        placement.place(label);
        return label[0];
    }());
    placement.begin(Map);
    placement.addObstacle(upperRight);
    placement.place(label);
    const std::size_t second = label[0].chosen;
    EXPECT_EQ(second, 1u);
    placement.begin(Map);
    placement.place(label);
    EXPECT_EQ(label[0].chosen, second);
    const Box lowerRight = boxOf(label[0]);
    placement.begin(Map);
    placement.addLine(lowerRight.low, lowerRight.high);
    placement.place(label);
    EXPECT_EQ(label[0].chosen, 0u);
}
