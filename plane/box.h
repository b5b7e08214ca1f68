// Axis-parallel boxes, and the pairs of boxes that touch.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <vector>

#include "plane/point.h"

namespace plane {

// The box of what was added; empty at first: its low corner lies above its high one.
struct Box {
    Point low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    bool IsEmpty() const { return !(low.x <= high.x && low.y <= high.y); }
    // Of an empty box: not meaningful.
    double Width() const { return high.x - low.x; }
    double Height() const { return high.y - low.y; }
    Point Middle() const { return {low.x + Width() / 2, low.y + Height() / 2}; }
    // The longer side, 0 of an empty box: what relative tolerances are taken of.
    double Size() const { return IsEmpty() ? 0.0 : (std::max)(Width(), Height()); }
    // Wider on all four sides.
    Box Padded(double pad) const {
        return {{low.x - pad, low.y - pad}, {high.x + pad, high.y + pad}};
    }

    void Add(const Point& p) {
        low = {(std::min)(low.x, p.x), (std::min)(low.y, p.y)};
        high = {(std::max)(high.x, p.x), (std::max)(high.y, p.y)};
    }
    // An empty box adds nothing.
    void Add(const Box& other) {
        if (other.IsEmpty()) return;
        Add(other.low);
        Add(other.high);
    }

    // True when the other lies inside or on the border; without tolerance.
    bool Contains(const Box& other) const {
        return low.x <= other.low.x && other.high.x <= high.x && low.y <= other.low.y &&
               other.high.y <= high.y;
    }
    bool Contains(const Point& p) const {
        return p.x >= low.x && p.y >= low.y && p.x <= high.x && p.y <= high.y;
    }
    // True when no gap between the two is wider than margin, in x and in y.
    bool Meets(const Box& other, double margin) const {
        return low.x <= other.high.x + margin && other.low.x <= high.x + margin &&
               low.y <= other.high.y + margin && other.low.y <= high.y + margin;
    }
};

// Of two points in any order.
inline Box BoxOf(const Point& p, const Point& q) {
    Box box;
    box.Add(p);
    box.Add(q);
    return box;
}

// Calls use(i, j), i < j, once for every two boxes that meet within a margin, ordered by i and then
// by j, until use returns false. Empty boxes, and those with a number that is none, meet nothing.
//
// cost  O(n log n + k log k) for k such pairs; memory O(n)
void ForEachMeetingPair(const std::vector<Box>& boxes, double margin,
                        const std::function<bool(std::size_t, std::size_t)>& use);

}  // namespace plane
