// Which end of a tool cuts.
#pragma once

#include <string>

#include "host/solid/profile.h"
#include "product/parts/PartRequest.h"

namespace product {

struct Tip {
    bool isHigh = true;   // the tip is where the profile's x is greatest
    bool isSure = false;  // somebody said so, or one end alone comes to a point
    std::string why;      // "only this end comes to a point"
};

// The tip of a profile. Said by a side: that one. Else the only end that comes to a point or a
// rounding on the axis; else, and that is not sure, the end with the shorter cylinder.
//
// fails  Failure with Request for a side of the drawing that the axis has not: left of an upright
//        tool
Tip TipOf(const host::solid::Profile& profile, TipSide side);

// The end of a profile as the drawing has it: "left", "right", "upper", "lower".
const char* EndName(const host::solid::Profile& profile, bool isHigh);

}  // namespace product
