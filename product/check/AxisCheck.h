// Whether an axis lies where the drawing has one, by how the drawing's halves match about it.
#pragma once

#include <optional>

#include "arxHeaders.h"
#include "product/base/Axis.h"
#include "product/detect/Stroke.h"

namespace product {

struct AxisCheck {
    // Another line, beside the axis, in which the drawing is its own mirror image while it is not
    // in the axis: how far to the left of the axis, and a point on it.
    std::optional<double> shift;
    Point shiftAt;
    // The contour stays that far from the axis at one of its ends; 0 when it comes to it at both.
    double reachGap = 0;
    Point reachAt;
    // How far the outlines of both halves differ, and where; with teeth smoothed away, as the
    // flanks of a thread lie half a pitch apart.
    double halvesApart = 0, halvesApartBehindTeeth = 0;
    Point halvesAt;
    // How much of the length has something on one side only; 0 when a whole side is empty.
    double oneSided = 0;
    Point oneSidedAt;
    // How far an envelope lies from the outermost that is drawn, place by place along the axis.
    std::optional<double> envelopeApart;
    Point envelopeAt;
    bool isOneSided = false;  // next to nothing is drawn on one side
    // A rectangle around everything that is picked, and how many strokes of borders there are.
    size_t borderStrokes = 0;
    Point borderAt;
};

// sheet      what is picked, as detect::ReadSheet() gives it
// half       that the envelope is of
// envelope   a closed ring; empty: none
// tolerance  drawing units; a shift below ten of it, or below a thousandth of the greatest radius,
//            is none
// cost       O(n log n)
AxisCheck CheckAxisPlace(const detect::Sheet& sheet, const Axis& axis, Half half,
                         const std::vector<Vertex>& envelope, double tolerance);

}  // namespace product
