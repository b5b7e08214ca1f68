// The parts of a tool that was computed: where its tip is, and its cutting part apart from the
// rest.
#pragma once

#include <string>
#include <vector>

#include "arxHeaders.h"
#include "host/solid/profile.h"
#include "product/check/Finding.h"
#include "product/parts/Tip.h"
#include "product/tool/ToolRequest.h"

namespace product {

struct ToolRun;

// One part: its solid where the drawing has it, and its closed contour there.
struct ToolPart {
    host::solid::Profile profile;
    host::solid::Measures measures;
    std::vector<Vertex> ring;
    std::string handle;  // of its polyline
};

struct ToolParts {
    Tip tip;
    bool isSplit = false;
    std::string how;    // "a line across the section, handle 2A"
    double length = 0;  // of the cutting part, along the axis
    ToolPart cut, rest;
    std::vector<Finding> findings;
};

// Finds tip and parts of a run that has a solid, as its request asks, and draws the parts on the
// layers CUT and NOCUT; contours that the drawing has there are taken instead.
//
// fails  Failure: Request for a length that the tool has not, or a side that the axis has not;
//        NoResult when there is no line or no contour to split by, or more than one
// cost   O(n log n) for n picked curves, blocks taken apart, for lines and layers
ToolParts FindParts(AcDbDatabase& database, const ToolRequest& request, const ToolRun& run);

}  // namespace product
