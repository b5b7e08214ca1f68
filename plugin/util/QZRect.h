// An axis-aligned box. The engine's boxes are flat: z stays 0 unless a point brings another.
#pragma once

#include <afxwin.h>

#include "arxHeaders.h"

class AFX_EXT_CLASS CQZRect {
public:
    // An empty box, +-1e20: any point extends it. Planar boxes start with z = 0 in both corners.
    explicit CQZRect(bool bPlanar = true);
    // The box spanned by two points in any order.
    CQZRect(const AcGePoint3d& p, const AcGePoint3d& q);
    CQZRect(const CQZRect&) = default;
    CQZRect& operator=(const CQZRect&) = default;
    virtual ~CQZRect();

    // Grows the box so that it holds the point, axis by axis.
    void Extend(const AcGePoint3d& pt) {
        ExtendAxis(min.x, max.x, pt.x);
        ExtendAxis(min.y, max.y, pt.y);
        ExtendAxis(min.z, max.z, pt.z);
    }
    // Grows the box so that it holds the other; an empty one adds nothing.
    void Extend(const CQZRect& other);

    // Holds at least one point.
    bool IsValid() const { return min.x <= max.x && min.y <= max.y && min.z <= max.z; }

    // Sizes in drawing units, 0 for an empty box.
    double GetWidth() const { return max.x > min.x ? max.x - min.x : 0.0; }
    double GetHeight() const { return max.y > min.y ? max.y - min.y : 0.0; }

    // Moves both bounds of an axis outwards by d (inwards when negative). An amount below minus
    // half the size counts as that: the box shrinks to its middle and never turns inside out.
    void WidenHorizontally(double d) { WidenAxis(min.x, max.x, d); }
    void WidenVertically(double d) { WidenAxis(min.y, max.y, d); }
    void Widen(double d) {
        WidenHorizontally(d);
        WidenVertically(d);
    }

    AcGePoint3d GetLeftMiddle() const;
    AcGePoint3d GetRightMiddle() const;
    AcGePoint3d GetTopMiddle() const;
    AcGePoint3d GetBottomMiddle() const;

    // Both boxes are valid and the corners of inner lie in this box widened by tol, each within
    // another 1e-6. In x and y; z is not looked at.
    bool Contains(const CQZRect& inner, double tol) const;

    // Both boxes are valid and on each axis a bound of one lies strictly inside the other's
    // interval, other widened by d first. So boxes that touch do not overlap, nor do equal
    // intervals. z counts only when a box is not flat.
    bool Overlaps(const CQZRect& other, double d) const;

    AcGePoint3d min;
    AcGePoint3d max;

private:
    static void ExtendAxis(double& dMin, double& dMax, double d) {
        if (dMin > d) {
            dMin = d;
        }
        if (dMax < d) {
            dMax = d;
        }
    }
    static void WidenAxis(double& dMin, double& dMax, double d) {
        const double half = (dMax - dMin) / 2;
        const double amount = d < -half ? -half : d;
        dMin -= amount;
        dMax += amount;
    }
};
