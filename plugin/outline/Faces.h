// How the outline goes down to the axis at either end.
#pragma once

#include <vector>

#include "ProfileIndex.h"
#include "StrokeEnds.h"

namespace outline {

struct FaceInput {
    const std::vector<plane::Curve>& curves;  // the contour with bridges, without tails
    const ProfileIndex& profile;              // of these, gaps filled
    const Measures& measures;
    const std::vector<plane::Point>& freeEnds;  // those that are left
    double s0 = 0, s1 = 0;                      // where the profile begins and ends
    bool isVertical = false;
};

// The face at s0 (isRight false) or s1, edge by edge from the profile's end down to the axis.
//
// Going down, it follows the outermost curve while that lies no deeper than d, or a third of the
// profile, and under the profile; else it goes straight on until that curve comes back. It does not
// jump inwards where a curve ends freely, where the profile is not higher by more than g all along
// the jump, and next to the axis.
std::vector<plane::Curve> FindFace(const FaceInput& input, bool isRight);

}  // namespace outline
