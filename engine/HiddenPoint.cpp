#include "StdAfx.h"

#include "HiddenPoint.h"

#include "SideOrder.h"
#include "TolerantCompare.h"

namespace {

bool IsStrictlyBetween(double d, double a, double b) {
    return (a < d && d < b) || (b < d && d < a);
}

}  // namespace

bool IsHiddenBySegment(const AcGePoint3d& pt, const AcGePoint3d& start, const AcGePoint3d& end,
                       E_RemoveLine_Dir dir, const CQZRect& extents, const AcGeTol& tol) {
    const bool bVertical = IsVerticalSide(dir);
    if (bVertical ? !IsStrictlyBetween(pt.x, start.x, end.x)
                  : !IsStrictlyBetween(pt.y, start.y, end.y)) {
        return false;
    }
    const AcGeVector3d reach = bVertical ? AcGeVector3d(0, extents.GetHeight(), 0)
                                         : AcGeVector3d(extents.GetWidth(), 0, 0);
    AcGePoint3d met;
    if (!AcGeLineSeg3d(start, end).intersectWith(AcGeLineSeg3d(pt - reach, pt + reach), met, tol)) {
        return false;
    }
    const double place = bVertical ? met.y : met.x;
    const double own = bVertical ? pt.y : pt.x;
    if (IsEqualValue(place, own, tol.equalPoint())) {
        return true;
    }
    return dir == E_Dir_Top || dir == E_Dir_Right ? place > own : own > place;
}
