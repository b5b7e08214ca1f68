// A cubic spline through given points.
#pragma once

#include "gedblar.h"
#include "gept3dar.h"

namespace host {

// Control points and clamped knots of the C2 cubic through points (at least two, neighbours apart)
// at chord-length parameters. A tangent is a unit vector, or zero for curvature 0 at that end.
// O(n). Piegl and Tiller, The NURBS Book, 9.2.
// Both arrays are replaced.
void FitCubic(const AcGePoint3dArray& points, const AcGeVector3d& startTangent,
              const AcGeVector3d& endTangent, AcGeDoubleArray& knots,  // both arrays are replaced
              AcGePoint3dArray& controlPoints);

}  // namespace host
