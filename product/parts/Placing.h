// A solid in the tool's own coordinates.
#pragma once

#include "host/solid/profile.h"
#include "product/base/Axis.h"
#include "product/parts/PartRequest.h"

namespace product {

// Where a profile is to stand: x of the profile that becomes zero, and the frame that its axis
// takes.
struct ToolPlace {
    double zero = 0;
    host::solid::Frame frame;
};

// The place that a placement means for a tool. Without a zero but with a direction zero is the tip;
// without a direction the tool points right or left, as it is drawn.
//
// axis       of the tool in the drawing
// isTipHigh  the tip is where the profile's x is greatest
ToolPlace PlaceOf(const host::solid::Profile& profile, const Axis& axis, bool isTipHigh,
                  const Placement& placement);

// The profile there. Volume and area stay; lengths along the axis round once.
host::solid::Profile Placed(const host::solid::Profile& profile, const ToolPlace& place);

}  // namespace product
