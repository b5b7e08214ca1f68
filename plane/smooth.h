// Curves that are neither lines nor arcs: pieces of ellipses and splines, exactly as they are
// given, and as tangent arcs within a tolerance.
#pragma once

#include <cstddef>
#include <variant>
#include <vector>

#include "plane/curve.h"

namespace plane {

// centre + u cos t + v sin t for t from `from` to `to`. The two need not be at right angles: so a
// circle looks after any map of the plane, or seen aslant. A full one has to - from = 2 pi.
struct EllipsePiece {
    Point centre;
    Vector u, v;
    double from = 0.0, to = 0.0;
};

// A non-uniform rational B-spline. `weights` is empty when all are 1.
struct Nurbs {
    int degree = 3;
    std::vector<double> knots;
    std::vector<Point> points;
    std::vector<double> weights;
};

using SmoothCurve = std::variant<EllipsePiece, Nurbs>;

// True when the numbers are finite and fit together: for a spline knots that do not fall, degree +
// 1 more of them than points, a range of its parameter, positive weights.
bool IsSound(const SmoothCurve& curve);

// The range of the parameter, of a sound curve.
double StartOf(const SmoothCurve& curve);
double EndOf(const SmoothCurve& curve);

// The point at a parameter within the range. O(degree^2).
Point PointAt(const SmoothCurve& curve, double t);

// The derivative by the parameter, looking back from the end of the range, else forward: where a
// spline has a corner the direction is the one behind it.
Vector DerivativeAt(const SmoothCurve& curve, double t);

// A smooth curve as arcs and lines.
struct TangentArcs {
    std::vector<Curve> curves;
    // False when the most that were allowed were not enough: then the worst stretch is far off.
    bool isWithin = true;
};

// Follows a curve by pairs of arcs that touch each other and the curve at both ends of a stretch
// (biarcs with equal arms, Bolton 1975); a stretch that is left by more than the tolerance is
// halved. Corners of splines stay corners; an ellipse seen edge-on is the line that it covers.
//
// tol     greatest distance, drawing units; compared at fifteen places of each stretch
// most    arcs at most
// result  from the curve's first point to its last, each arc starting where the one before ends; no
//         curves for a curve that is not sound. Ends of stretches are points of the curve.
// cost    O(n) for n arcs; n grows with the cube root of 1 / tol
TangentArcs TangentArcsOf(const SmoothCurve& curve, double tol, std::size_t most = 20000);

}  // namespace plane
