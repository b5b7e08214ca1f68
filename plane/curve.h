// A line or a circular arc in the plane, and what can be asked of one alone.
//
// Everything here stays accurate for arcs that are nearly lines (radius a million times the chord),
// because such outlines occur: where the far-away centre would cost digits, the formula goes by the
// chord and the bulge instead.
//
// Words
//   bulge    tan(sweep / 4), counter-clockwise positive (DXF reference, LWPOLYLINE); 0 is a line.
//            An arc with a positive bulge lies to the right of its chord.
//   sweep    the angle that an arc turns through, radians, with the bulge's sign, below a full turn
//   share    how far along a curve a place lies, of its length: 0 at the start, 1 at the end
#pragma once

#include <array>

#include "plane/box.h"
#include "plane/point.h"

namespace plane {

struct Curve {
    Point from, to;
    double bulge = 0.0;
    // Of arcs only. Kept as the drawing gave them where it gives them, not computed again from the
    // ends: an outline's arcs are then the drawing's own to the last digit.
    Point centre;
    double radius = 0.0;

    bool IsArc() const { return bulge != 0.0; }
    Vector Chord() const { return to - from; }
    // Half the swept angle with the bulge's sign, in (-pi, pi).
    double HalfAngle() const { return 2.0 * std::atan(bulge); }
    double Sweep() const { return 4.0 * std::atan(bulge); }
    double Length() const;
    // How far the arc rises above its chord; 0 of a line.
    double Sagitta() const;
    // The middle of the curve, by length.
    Point Middle() const;
    // Unit direction of travel at the start and at the end; the zero vector when both are one
    // point.
    Vector StartDirection() const;
    Vector EndDirection() const;
    // The same way back.
    Curve Reversed() const;
};

// --- Making curves. No check of any kind: ends that are one point make a curve without a
// direction.

Curve MakeLine(const Point& from, const Point& to);

// A line when bulge is 0, else the arc, its centre and radius computed from the bulge.
Curve MakeCurve(const Point& from, const Point& to, double bulge);

// The arc from one point to the other on a given circle, turning left (counter-clockwise) or right.
// The points are taken to lie on the circle; nothing is moved. Equal ends make a line without
// length: halve circles instead.
Curve MakeArcOnCircle(const Point& from, const Point& to, const Point& centre, double radius,
                      bool turnsLeft);

// The arc about a centre from an angle on, through a sweep of less than a full turn.
Curve MakeArc(const Point& centre, double radius, double startAngle, double sweep);

// A full circle as two half circles, counter-clockwise from the given angle on; their common ends
// are equal to the last digit.
std::array<Curve, 2> HalvesOfCircle(const Point& centre, double radius, double startAngle = 0.0);

// --- Places along a curve.

// The point at a share of the length; the ends themselves at 0 and 1.
Point PointAt(const Curve& curve, double share);

// The share of the curve's point that is nearest to p on its line or circle, also beyond the ends:
// below 0 before the start, above 1 behind the end, for arcs as far as half of what they leave out.
// 0 for a curve without length.
double ShareOf(const Curve& curve, const Point& p);

// The part of a curve between two of its points, in its direction, p before q; centre and radius
// stay. Points that lie a little off the curve stay what they are.
Curve PartOf(const Curve& curve, const Point& p, const Point& q);

// Unit direction of travel at the point of the line or circle that is nearest to p.
Vector DirectionAt(const Curve& curve, const Point& p);

// --- Distances and extents.

// The distance of a point from the curve, ends included.
double Distance(const Curve& curve, const Point& p);

// The point of the curve that is nearest to p, ends included; at the centre of an arc the start.
Point NearestPoint(const Curve& curve, const Point& p);

// The signed distance of a point from an arc's full circle, positive outside. Accurate also when
// the radius is a million times what the distance is compared with.
double CircleDistance(const Curve& arc, const Point& p);

// True for a point of an arc's full circle that lies on the arc, ends included. Without tolerance:
// near an end rounding decides.
bool IsOnArc(const Curve& arc, const Point& p);

// The point of the curve that lies farthest in a unit direction.
Point Farthest(const Curve& curve, const Vector& direction);

// True to rounding: an arc's box reaches beyond its ends where the arc does.
Box BoxOf(const Curve& curve);

// --- Integrals along a curve. Summed over a counter-clockwise ring, area is the area inside,
// moment the area's moment about the x axis (area times the height of its centroid); length and
// lengthMoment are those of the outline itself. Exact for arcs; small angles go by power series.
struct Integrals {
    double area = 0.0;
    double moment = 0.0;
    double length = 0.0;
    double lengthMoment = 0.0;
};
Integrals Integrate(const Curve& curve);

}  // namespace plane
