#include "StdAfx.h"

#include "ThinPoints.h"

#include "TolerantCompare.h"
#include "plane/point.h"

namespace {

constexpr double kDegPerRadian = 180.0 / plane::kHalfTurn;

// Direction of a step in (-90, 90]; NaN for a step of length zero.
double GetDirectionDeg(const AcGePoint3d& from, const AcGePoint3d& to) {
    return std::atan((to.y - from.y) / (to.x - from.x)) * kDegPerRadian;
}

bool BothNear(double a, double b, double value, double tol) {
    return IsEqualValue(std::fabs(a), value, tol) && IsEqualValue(std::fabs(b), value, tol);
}

bool GoesStraightOn(const AcGePoint3d& p, const AcGePoint3d& q, const AcGePoint3d& r,
                    double dTolDeg) {
    const double first = GetDirectionDeg(p, q);
    const double second = GetDirectionDeg(q, r);
    return IsEqualValue(first, second, dTolDeg) || BothNear(first, second, 90.0, dTolDeg) ||
           BothNear(first, second, 0.0, dTolDeg);
}

}  // namespace

void ThinPoints(AcGePoint3dArray& pts, double dTolDeg) {
    const int count = pts.length();
    if (count < 3) {
        return;
    }
    // A deletion leaves the first point of the three where it is, so one forward walk that writes
    // the kept points to the front does what erasing from the middle would.
    int kept = 1;  // pts[0 .. kept) are final but for pts[kept], the middle under test
    for (int next = 2; next < count; ++next) {
        if (!GoesStraightOn(pts[kept - 1], pts[kept], pts[next], dTolDeg)) {
            ++kept;
        }
        pts[kept] = pts[next];
    }
    pts.setLogicalLength(kept + 1);
}
