#include "StdAfx.h"
#include "EnvelopeAxis.h"

#include "Tolerances.h"
#include "TolerantCompare.h"

bool GetEnvelopeAxisPoint(const AcDbObjectId& id, AcGePoint3d& pt) {
    const AcDbObjectPointer<AcDbPolyline> pPolyline(id, AcDb::kForRead);
    if (pPolyline.openStatus() != Acad::eOk) {
        return false;
    }
    const unsigned int nCount = pPolyline->numVerts();
    bool bFound = false;
    double dLongest = 0.0;
    for (unsigned int i = 0; i < nCount; ++i) {
        AcGePoint3d start;
        AcGePoint3d end;
        if (pPolyline->getPointAt(i, start) != Acad::eOk ||
            pPolyline->getPointAt((i + 1) % nCount, end) != Acad::eOk ||
            !IsEqualValue(start.y, end.y, kHorizontalTol)) {
            continue;
        }
        const double dLength = start.distanceTo(end);
        if (!bFound || dLength > dLongest) {
            bFound = true;
            dLongest = dLength;
            // Of the closing edge the ring's first vertex, which is where it ends.
            pt = i + 1 == nCount ? end : start;
        }
    }
    return bFound;
}
