#include "StdAfx.h"

#include "QZRect.h"

#include "Tolerances.h"
#include "TolerantCompare.h"

namespace {

// Beyond every drawing; an empty box is one turned inside out by it.
constexpr double kFarAway = 1e20;

bool IsStrictlyInside(double d, double dMin, double dMax) { return dMin < d && d < dMax; }

bool IntervalsOverlap(double aMin, double aMax, double bMin, double bMax) {
    return IsStrictlyInside(aMin, bMin, bMax) || IsStrictlyInside(bMin, aMin, aMax) ||
           IsStrictlyInside(aMax, bMin, bMax) || IsStrictlyInside(bMax, aMin, aMax);
}

bool IsInInterval(double d, double dMin, double dMax) {
    return IsAtOrAboveValue(d, dMin, kCornerTol) && IsAtOrBelowValue(d, dMax, kCornerTol);
}

double GetMiddle(double a, double b) { return a / 2 + b / 2; }

}  // namespace

CQZRect::CQZRect(bool bPlanar) {
    const double z = bPlanar ? 0.0 : kFarAway;
    min.set(kFarAway, kFarAway, z);
    max.set(-kFarAway, -kFarAway, -z);
}

// Not by initialisers: min(p) and max(p) would be calls of the macros of windows.h.
CQZRect::CQZRect(const AcGePoint3d& p, const AcGePoint3d& q) {
    min = p;
    max = p;
    Extend(q);
}

CQZRect::~CQZRect() = default;

void CQZRect::Extend(const CQZRect& other) {
    if (other.IsValid()) {
        Extend(other.min);
        Extend(other.max);
    }
}

AcGePoint3d CQZRect::GetLeftMiddle() const {
    return AcGePoint3d(min.x, GetMiddle(min.y, max.y), GetMiddle(min.z, max.z));
}

AcGePoint3d CQZRect::GetRightMiddle() const {
    return AcGePoint3d(max.x, GetMiddle(min.y, max.y), GetMiddle(min.z, max.z));
}

AcGePoint3d CQZRect::GetTopMiddle() const {
    return AcGePoint3d(GetMiddle(min.x, max.x), max.y, GetMiddle(min.z, max.z));
}

AcGePoint3d CQZRect::GetBottomMiddle() const {
    return AcGePoint3d(GetMiddle(min.x, max.x), min.y, GetMiddle(min.z, max.z));
}

bool CQZRect::Contains(const CQZRect& inner, double tol) const {
    if (!IsValid() || !inner.IsValid()) {
        return false;
    }
    CQZRect outer(*this);
    outer.Widen(tol);
    return IsInInterval(inner.min.x, outer.min.x, outer.max.x) &&
           IsInInterval(inner.min.y, outer.min.y, outer.max.y) &&
           IsInInterval(inner.max.x, outer.min.x, outer.max.x) &&
           IsInInterval(inner.max.y, outer.min.y, outer.max.y);
}

bool CQZRect::Overlaps(const CQZRect& other, double d) const {
    if (!IsValid() || !other.IsValid()) {
        return false;
    }
    CQZRect b(other);
    b.Widen(d);
    const bool bFlat = min.z == max.z && b.min.z == b.max.z;
    return IntervalsOverlap(min.x, max.x, b.min.x, b.max.x) &&
           IntervalsOverlap(min.y, max.y, b.min.y, b.max.y) &&
           (bFlat || IntervalsOverlap(min.z, max.z, b.min.z, b.max.z));
}
