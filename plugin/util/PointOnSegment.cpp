#include "StdAfx.h"

#include "PointOnSegment.h"

bool IsPointOnSegment(const AcGeLineSeg3d& segment, const AcGePoint3d& pt, bool bEndsCount,
                      const AcGeTol& tol) {
    const AcGePoint3d start = segment.startPoint();
    const AcGePoint3d end = segment.endPoint();
    if (pt.isEqualTo(start, tol) || pt.isEqualTo(end, tol)) {
        return bEndsCount;
    }
    return segment.isOn(pt, tol) && (start - pt).dotProduct(end - pt) < 0.0;
}
