// Lines of a sheet that may be the axes of tools.
#pragma once

#include <vector>

#include "product/detect/Candidate.h"

namespace product::detect {

struct AxisLine {
    double offset;
    double start, end;  // of the drawn line; empty for a mirror line
    AxisCue cue;
    std::vector<int> mirrored;  // strokes that speak for it
};

// Level centre lines, the longest first; lines in which strokes are mirror images of one another;
// full and dashed lines that run through a component and past it; the borders of the greater
// components. `componentOf` has the component of each stroke, -1 for none.
//
// result  at most sixty-four
// cost    O(n log n)
std::vector<AxisLine> FindAxisLines(const LevelSheet& level, const std::vector<int>& componentOf);

// Whether a level line runs past a part at both ends, as no face's foot and no hidden edge does.
bool RunsPast(double from, double to, double partFrom, double partTo, double tolerance);

}  // namespace product::detect
