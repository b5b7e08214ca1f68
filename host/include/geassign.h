// Views of the C interface's coordinate arrays (ads_point, double[3]) as points and vectors.
#pragma once

#include "gepnt2d.h"
#include "gepnt3d.h"

static_assert(sizeof(AcGePoint3d) == 3 * sizeof(double) &&
                  sizeof(AcGePoint2d) == 2 * sizeof(double),
              "points are nothing but their coordinates");

// The same memory under another type: writing through the reference changes the array.
// The first two, or all three, of the numbers.
inline AcGePoint2d& asPnt2d(const double* p) {
    return *reinterpret_cast<AcGePoint2d*>(const_cast<double*>(p));
}
inline AcGePoint3d& asPnt3d(const double* p) {  // three numbers
    return *reinterpret_cast<AcGePoint3d*>(const_cast<double*>(p));
}
inline AcGeVector2d& asVec2d(const double* p) {  // two numbers
    return *reinterpret_cast<AcGeVector2d*>(const_cast<double*>(p));
}
inline AcGeVector3d& asVec3d(const double* p) {  // three numbers
    return *reinterpret_cast<AcGeVector3d*>(const_cast<double*>(p));
}
// The way back: the object's own numbers.
inline double* asDblArray(const AcGePoint2d& p) { return const_cast<double*>(&p.x); }
inline double* asDblArray(const AcGePoint3d& p) { return const_cast<double*>(&p.x); }
inline double* asDblArray(const AcGeVector2d& v) { return const_cast<double*>(&v.x); }
inline double* asDblArray(const AcGeVector3d& v) { return const_cast<double*>(&v.x); }
