// The faces that noded curves enclose.
#pragma once

#include <vector>

#include "host/ed/noding.h"

namespace host {

// A closed walk along pieces, each in its direction or against it. Counter-clockwise.
struct FaceLoop {
    struct Step {
        size_t piece;
        bool isForward;
    };
    std::vector<Step> steps;
};

// The face around a point: its outer loop first, then its islands. Empty when no loop encloses the
// point. Pieces that end nowhere, or have the same face on both sides, belong to no loop.
//
// seed     at least kNodeTol away from every piece
// cost     O(n log n); pieces that come closer to one another than their chords are chorded again
// fails    std::runtime_error when GEOS gives up
std::vector<FaceLoop> FindFaceAround(const AcGePoint2d& seed, const std::vector<PlaneCurve>& curves,
                                     const Noding& noding);

}  // namespace host
