// What was drawn beside a contour or up to it and is none of the tool.
#pragma once

#include <optional>
#include <vector>

#include "product/detect/Candidate.h"
#include "product/detect/HalfHeights.h"

namespace product::detect {

// Strokes of components that a tool's size is taken from: those along the axis are none of its
// contour.
std::vector<int> ContourOf(const LevelSheet& level, const std::vector<int>& components,
                           double offset);

// Moves from the candidate's components to its floating ones those that lie outside of the contour
// with a gap: arrows of sections, symbols, letters drawn as lines. Nothing solid floats.
//
// cost  O(c n) for c components with n strokes
void LeaveFloatingOut(const LevelSheet& level, Candidate& candidate);

// Takes the hangers that stand out from the contour on one side only out of the strokes, and
// notes them in the candidate. Of half a contour there is no other side to ask: then a text has to
// stand beside them.
void LeaveHangersOut(const LevelSheet& level, Candidate& candidate, std::vector<int>& strokes);

// Whether something that was left out hung where the contour falls on both sides: it may have
// stood on a mark that is still there.
bool HangsOnPeak(const LevelSheet& level, const Candidate& candidate, const HalfHeights& heights);

// Half a contour has no other half to ask whether something on it is a mark. A step of the contour
// ends the line that it stands on, a mark does not: where one is, in the frame of the sheet.
std::optional<Point> StandsOnLine(const LevelSheet& level, const Candidate& candidate,
                                  const std::vector<int>& strokes, const HalfHeights& heights);

}  // namespace product::detect
