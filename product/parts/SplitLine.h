// The line across a section that tells the cutting part from the rest.
#pragma once

#include <string>
#include <vector>

#include "host/solid/profile.h"

namespace product {

// A straight line of the drawing, and how messages name it.
struct DrawnLine {
    plane::Point from, to;  // the drawing's
    std::string name;
};

struct SplitLine {
    double at = 0;     // along the profile
    std::string name;  // of the line, or of the first of several that make it up
};

// Finds the one line that is drawn across the whole section where the contour has no corner, since
// a corner's edge is seen as a line in any case; of several the only one that reaches beyond the
// contour on both sides; without any the only corner's line. Lines on one another count as one,
// and so do the halves on both sides of the axis.
//
// isHalfDrawn  the drawing shows one half: a line from the axis to the contour will do
// fails  Failure with NoResult when there is none, or more than one; the text lists their places
// cost   O(n log n) for n lines across, each against the pieces of the profile
SplitLine FindSplitLine(const host::solid::Profile& profile, const std::vector<DrawnLine>& lines,
                        bool isTipHigh, bool isHalfDrawn);

}  // namespace product
