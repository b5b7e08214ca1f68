// Overshoots and marks: what sticks out of the contour and is left out.
#pragma once

#include "Bridges.h"

namespace outline {

struct Tails {
    std::vector<Tail> reports;
    std::vector<bool> isCut;           // of each end
    std::vector<plane::Curve> curves;  // what is left of the strokes
};

// Cuts the tail of each free end that took no bridge when it is no longer than o; that of a seen
// one on a line, too, when it spans no more than g along the axis.
Tails CutTails(const Scene& scene, const Bridges& bridges);

}  // namespace outline
