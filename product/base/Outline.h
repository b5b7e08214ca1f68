// A ring of straight and circular edges in the plane, as an envelope is: its size and its length.
#pragma once

#include <vector>

#include "plane/ring.h"

namespace product {

struct Point {
    double x = 0, y = 0;
};

// A corner and the bulge of the edge that leaves it: tan(sweep / 4), counter-clockwise positive
// (DXF reference, LWPOLYLINE); 0 is a straight edge.
struct Vertex {
    double x = 0, y = 0, bulge = 0;
};

// The rectangle that holds what was added; empty at first.
struct Box {
    double minX = 1e300, minY = 1e300, maxX = -1e300, maxY = -1e300;

    bool IsEmpty() const { return minX > maxX || minY > maxY; }
    double Width() const { return maxX - minX; }
    double Height() const { return maxY - minY; }
    void Add(Point p);
    void Add(const Box& other);
    // Whether `inner` lies inside or on the border; no tolerance.
    bool Contains(const Box& inner) const;
    // Whether the two have a point in common; no tolerance.
    bool Meets(const Box& other) const;
};

// The circle of a bulged edge.
struct Circle {
    Point centre;
    double radius = 0;
};

// Sweep of a bulge in radians, signed: counter-clockwise positive.
double Sweep(double bulge);

// The circle on which the edge from `from` to `to` runs; from.bulge must not be 0 and the two must
// be apart. Formula: centre = chord midpoint + left normal * (1 - b²) / 4b * chord (DXF reference).
Circle CircleOf(const Vertex& from, Point to);

// Box of the closed ring, arcs included beyond their end points.
Box ExtentsOf(const std::vector<Vertex>& ring);

// Length of the closed ring, arcs as arcs.
double LengthOf(const std::vector<Vertex>& ring);

// Where a ring meets itself: the numbers are those of its edges, edge i running from vertex i to
// the next one.
using Meeting = plane::MeetingKind;
using SelfMeeting = plane::SelfMeeting;

// The edges of the closed ring, one for each vertex, as the plane geometry takes them.
std::vector<plane::Curve> EdgesOf(const std::vector<Vertex>& ring);

}  // namespace product
