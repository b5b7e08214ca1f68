#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <utility>

#include "plane/box.h"

namespace {

using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

Pairs Found(const std::vector<plane::Box>& boxes, double margin) {
    Pairs pairs;
    plane::ForEachMeetingPair(boxes, margin, [&](std::size_t i, std::size_t j) {
        pairs.emplace_back(i, j);
        return true;
    });
    return pairs;
}

Pairs Plain(const std::vector<plane::Box>& boxes, double margin) {
    Pairs pairs;
    for (std::size_t i = 0; i < boxes.size(); ++i)
        for (std::size_t j = i + 1; j < boxes.size(); ++j)
            if (!boxes[i].IsEmpty() && !boxes[j].IsEmpty() && boxes[i].Meets(boxes[j], margin))
                pairs.emplace_back(i, j);
    return pairs;
}

TEST(PlaneBox, PairsAreThoseOfThePlainLoopInItsOrder) {
    std::mt19937 random(30);
    for (int round = 0; round < 60; ++round) {
        // Up to 300 boxes, many in one place, of every size, on whole numbers so that they touch.
        std::uniform_int_distribution<int> place(0, round % 2 == 0 ? 20 : 300), size(0, 5);
        std::vector<plane::Box> boxes(static_cast<std::size_t>(round * 5));
        for (plane::Box& box : boxes) {
            if (size(random) == 0 && size(random) == 0) continue;  // an empty one
            const plane::Point at{double(place(random)), double(place(random))};
            box.Add(at);
            box.Add(plane::Point{at.x + size(random), at.y + size(random) * (round % 3)});
        }
        for (const double margin : {0.0, 1.0, 0.999})
            EXPECT_EQ(Plain(boxes, margin), Found(boxes, margin)) << round << ' ' << margin;
    }
}

TEST(PlaneBox, StopsWhenToldAndLeavesOutWhatIsNoBox) {
    plane::Box box, nan = box, endless;
    box.Add(plane::Point{0, 0});
    nan.Add(plane::Point{0, 0});
    nan.low.x = std::numeric_limits<double>::quiet_NaN();
    endless.Add(plane::Point{0, 0});
    endless.high.x = std::numeric_limits<double>::infinity();
    EXPECT_EQ((Pairs{{0, 3}}), Found({box, nan, endless, box, plane::Box()}, 0.0));
    int calls = 0;
    plane::ForEachMeetingPair({box, box, box}, 0.0,
                              [&](std::size_t, std::size_t) { return ++calls < 2; });
    EXPECT_EQ(2, calls);
}

}  // namespace
