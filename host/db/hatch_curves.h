// The curves of a hatch: its boundary, and the lines of its pattern.
#pragma once

#include <memory>
#include <vector>

#include "dbcurve.h"
#include "host/db/hatch_data.h"

namespace host {

// The boundary in WCS: a polyline a loop, or a curve an edge. Edges without extent are left out.
std::vector<std::unique_ptr<AcDbCurve>> CurvesOf(const HatchData& data);

// The dashes of the pattern inside the loops, by the even-odd rule, in WCS. Curved edges count as
// chords that leave them by no more than kHatchChord of their box. Dots become lines of length
// zero. A pattern of more than kMaxPatternLines lines across the loops gives its boundary instead.
std::vector<std::unique_ptr<AcDbCurve>> PatternOf(const HatchData& data);
constexpr double kHatchChord = 1e-4;
constexpr int kMaxPatternLines = 100000;

}  // namespace host
