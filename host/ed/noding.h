// Curves cut where they meet.
#pragma once

#include <cstddef>
#include <vector>

#include "host/ed/plane_curve.h"

namespace host {

// The part of a curve between two nodes that follow one another on it. Runs as the curve does, also
// when the curve's own geometry misses a node by up to kNodeTol.
struct NodedPiece {
    size_t curve;
    size_t from, to;            // nodes
    double fromParam, toParam;  // of the curve
};

struct Noding {
    std::vector<AcGePoint2d> nodes;
    std::vector<NodedPiece> pieces;
};

// Cuts the curves at their meetings. Points within kNodeTol become one node; a curve's end comes
// before a computed crossing, so that what was drawn to meet meets exactly. Pieces on top of one
// another between the same nodes are kept once. Order: that of the curves, along each curve.
//
// cost     O((n + k) log n) for k pairs of curves whose boxes touch
Noding NodeCurves(const std::vector<PlaneCurve>& curves);

// The piece as a curve of its own, with the nodes as its ends.
PlaneCurve CurveOf(const NodedPiece& piece, const std::vector<PlaneCurve>& curves,
                   const Noding& noding);

}  // namespace host
