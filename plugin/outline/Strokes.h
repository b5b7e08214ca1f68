// The contour's curves, those on one line or one circle joined to one.
#pragma once

#include <vector>

#include "plane/curve.h"

namespace outline {

// A curve of the contour, (s, r) in x and y: s along the axis, r the distance from it.
struct Contour {
    plane::Curve curve;
    int source = -1;             // the caller's number, to report by
    bool isApproximate = false;  // stands for a spline or an ellipse: goes on along its tangent
};

// Joins lines on one line, and arcs on one circle, that overlap or come nearer than `meet` along
// it. What is drawn twice, split into parts or drawn over is one curve afterwards; curves that have
// no such partner come back as they are. A circle that is covered all round comes back as two
// halves.
//
// tiny    how far ends may lie off the line or the circle
// result  the source of a joined curve is the lowest of its parts'
// cost    O(n log n)
std::vector<Contour> JoinStrokes(const std::vector<Contour>& curves, double tiny, double meet);

// The arc from one point to the other on a circle that may be a million times as large.
plane::Curve ArcBetween(const plane::Point& from, const plane::Point& to,
                        const plane::Point& centre, double radius, bool turnsLeft);

}  // namespace outline
