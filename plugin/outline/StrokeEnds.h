// The ends of strokes: which are free, which can be seen, and how far back nothing touches.
#pragma once

#include <vector>

#include "CurveTree.h"
#include "Halves.h"
#include "ProfileIndex.h"

namespace outline {

struct StrokeEnd {
    plane::Point at;
    plane::Vector inward;  // unit, from the end along its stroke
    int stroke = -1;
    bool isStart = false;
    bool isFree = false;
    bool isSeen = false;
    bool hasTwin = false;            // drawn twice, though not on one line to the last digit
    bool falls[2] = {false, false};  // where the profile falls: to the left, to the right

    bool IsUpright(double cosine) const { return std::fabs(inward.x) <= cosine; }
};

// A short straight line from an end, by its number, to what lies nearer than g.
struct Join {
    plane::Curve line;
    int end = -1;
};
// Both ends of every stroke, start before end.
struct StrokeEnds {
    std::vector<StrokeEnd> ends;
    std::vector<Join> joins;
};
// cost  O(n log n) for drawings in which few strokes pass by the same end
StrokeEnds FindEnds(const std::vector<Contour>& strokes, const CurveTree& tree,
                    const Measures& measures);

// Fills isSeen and falls by the profile of the strokes.
void LookAtEnds(std::vector<StrokeEnd>& ends, const ProfileIndex& profile,
                const Measures& measures);

// True when the stroke ends where `end` of `own` is, leaves it in the same direction, and the
// shorter of both lies along the longer: drawn twice, though not on one line to the last digit.
// Curves that only touch, as in a cusp, part from one another.
bool IsTwin(const Contour& stroke, const Contour& own, const StrokeEnd& end, double g);

// The way back from a free end to the first place where another stroke touches; looked at no
// farther than `reach` along the stroke.
struct WayBack {
    double length = 0;
    plane::Point at;
    bool isWhole = false;    // to the stroke's other end: nothing touches before
    bool isFarther = false;  // longer than reach
};
WayBack FindWayBack(const std::vector<Contour>& strokes, const CurveTree& tree,
                    const StrokeEnd& end, double g, double reach);

}  // namespace outline
