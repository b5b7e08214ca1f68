// Strokes that touch one another.
#pragma once

#include <functional>
#include <vector>

#include "product/detect/Stroke.h"

namespace product::detect {

struct Component {
    std::vector<int> strokes;  // indices into the sheet's
    Box box;
    double length = 0;
};

// Groups the strokes whose `use` is set: two are together when they come closer than the tolerance
// anywhere, ends, crossings and contacts alike.
//
// cost  O(n log n + p) for p pairs of chords whose boxes come together
std::vector<Component> FindComponents(const Sheet& sheet, const std::vector<char>& use,
                                      double tolerance);

// The sheet's full circles; and whether one of them holds a component: an end view, or a detail
// drawn larger.
std::vector<int> CirclesOf(const Sheet& sheet);
bool LiesInCircle(const Sheet& sheet, const std::vector<int>& circles, const Component& component);

// Calls touch(a, b, at) for every two strokes of those in use that come closer than the tolerance,
// and each place where they do: crossings, ends, and both ends of a stretch along which they run
// together. It goes on while touch() is true; whether it was to the end.
//
// cost  as FindComponents()
bool ForEachTouch(const Sheet& sheet, const std::vector<char>& use, double tolerance,
                  const std::function<bool(int a, int b, Point at)>& touch);

// The distance of two straight pieces; 0 when they cross.
double Distance(Point a, Point b, Point c, Point d);
// The distance of a point from a straight piece.
double Distance(Point p, Point a, Point b);

}  // namespace product::detect
