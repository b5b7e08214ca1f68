#include "StdAfx.h"
#include "EnvelopeAxis.h"

#include "Tolerances.h"
#include "TolerantCompare.h"

namespace {

constexpr const ACHAR* kMark = _T("QZENVELOPEAXIS");
constexpr short kMarkName = 1001;  // codes of extended data
constexpr short kMarkText = 1000;

struct SRbDeleter {
    void operator()(resbuf* pChain) const { acutRelRb(pChain); }
};

bool IsMarked(const AcDbPolyline& polyline) {
    const std::unique_ptr<resbuf, SRbDeleter> chain(polyline.xData(kMark));
    return chain != nullptr;
}

bool GetClosingEdge(const AcDbPolyline& polyline, AcGePoint3d& pt, AcGeVector3d& dir) {
    const unsigned int nCount = polyline.numVerts();
    AcGePoint3d first;
    AcGePoint3d last;
    if (nCount < 3 || polyline.getPointAt(0, first) != Acad::eOk ||
        polyline.getPointAt(nCount - 1, last) != Acad::eOk) {
        return false;
    }
    const AcGeVector3d along = last - first;
    if (along.length() <= 0.0) {
        return false;
    }
    pt = first;
    dir = along.normal();
    return true;
}

}  // namespace

bool MarkClosingEdgeAsAxis(AcDbPolyline& polyline) {
    // What it gives back differs between releases; the data is refused without the name.
    static_cast<void>(acdbRegApp(kMark));
    CString strName(kMark);
    CString strText(_T("closing edge"));
    resbuf text = {};
    text.restype = kMarkText;
    text.resval.rstring = strText.GetBuffer();
    resbuf name = {};
    name.restype = kMarkName;
    name.resval.rstring = strName.GetBuffer();
    name.rbnext = &text;
    return polyline.setXData(&name) == Acad::eOk;
}

bool GetMarkedAxis(const AcDbObjectId& id, AcGePoint3d& pt, AcGeVector3d& dir) {
    const AcDbObjectPointer<AcDbPolyline> pPolyline(id, AcDb::kForRead);
    return pPolyline.openStatus() == Acad::eOk && IsMarked(*pPolyline.object()) &&
           GetClosingEdge(*pPolyline.object(), pt, dir);
}

bool GetEnvelopeAxis(const AcDbObjectId& id, AcGePoint3d& pt, AcGeVector3d& dir) {
    if (GetMarkedAxis(id, pt, dir)) {
        return true;
    }
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
            dir.set(1.0, 0.0, 0.0);
        }
    }
    return bFound;
}
