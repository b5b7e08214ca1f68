// What closes the openings of the profile.
#pragma once

#include <vector>

#include "OutlineLaw.h"
#include "StrokeEnds.h"

namespace outline {

// What the rules are applied to.
struct Scene {
    const std::vector<Contour>& strokes;
    const CurveTree& tree;
    const Measures& measures;
    const ProfileIndex& profile;
    const std::vector<StrokeEnd>& ends;
};

struct Bridges {
    std::vector<Span2> reports;
    std::vector<plane::Curve> curves;
    std::vector<bool> isJoined;  // of each end: it took a bridge, whichever way
};

// Joins seen free ends where the profile falls, shortest first, each end once per side:
//   - to what its own curve meets when it goes on as it is, within half its tail or o
//   - straight to another seen free end across the fall, no longer than the shorter tail, or o;
//     two upright ends only within o
//   - straight to any other seen end across the fall, within half its tail or o
// The first kind wins within 2g. Nothing between rises above the straight line by more than g. An
// end whose wall alone is missing is not joined.
//
// cost  O(m log n) for m seen ends, when the ends within reach of each are few
Bridges FindBridges(const Scene& scene);

}  // namespace outline
