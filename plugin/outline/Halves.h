// From what is picked to the strokes that count in one half.
#pragma once

#include "OutlineLaw.h"

namespace outline {

// What a run of the law decides by; everything in drawing units.
struct Measures {
    double size = 0;
    double g = 0, d = 0, o = 0;
    // Coordinates apart by less are the same: 1e-9 of the size, or what rounding leaves of them.
    double tiny = 0;
    // Heights that differ by less are equal when two curves compete.
    double tie = 0;
};

// The parts of the curves in the half, folded to r >= 0.
std::vector<Contour> ToHalf(const std::vector<Contour>& curves, Half half);

// The measures for what lies in the half.
Measures MeasureHalf(const std::vector<Contour>& inHalf, const Lengths& lengths, double rounding);

// Joins the curves to strokes and leaves out what counts for nothing: what lies on the axis, what
// is shorter than a point, and centre lines drawn full. A chain of short curves counts as long as
// it reaches.
std::vector<Contour> FindStrokes(const std::vector<Contour>& inHalf, const Measures& measures,
                                 std::vector<Envelope::Ignorance>& ignored);

}  // namespace outline
