#include "StdAfx.h"

#include "SegmentClass.h"

#include "Tolerances.h"
#include "TolerantCompare.h"

namespace {

// 0/0 gives NaN, which equals nothing: a segment of length zero has no slope.
double GetSlope(const AcGePoint3d& from, const AcGePoint3d& to) {
    return std::fabs((to.y - from.y) / (to.x - from.x));
}

}  // namespace

E_SegmentClass ClassifySegments(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& p,
                                const AcGePoint3d& q, double tol) {
    if (std::fabs(b.x - a.x) < tol) {
        if (!(std::fabs(p.x - q.x) < tol)) {
            return E_Segment_NotParallel;
        }
        return std::fabs(p.x - a.x) < tol ? E_Segment_Collinear : E_Segment_Parallel;
    }
    const double slope = GetSlope(a, b);
    if (!IsEqualValue(slope, GetSlope(p, q), kSlopeTol)) {
        return E_Segment_NotParallel;
    }
    if (!(std::fabs(p.x - a.x) < tol) && !IsEqualValue(slope, GetSlope(a, p), kSlopeTol)) {
        return E_Segment_Parallel;
    }
    return E_Segment_Collinear;
}
