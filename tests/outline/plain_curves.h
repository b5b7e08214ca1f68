// Lines and arcs for the plain form of the rules: textbook formulas, arcs by their angles.
#pragma once

#include <vector>

#include "plain_law.h"

namespace plain {

struct Extent {
    P low{1e300, 1e300}, high{-1e300, -1e300};
};

double Apart(P a, P b);
Curve MakeLine(P a, P b);
// sign -1 mirrors on the axis.
Curve MakeCurve(const plane::Curve& curve, double sign);
// The parts with r >= 0.
std::vector<Curve> AboveAxis(const Curve& c);

double LengthOf(const Curve& c);
Extent ExtentOf(const Curve& c);
double WidthOf(const Curve& c);
P At(const Curve& c, double share);
P DirectionAt(const Curve& c, double share);
P Inward(const Curve& c, bool isStart);
P NearestOn(const Curve& c, P p);

// Whether all of the other lies on the line or circle of the first; of two: of the longer.
bool IsOnCarrier(const Curve& c, const Curve& other, double tol);
bool OnOneCarrier(const Curve& a, const Curve& b, double tol);
bool ComeTogether(const Curve& a, const Curve& b, double tol);
// Crossings, and ends of one that lie within tol of the other.
std::vector<P> Meetings(const Curve& a, const Curve& b, double tol);
// How far along the curve's line or circle a point of it lies from a start in a direction.
double AlongFrom(const Curve& c, P start, P direction, P p);

// The greatest r over the range of s; -1e300 when it does not reach it.
double HighestOver(const Curve& c, double lo, double hi);
// The same above the line from a to b, strictly between.
double HighestOverLine(const Curve& c, P a, P b);
std::vector<double> CrossingsAtHeight(const Curve& c, double r);

// How the curve goes on behind an end, as far as reach or its upright tangent.
P Ahead(const Curve& c, P end, P inward, double reach);
Curve Continued(const Curve& c, P end, P inward, double reach, double sign);
Curve PartUpTo(const Curve& c, P p);
// What of c lies farther from the start than `back` along the carrier.
std::vector<Curve> BehindAlong(const Curve& c, const Curve& carrier, P start, P direction,
                               double back, double tiny);

}  // namespace plain
