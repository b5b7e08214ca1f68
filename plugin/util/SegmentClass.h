// How two segments lie to each other, by absolute slopes.
#pragma once

#include "arxHeaders.h"

enum E_SegmentClass { E_Segment_Collinear = 0, E_Segment_Parallel = 1, E_Segment_NotParallel = 2 };

// Classifies segment a-b against p-q. tol (drawing units, strict) decides what is vertical and
// whether p stands straight above a.
//
// Slopes are compared in absolute value, so mirror-image slopes count as parallel, and two segments
// that cross count as collinear when they start at the same x. A segment of length zero p-q has no
// slope and is parallel to nothing that is not vertical.
E_SegmentClass ClassifySegments(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& p,
                                const AcGePoint3d& q, double tol);
