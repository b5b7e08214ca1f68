// Closed rings of lines and arcs cut in two by a straight line.
#pragma once

#include <vector>

#include "host/solid/profile.h"
#include "plane/curve.h"

namespace product {

// What lies before the line and what lies behind it, seen along the direction. Each is closed along
// the line, and both have the same corners there.
struct CutRings {
    std::vector<host::solid::Piece> before, behind;
};

// Cuts a closed ring by the line of points p with p . direction = at. Corners keep their digits;
// of an arc that is cut both parts keep its circle. A corner within kPositionTol of the line takes
// the line to itself.
//
// direction  unit
// fails      Failure with NoResult when the ring lies on one side of the line, or when the line
//            leaves it more than once
// cost       O(n) for n pieces
CutRings CutRing(const std::vector<host::solid::Piece>& ring, const plane::Vector& direction,
                 double at);

// A profile in two: below and above a place along its axis, each with the frame of the whole.
struct CutProfiles {
    host::solid::Profile below, above;
};

// fails  as CutRing(), and for a cavity through which the cut leads
CutProfiles CutProfile(const host::solid::Profile& profile, double at);

// The places where a profile begins and ends along its axis.
struct Reach {
    double low = 0, high = 0;
};
Reach ReachOf(const host::solid::Profile& profile);

}  // namespace product
