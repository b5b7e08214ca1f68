// What the engine's trace says of the places that an outline leaves open.
#pragma once

#include <optional>
#include <vector>

#include "EncircleTrace.h"
#include "product/base/Outline.h"

namespace product {

// "bottom", "top", "right", "left", "none": the side that the bridge was found from.
const char* SideName(E_RemoveLine_Dir side);

// "touch", "crossing", "overlap".
const char* MeetingName(Meeting kind);

// An outline of which no solid can be made: it meets itself in more than a touch.
bool Crosses(const std::optional<SelfMeeting>& meeting);

// The bridges that the user should look at: a shorter one only joins points that are one.
std::vector<CEncircleTrace::SGap> WideGaps(const CEncircleTrace& trace, double pointTolerance);

// A bridge in the direction of view closes a step whose face is seen edge-on; any other one closes
// a place where the drawing shows nothing.
bool IsStep(const CEncircleTrace::SGap& gap, double pointTolerance);

}  // namespace product
