// Comparisons of coordinates within an absolute tolerance in drawing units. All are strict: a
// difference that is the tolerance itself already counts. A NaN is equal to nothing.
#pragma once

#include <cmath>

#include "arxHeaders.h"

// True when tol > |a - b|.
inline bool IsEqualValue(double a, double b, double tol) { return tol > std::fabs(a - b); }

// 0 when equal within tol, else 1 when a > b, else -1.
inline int CompareValue(double a, double b, double tol) {
    if (IsEqualValue(a, b, tol)) {
        return 0;
    }
    return a > b ? 1 : -1;
}

// a exceeds b by the tolerance or more.
inline bool IsGreaterValue(double a, double b, double tol) { return CompareValue(a, b, tol) == 1; }

// a falls short of b by the tolerance or more.
inline bool IsLessValue(double a, double b, double tol) { return CompareValue(a, b, tol) == -1; }

// Greater or equal, less or equal, in the sense above.
inline bool IsAtOrAboveValue(double a, double b, double tol) {
    return CompareValue(a, b, tol) >= 0;
}
inline bool IsAtOrBelowValue(double a, double b, double tol) {
    return CompareValue(a, b, tol) <= 0;
}

// The halves are added, not the sum halved: coordinates near the range's end must not overflow, and
// the last bit decides which line hides which.
inline AcGePoint3d GetMidPoint(const AcGePoint3d& p, const AcGePoint3d& q) {
    return AcGePoint3d(p.x / 2 + q.x / 2, p.y / 2 + q.y / 2, p.z / 2 + q.z / 2);
}
