// The tools on a sheet: their axes, their extent and what belongs to them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "product/detect/Candidate.h"
#include "product/detect/Notes.h"
#include "product/detect/Stroke.h"

namespace product::detect {

// Strokes that touch the contour and were taken for a note.
struct LeftOutNote {
    Point at;
    size_t strokes = 0;
    bool hasText = false;  // a text stands beside it, which makes it one beyond doubt
};

struct FoundTool {
    Point from,
        to;      // of the axis where the contour begins and ends: rightwards, upwards if upright
    Box window;  // of the contour
    std::vector<int> entities;     // that belong to it, in order
    std::vector<int> strokes;      // the same stroke by stroke
    bool hasWholeEntities = true;  // no entity has contour that is none of the tool's
    AxisCue cue = AxisCue::Mirror;
    double confidence = 0;  // 0 to 1
    bool isSure = false;
    bool isHalf = false;
    double agreement = 0;              // share of places at which its halves are alike
    std::vector<std::string> remarks;  // what weighs against it
    // What could not be read of the sheet, a sentence each; told with its first tool.
    std::vector<std::string> faults;
    std::vector<LeftOutNote> leftOut;
    std::optional<Point> standing;  // a mark may stand there on half a contour
};

// Strokes that hang together and were taken neither for a tool nor for a note.
struct Rest {
    Box box;
    size_t strokes = 0;
};

struct Finding {
    std::vector<FoundTool> tools;     // sure, from left to right, then upwards
    std::vector<FoundTool> doubtful;  // considered and not taken, the most likely first
    std::vector<Rest> rest;           // as large as a tool might be, the largest first
    size_t noteStrokes = 0;           // strokes of dimensions, leaders, borders and tables
    std::vector<int> beside;          // entities inside a tool's window that are none of it
};

// Weighs cues against one another; none of them is enough alone.
//
// sheet   in drawing units, as displayed
// result  turns, moves, mirrors and scales with the sheet, but for rounding
// cost    O(n log n) for n strokes, for each of up to five directions in which the sheet is drawn
Finding FindTools(const Sheet& sheet);

}  // namespace product::detect
