// The outline's edges, joined and cleaned.
#pragma once

#include <vector>

#include "ProfileIndex.h"

namespace outline {

// The profile from its first point to its last, left to right: the spans' curves, the steps between
// them as upright lines, straight lines where no span is.
//
// tiny  steps and openings that are no wider are none
std::vector<plane::Curve> ProfileEdges(const std::vector<Piece>& pieces,
                                       const std::vector<Span>& spans, double tiny);

// Takes the chain from the axis to the axis apart as little as needed: edges without length go,
// neighbours on one line or one circle become one, an edge shorter than g goes when its neighbours,
// continued, meet within 2g of its ends. The first and the last point come to lie on the axis.
//
// tiny  how far a point may lie off the line or the circle that swallows it
std::vector<plane::Curve> CleanChain(std::vector<plane::Curve> edges, double tiny, double g);

// True for a point on or inside the outline that the chain and the axis enclose. O(n).
bool IsInside(const std::vector<plane::Curve>& edges, const plane::Point& p);

}  // namespace outline
