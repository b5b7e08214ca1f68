#pragma once

#include "arxHeaders.h"

// Whether pt lies on the bounded segment. A point that equals an end within tol gives bEndsCount;
// otherwise it must be on the segment (AcGeLinearEnt3d::isOn) and between its ends.
bool IsPointOnSegment(const AcGeLineSeg3d& segment, const AcGePoint3d& pt, bool bEndsCount,
                      const AcGeTol& tol);
