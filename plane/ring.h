// Closed rings of lines and arcs: their curves, their size, what lies inside, where they meet
// themselves.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "plane/curve.h"

namespace plane {

// A corner and the bulge of the curve that leaves it.
struct Corner {
    Point point;
    double bulge = 0.0;
};

// The curves from corner to corner, and from the last one to the first when the ring is closed. One
// curve for each corner, also where two corners are one point.
std::vector<Curve> CurvesOf(const std::vector<Corner>& corners, bool isClosed = true);

// The box of all curves, arcs included beyond their ends.
Box BoxOf(const std::vector<Curve>& curves);

// The sums over a closed ring: area positive when it runs counter-clockwise.
Integrals Integrate(const std::vector<Curve>& ring);

// How a closed ring lies about a point: true when the point is inside, by the even-odd rule, arcs
// as arcs. A point on the ring may count either way: ask Distance() first where that matters.
bool IsInside(const std::vector<Curve>& ring, const Point& p);

// The least distance of a point from any of the curves; infinite when there are none. O(n).
double Distance(const std::vector<Curve>& curves, const Point& p);

enum class MeetingKind { Touch, Crossing, Overlap };

// Where two curves of a ring meet that should not.
struct SelfMeeting {
    MeetingKind kind = MeetingKind::Touch;
    Point at;
    std::size_t first = 0, second = 0;  // numbers of the curves in the ring, the lower one first
};

// The place where a closed ring meets itself other than at the corners that its curves share; a
// crossing or an overlap is preferred to a mere touch, then the lowest numbers.
//
// ring    each curve ends where the next one begins, the last where the first does. Curves no
//         longer than the tolerance are passed over, their neighbours count as adjacent.
// tol     strands that come as close as that meet. Drawing units; take it of the ring's size where
//         nothing else fixes it: coordinates of a size carry no information below 1e-15 of it.
// result  nothing for a simple ring. Exact for lines and arcs: no arc is replaced by chords.
// cost    O(n log n) for outlines as drawings have them; O(p) for p pairs of curves whose boxes
// meet
std::optional<SelfMeeting> FindSelfMeeting(const std::vector<Curve>& ring, double tol);

}  // namespace plane
