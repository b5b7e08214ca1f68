// Heads of arrows at the ends of lines, however they are drawn.
#pragma once

#include <array>
#include <vector>

#include "product/detect/NearLines.h"
#include "product/detect/Stroke.h"

namespace product::detect {

struct LineHeads {
    std::array<double, 2> length{};  // at the stroke's start and end; 0: none
    std::vector<int> strokes;        // that they are drawn with; filled ones are none

    bool AtBoth() const { return length[0] > 0 && length[1] > 0; }
    bool AtAny() const { return length[0] > 0 || length[1] > 0; }
};

// For each stroke, those of lines and open arcs:
//
// filled  a triangle along the line, its tip or its back at the end
// open    two strokes of one length, one to each side, that go back from the end to nothing, or to
//         a third one between them
// tick    a stroke with the end in its middle, aslant, and nothing at its own ends
//
// Where strokes are drawn over and over only filled heads are looked for.
//
// cost  O(n m) for m strokes near an end, of which there are at most some hundreds
std::vector<LineHeads> FindHeads(const Sheet& sheet, const NearLines& lines, double tolerance);

}  // namespace product::detect
