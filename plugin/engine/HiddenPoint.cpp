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
    const SSideView view(dir);
    if (!IsStrictlyBetween(view.GetAcross(pt), view.GetAcross(start), view.GetAcross(end))) {
        return false;
    }
    const AcGeVector3d reach =
        view.GetStep(view.m_bVertical ? extents.GetHeight() : extents.GetWidth());
    AcGePoint3d met;
    if (!AcGeLineSeg3d(start, end).intersectWith(AcGeLineSeg3d(pt - reach, pt + reach), met, tol)) {
        return false;
    }
    const double place = view.GetTowards(met);
    const double own = view.GetTowards(pt);
    return IsEqualValue(place, own, tol.equalPoint()) || place > own;
}

bool IsBehindSegment(const AcGePoint3d& pt, const AcGePoint3d& start, const AcGePoint3d& end,
                     E_RemoveLine_Dir dir, const AcGeTol& tolPoint, const AcGeTol& tolLine) {
    if (dir == E_Dir_None) {
        return false;
    }
    const SSideView view(dir);
    const double tol = tolPoint.equalPoint();
    const double own = view.GetAcross(pt);
    const double from = view.GetAcross(start);
    const double to = view.GetAcross(end);
    if (!IsStrictlyBetween(own, from, to) || IsEqualValue(own, from, tol) ||
        IsEqualValue(own, to, tol)) {
        return false;
    }
    const E_Run run = GetRun(start, end, tolLine.equalPoint());
    if (run == E_Run::Oblique) {
        const int side = GetSideOfLine(pt, start, end, tol);
        return side == (view.m_dSign > 0.0 ? -1 : 1);
    }
    if (run != (view.m_bVertical ? E_Run::Level : E_Run::Upright)) {
        return false;
    }
    // Not by what is towards the viewer: without a tolerance equal values count as less, on either
    // side of 0.
    const double height = view.m_dSign * view.GetTowards(pt);
    const double other = view.m_dSign * view.GetTowards(start);
    return view.m_dSign > 0.0 ? IsLessValue(height, other, tol)
                              : IsGreaterValue(height, other, tol);
}
