#include "StdAfx.h"

#include "HiddenPoint.h"

#include <cmath>

#include "SideOrder.h"
#include "TolerantCompare.h"

namespace {

bool IsStrictlyBetween(double d, double a, double b) {
    return (a < d && d < b) || (b < d && d < a);
}

// How a segment runs: level, upright, or at an angle.
enum class E_Run { Level, Upright, Oblique };

E_Run GetRun(const AcGePoint3d& start, const AcGePoint3d& end, double tol) {
    if (IsEqualValue(start.y, end.y, tol)) {
        return E_Run::Level;
    }
    return IsEqualValue(start.x, end.x, tol) ? E_Run::Upright : E_Run::Oblique;
}

// 1 to the left of the line from start to end, -1 to the right, 0 on it.
int GetSideOfLine(const AcGePoint3d& pt, const AcGePoint3d& start, const AcGePoint3d& end,
                  double tol) {
    const double cross =
        (end.x - start.x) * (pt.y - start.y) - (pt.x - start.x) * (end.y - start.y);
    if (std::fabs(cross) < tol) {
        return 0;
    }
    return cross > 0.0 ? 1 : -1;
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

bool IsBehindSegment(const AcGePoint3d& pt, const AcGePoint3d& start, const AcGePoint3d& end,
                     E_RemoveLine_Dir dir, const AcGeTol& tolPoint, const AcGeTol& tolLine) {
    const bool bVertical = IsVerticalSide(dir);
    const double tol = tolPoint.equalPoint();
    const double own = bVertical ? pt.x : pt.y;
    const double from = bVertical ? start.x : start.y;
    const double to = bVertical ? end.x : end.y;
    if (!IsStrictlyBetween(own, from, to) || IsEqualValue(own, from, tol) ||
        IsEqualValue(own, to, tol)) {
        return false;
    }
    const E_Run run = GetRun(start, end, tolLine.equalPoint());
    if (run == E_Run::Oblique) {
        const int side = GetSideOfLine(pt, start, end, tol);
        switch (dir) {
            case E_Dir_Bottom:
            case E_Dir_Left:
                return side == 1;
            case E_Dir_Top:
            case E_Dir_Right:
                return side == -1;
            default:
                return false;
        }
    }
    if (run != (bVertical ? E_Run::Level : E_Run::Upright)) {
        return false;
    }
    switch (dir) {
        case E_Dir_Bottom:
            return IsGreaterValue(pt.y, start.y, tol);
        case E_Dir_Top:
            return IsLessValue(pt.y, start.y, tol);
        case E_Dir_Right:
            return IsLessValue(pt.x, start.x, tol);
        case E_Dir_Left:
            return IsGreaterValue(pt.x, start.x, tol);
        default:
            return false;
    }
}
