// Curves cut where they meet: what faces and traced boundaries are put together from.
//
// Words
//   node   a place at which curves begin, end or meet; places within the tolerance are one node
//   piece  the part of a curve between two nodes that follow one another on it
#pragma once

#include <cstddef>
#include <vector>

#include "plane/curve.h"

namespace plane {

// Runs as its curve does, also when the curve's own geometry misses a node by up to the tolerance.
struct NodedPiece {
    std::size_t curve;
    std::size_t from, to;       // numbers of nodes
    double fromShare, toShare;  // of the curve; 0 and 1 are its own ends, exactly
};

struct Noding {
    std::vector<Point> nodes;
    std::vector<NodedPiece> pieces;
};

// Cuts the curves at their meetings.
//
// tol      drawing units. Points within it become one node, the nearest when there are several; a
//          curve's end comes before a computed crossing, so that what was drawn to meet meets
//          exactly. Curves no longer than it are the caller's to leave out: they make no piece.
// result   pieces in the order of the curves, along each curve. Pieces on top of one another
// between
//          the same nodes are kept once: when their middles are within four tolerances, for each
//          may miss its nodes and touch the other within one.
// cost     O((n + k) log n) for k pairs of curves whose boxes touch
Noding NodeCurves(const std::vector<Curve>& curves, double tol);

// The piece as a curve of its own, with the nodes as its ends; an arc keeps its centre and radius.
Curve CurveOf(const NodedPiece& piece, const std::vector<Curve>& curves, const Noding& noding);

}  // namespace plane
