// Numeric work on curves that are known only by their points and derivatives.
#pragma once

#include <functional>

#include "gedblar.h"
#include "gepnt3d.h"
#include "gept3dar.h"

namespace host {

// The point at a parameter, and its first count (0..2) derivatives.
using CurveEval = std::function<AcGePoint3d(double param, int count, AcGeVector3d* derivatives)>;

// Length of a smooth piece, to about 1e-11 of itself: Gauss-Legendre with 12 nodes, halved until a
// whole and its halves agree.
double SmoothLength(const CurveEval& curve, double from, double to);  // from <= to

// The parameter in [breaks.first(), breaks.last()] of the point closest to p. Between two breaks
// the curve is smooth and is tried at samples + 1 places; every place that is nearer than its
// neighbours is refined by Newton's method within them. Two closest points: the lower parameter.
double NearestParam(const CurveEval& curve, const AcGeDoubleArray& breaks, int samples,
                    const AcGePoint3d& p);

// Appends what lies behind from up to to, halving until the chord is within eps of the curve.
// sixteen halvings at most
void AppendByChord(const CurveEval& curve, double from, double to, double eps,
                   AcGePoint3dArray& pts, AcGeDoubleArray& params);  // sixteen halvings at most

}  // namespace host
