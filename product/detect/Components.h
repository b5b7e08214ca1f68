// Strokes that touch one another.
#pragma once

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

// The distance of two straight pieces; 0 when they cross.
double Distance(Point a, Point b, Point c, Point d);
// The distance of a point from a straight piece.
double Distance(Point p, Point a, Point b);

}  // namespace product::detect
