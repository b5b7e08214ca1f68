// What the checks of a tool are told as.
#pragma once

#include <string>

#include "EncircleCalInfo.h"
#include "EncircleTrace.h"
#include "product/tool/EnvelopeRun.h"
#include "product/tool/ToolResult.h"
#include "product/check/TrueOutline.h"

namespace app {

// Bridged gaps, what was left out, notes of the engine.
void AddTraceFindings(const CEncircleTrace& trace, double pointTolerance, ToolResult& result);

// Where an envelope meets itself.
void AddMeetingFinding(const Envelope& envelope, ToolResult& result);

// How the halves differ and how far the envelope lies from the contour. More than the larger of ten
// point tolerances and a thousandth of the diameter is a warning: the chords that stand for splines
// stay well below.
void AddOutlineFindings(const OutlineCheck& check, const CEncircleCalInfo& parameters,
                        ToolResult& result);

}  // namespace app
