// Axis-parallel boxes, and the pairs of boxes that touch.
#pragma once

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
    double Size() const;

    void Add(const Point& p);
    // An empty box adds nothing.
    void Add(const Box& other);

    // True when the other lies inside or on the border; without tolerance.
    bool Contains(const Box& other) const;
    bool Contains(const Point& p) const;
    // True when no gap between the two is wider than margin, in x and in y.
    bool Meets(const Box& other, double margin) const;
};

// Finds the boxes near a place: a tree, halved at the middle of the longer side down to a few
// boxes.
//
// boxes  are copied; their order gives the numbers that are handed back. Empty ones, and those with
//        a number that is none, are never found.
// cost   O(n log n) to build, memory O(n); a search O(log n + found) for boxes as drawings have
//        them, O(n) at worst.
class BoxIndex {
public:
    explicit BoxIndex(const std::vector<Box>& boxes);

    // Appends the numbers of the boxes that Meets(box, margin), in no order.
    void AppendMeeting(const Box& box, double margin, std::vector<std::size_t>& found) const;

private:
    struct Node {
        Box box;
        // The numbers [begin, end) of m_order; children stand at `first` and first + 1, or none
        // (0).
        std::size_t begin = 0, end = 0, first = 0;
    };
    void Split();

    std::vector<Box> m_boxes;
    std::vector<std::size_t> m_order;
    std::vector<Node> m_nodes;
};

// Calls use(i, j), i < j, once for every two boxes that meet within a margin, ordered by i and then
// by j, until use returns false.
//
// cost  O(n log n + k log k) for k such pairs; memory O(n)
void ForEachMeetingPair(const std::vector<Box>& boxes, double margin,
                        const std::function<bool(std::size_t, std::size_t)>& use);

}  // namespace plane
