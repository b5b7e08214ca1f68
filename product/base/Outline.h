// A ring of straight and circular edges in the plane, as an envelope is: its size and its length.
//
// The geometry itself is plane's; here are the words in which the programs' rooms speak of it.
// Everything is in drawing units, angles in radians; nothing here knows a drawing.
#pragma once

#include <vector>

#include "plane/ring.h"

namespace product {

using plane::Box;
using plane::Point;
using plane::Vector;

// A corner and the bulge of the edge that leaves it: tan(sweep / 4), counter-clockwise positive
// (DXF reference, LWPOLYLINE); 0 is a straight edge. Unlike plane's corner it is three plain
// numbers, as outlines stand in files and messages.
struct Vertex {
    double x = 0, y = 0, bulge = 0;
};

// The edges of a closed ring, one for each vertex, edge i running from vertex i to the next one.
std::vector<plane::Curve> EdgesOf(const std::vector<Vertex>& ring);

// Box of the closed ring, arcs included beyond their end points; empty without vertices. O(n).
Box ExtentsOf(const std::vector<Vertex>& ring);

// Length of the closed ring, arcs as arcs. O(n).
double LengthOf(const std::vector<Vertex>& ring);

// Where a ring meets itself: the numbers are those of its edges.
using Meeting = plane::MeetingKind;
using SelfMeeting = plane::SelfMeeting;

}  // namespace product
