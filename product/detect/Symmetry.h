// Lines in which a sheet is its own mirror image, in part.
#pragma once

#include <vector>

#include "product/detect/Stroke.h"

namespace product::detect {

// A level line r = offset, and the strokes that are mirror images of one another or of themselves
// in it.
struct MirrorLine {
    double offset = 0;
    double weight = 0;         // length of those strokes
    std::vector<int> strokes;  // each once, in order
};

// Level mirror lines, the one with the greatest weight first; at most `most`.
//
// sheet      turned so that what is looked for is level
// use        strokes that take part
// tolerance  drawing units
// cost       O(n log n); of strokes of one shape and place along the line only the nearest sixteen
//            above one another are paired
std::vector<MirrorLine> FindMirrorLines(const Sheet& sheet, const std::vector<char>& use,
                                        double tolerance, size_t most);

}  // namespace product::detect
