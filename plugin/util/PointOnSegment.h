#pragma once

#include "arxHeaders.h"

// Whether pt lies on the bounded segment. A point that equals an end within tol gives bEndsCount;
// otherwise it must be on the segment (AcGeLinearEnt3d::isOn) and between its ends.
//
// Neither depends on what isOn makes of points within the tolerance past an end, about which hosts
// need not agree.
bool IsPointOnSegment(const AcGeLineSeg3d& segment, const AcGePoint3d& pt, bool bEndsCount,
                      const AcGeTol& tol);

// A foot that lies farther past an end is past it, in drawing units; rounding stays below.
constexpr double kBeyondEnd = 1e-10;

// Whether pt lies on the segment with its ends: isOn, and the foot of the perpendicular not past an
// end. A segment without length leaves it to isOn.
inline bool IsOnBoundedSegment(const AcGeLineSeg3d& segment, const AcGePoint3d& pt,
                               const AcGeTol& tol) {
    if (!segment.isOn(pt, tol)) {
        return false;
    }
    const AcGeVector3d direction = segment.endPoint() - segment.startPoint();
    const double dSquare = direction.lengthSqrd();
    if (dSquare == 0.0) {
        return true;
    }
    const double dLength = direction.length();
    const double dAlong = (pt - segment.startPoint()).dotProduct(direction) / dSquare * dLength;
    return dAlong >= -kBeyondEnd && dAlong <= dLength + kBeyondEnd;
}
