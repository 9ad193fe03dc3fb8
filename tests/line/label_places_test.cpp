#include "line/label_places.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

namespace keldrin {
namespace {

constexpr PageFrame Frame = {2.0F, 2.0F, 22.0F, 16.0F};
constexpr float Height = 0.3F;

std::vector<LabelledPoint> pointsOnALine(int count, float spacing, float width) {
    std::vector<LabelledPoint> points;
    points.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        points.push_back(
            {3.0F + static_cast<float>(i) * spacing, 9.0F, std::to_string(1000 + i), width});
    }
    return points;
}

PageFrame boxOf(const LabelPlace &place, const std::vector<LabelledPoint> &points) {
    return {place.x, place.y, place.x + points[place.point].width, place.y + Height};
}

bool overlap(const PageFrame &a, const PageFrame &b) {
    return a.left < b.right && b.left < a.right && a.bottom < b.top && b.bottom < a.top;
}

void expectReadable(const std::vector<LabelPlace> &places,
                    const std::vector<LabelledPoint> &points) {
    for (std::size_t i = 0; i < places.size(); ++i) {
        const PageFrame box = boxOf(places[i], points);
        EXPECT_GE(box.left, Frame.left);
        EXPECT_LE(box.right, Frame.right);
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_FALSE(overlap(box, boxOf(places[k], points)));
        }
        for (const LabelledPoint &point : points) {
            EXPECT_FALSE(point.x > box.left && point.x < box.right && point.y > box.bottom &&
                         point.y < box.top);
        }
    }
}

TEST(LabelPlaces, EveryPointHasItsLabelAboveItWhereThereIsRoom) {
    const std::vector<LabelledPoint> points = pointsOnALine(15, 1.2F, 0.8F);
    PageRoom room(Frame);
    const std::vector<LabelPlace> places = placeLabels(room, points, Height);
    ASSERT_EQ(places.size(), points.size());
    for (const LabelPlace &place : places) {
        EXPECT_GT(place.y, 9.0F);
    }
    expectReadable(places, points);
}

TEST(LabelPlaces, CrowdedPointsHaveRegularlyThinnedLabels) {
    const std::vector<LabelledPoint> points = pointsOnALine(2048, 18.0F / 2047.0F, 0.8F);
    PageRoom room(Frame);
    const std::vector<LabelPlace> places = placeLabels(room, points, Height);
    ASSERT_GT(places.size(), 8U);
    EXPECT_LT(places.size(), 60U);
    EXPECT_EQ(places.front().point, 0U);
    const std::size_t step = places[1].point;
    EXPECT_TRUE(step == 50 || step == 100) << step;
    for (const LabelPlace &place : places) {
        EXPECT_EQ(place.point % step, 0U);
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_FALSE(overlap(boxOf(places[i], points), boxOf(places[k], points)));
        }
    }
}

// A line that doubles back has several soundings at a place; they are no reason to thin the rest.
TEST(LabelPlaces, PointsAtOnePlaceHaveOneLabel) {
    std::vector<LabelledPoint> points = pointsOnALine(10, 1.5F, 0.8F);
    const std::vector<LabelledPoint> again = points;
    points.insert(points.end(), again.begin(), again.end());
    PageRoom room(Frame);
    EXPECT_EQ(placeLabels(room, points, Height).size(), 10U);
}

TEST(LabelPlaces, LinesAndTheFrameAreKeptFree) {
    PageRoom room(Frame);
    room.takeLine(2.0F, 9.5F, 22.0F, 9.5F);
    const PageFrame point = {10.0F, 9.0F, 10.2F, 9.2F};
    const auto below = placeBeside(room, point, 1.0F, Height);
    ASSERT_TRUE(below.has_value());
    EXPECT_LT(below->y + Height, 9.0F);

    const PageFrame atCorner = {21.8F, 15.9F, 22.0F, 16.0F};
    const auto inside = placeBeside(room, atCorner, 1.0F, Height);
    ASSERT_TRUE(inside.has_value());
    EXPECT_LE(inside->x + 1.0F, Frame.right);
    EXPECT_LE(inside->y + Height, Frame.top);

    room.take(Frame);
    EXPECT_FALSE(placeBeside(room, point, 1.0F, Height).has_value());
    const float far = 1.0e30F;
    room.takeLine(-far, -far, far, far); // must end, and harm nothing
    EXPECT_TRUE(placeLabels(room, {}, Height).empty());
}

} // namespace
} // namespace keldrin
