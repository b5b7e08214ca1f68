// What is picked, as the curves of a contour.
#pragma once

#include <vector>

#include "ExactEnvelope.h"
#include "Strokes.h"

struct SContour {
    std::vector<outline::Contour> m_curves;  // world XY; the source is the place among the ids
    // Full circles and ellipses that were not taken.
    std::vector<outline::Contour> m_circles;
    std::vector<SExactResult::SLeftOut> m_leftOut;
};

// Reads lines, arcs, polylines, elliptic arcs and splines, in blocks, too, as they are displayed.
// Nothing in the drawing changes and nothing stays open.
//
// dCurve  how far tangent arcs may leave a spline or an ellipse, drawing units
SContour ReadContour(const SExactRequest& request, double dCurve);
