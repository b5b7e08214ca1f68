// What hangs on a contour at a single point: marks, pointers and symbols that somebody drew up to
// it. Nothing solid hangs on a point.
#pragma once

#include <vector>

#include "product/detect/Stroke.h"

namespace product::detect {

struct Hanger {
    std::vector<int> strokes;  // whole strokes of the sheet
    Point at;                  // the one point at which they touch the rest
    bool hasText = false;      // a text stands near it, or it ends at a full circle
};

// The greatest groups of strokes that hold to the rest of their component in one point alone and
// have at most a quarter of its length.
//
// use        strokes that take part
// tolerance  drawing units: strokes closer touch
// result     none where the strokes touch too often to be a contour (hatching drawn as lines)
// cost       O(n log n + p) for p pairs of chords whose boxes come together
std::vector<Hanger> FindHangers(const Sheet& sheet, const std::vector<char>& use, double tolerance);

}  // namespace product::detect
