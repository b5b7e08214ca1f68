// What is told of the engine's trace.
#pragma once

#include <vector>

#include "EncircleTrace.h"
#include "product/tool/EnvelopeRun.h"

namespace app {

const char* SideName(E_RemoveLine_Dir side);

// "touch", "crossing", "overlap".
const char* MeetingName(Meeting kind);

// An outline of which no solid can be made: it meets itself in more than a touch.
bool Crosses(const Envelope& envelope);

// The bridges that the user should look at: a shorter one only joins points that are one.
std::vector<CEncircleTrace::SGap> WideGaps(const CEncircleTrace& trace, double pointTolerance);

// A bridge in the direction of view closes a step whose face is seen edge-on; any other one closes
// a place where the drawing shows nothing.
bool IsStep(const CEncircleTrace::SGap& gap, double pointTolerance);

}  // namespace app
