// The faces that noded curves enclose.
#pragma once

#include <vector>

#include "plane/noding.h"

namespace host {

// A closed walk along pieces, each in its direction or against it. Counter-clockwise.
struct FaceLoop {
    // One piece of the walk.
    struct Step {
        size_t piece;
        bool isForward;  // as the curve runs
    };
    std::vector<Step> steps;
};

// The face around a point: its outer loop first, then its islands. Empty when no loop encloses the
// point. Pieces that end nowhere, or have the same face on both sides, belong to no loop.
//
// seed     farther away from every piece than the curves were noded with
// cost     O(n log n); pieces that come closer to one another than their chords are chorded again
// fails    std::runtime_error when GEOS gives up
std::vector<FaceLoop> FindFaceAround(const plane::Point& seed,
                                     const std::vector<plane::Curve>& curves,
                                     const plane::Noding& noding);

}  // namespace host
