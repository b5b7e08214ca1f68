// What the checks of a tool are told as. Each operation adds to the findings and changes nothing
// else; their order is the order in which a report shows them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "EncircleTrace.h"
#include "ExactEnvelope.h"
#include "product/check/AxisCheck.h"
#include "product/check/Finding.h"
#include "product/check/TrueOutline.h"
#include "product/detect/Stroke.h"

namespace product {

// Bridged gaps, what was left out, notes of the engine. A gap of the point tolerance or less is
// none, and a step is no gap.
void AddTraceFindings(const CEncircleTrace& trace, double pointTolerance,
                      std::vector<Finding>& findings);

// What could not be read of what was picked: the first sentences, and how many more there are.
void AddFaultFindings(const std::vector<std::string>& faults, std::vector<Finding>& findings);

// Where an envelope meets itself.
void AddMeetingFinding(const std::optional<SelfMeeting>& meeting, std::vector<Finding>& findings);

// What the comparison is judged by.
struct OutlineMeasure {
    Half half = Half::Upper;    // that the envelope is of
    double pointTolerance = 0;  // drawing units
    double diameter = 0;        // of the tool; 0: not known
    // What the heights place by place say; null: not looked at. They do not take hollows and
    // covered undercuts for faults.
    const AxisCheck* heights = nullptr;
};

// What the exact envelope tells of itself: bridges, gaps, open ends, overshoots that were cut off,
// what was left out.
// Bridges and overshoots no longer than what counts as an overshoot are told without a warning.
void AddExactFindings(const SExactResult& exact, std::vector<Finding>& findings);

// How another envelope lies to the exact one of the same request: the largest distance and where,
// and how length and diameter differ. More than 0.01 or a thousandth of the diameter is a warning.
void AddDifference(const std::vector<Vertex>& ring, const std::vector<Vertex>& exact,
                   const Axis& axis, std::vector<Finding>& findings);

// Edges of an outline along which nothing is drawn, with their lengths: bridges of every kind, ends
// that were moved to the axis. Edges along the axis are none, nor are those square to it, which
// close faces that are seen edge-on.
//
// sheet  what was picked
void AddUndrawnFindings(const std::vector<Vertex>& ring, const detect::Sheet& sheet,
                        const Axis& axis, double pointTolerance, std::vector<Finding>& findings);

// How the drawing lies about the axis.
void AddAxisFindings(const AxisCheck& check, const Axis& axis, std::vector<Finding>& findings);

// The distances that reports show; none where there was nothing to compare.
struct OutlineFigures {
    std::optional<double> offContour, betweenHalves;
};

// How the halves differ and how far the envelope lies from the contour. More than the larger of ten
// point tolerances and a thousandth of the diameter is a warning: the chords that stand for splines
// stay well below.
OutlineFigures AddOutlineFindings(const OutlineCheck& check, const OutlineMeasure& measure,
                                  std::vector<Finding>& findings);

}  // namespace product
