// A finished envelope, read out of the drawing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "arxHeaders.h"
#include "product/base/Axis.h"

namespace product {

struct Envelope {
    bool found = false;
    bool closed = false;
    std::string layer, handle;  // UTF-8
    std::vector<Vertex> vertices;
    Box extents;
    double length = 0;    // along the outline, arcs as arcs
    double diameter = 0;  // twice the greatest distance from the axis; 0 without an axis
    double span = 0;      // from end to end along the axis; 0 without an axis
    std::optional<SelfMeeting> selfMeeting;
};

// Reads an envelope and what can be told of it; not found for a null id. Nothing in the drawing
// changes.
//
// axis   that the diameter is measured from; none: no diameter
// cost   O(n log n) for n vertices, for the question whether it meets itself
// fails  Failure with NoResult when the polyline cannot be read
Envelope ReadEnvelope(const AcDbObjectId& id, const std::optional<Axis>& axis);

}  // namespace product
