// How far two outlines lie apart.
#pragma once

#include <vector>

#include "plane/point.h"

namespace plane {

// The farthest that lines through points lie from one another.
struct Apart {
    double distance = 0.0;
    Point at;  // on one of the two, where that is
};

// The greatest of the distances of each line's corners and edge middles from the other line. Of a
// line of more than twenty thousand corners every second, third, ... is looked at.
//
// cost  O((n + m) log(n + m)) for outlines as drawings have them; O(n m) when every chord of one
//       spans all of x
Apart FarthestApart(const std::vector<Point>& a, const std::vector<Point>& b);

}  // namespace plane
