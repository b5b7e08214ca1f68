// Affine maps of the plane.
#pragma once

#include "gepnt2d.h"

// Columns are images of the axes and of the origin: p' = M * p.
class AcGeMatrix2d {
public:
    double entry[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

    static const AcGeMatrix2d kIdentity;

    // row and column from 0
    double operator()(unsigned int row, unsigned int col) const { return entry[row][col]; }
    double& operator()(unsigned int row, unsigned int col) { return entry[row][col]; }

    AcGeMatrix2d& setToIdentity() { return *this = AcGeMatrix2d(); }
    // Set this matrix, or make one: a move, a turn counter-clockwise in radians, a scaling from a
    // point.
    AcGeMatrix2d& setToTranslation(const AcGeVector2d& v);
    AcGeMatrix2d& setToRotation(double angle, const AcGePoint2d& centre = AcGePoint2d::kOrigin);
    AcGeMatrix2d& setToScaling(double factor, const AcGePoint2d& centre = AcGePoint2d::kOrigin);
    static AcGeMatrix2d translation(const AcGeVector2d& v);
    static AcGeMatrix2d rotation(double angle, const AcGePoint2d& centre = AcGePoint2d::kOrigin);
    static AcGeMatrix2d scaling(double factor, const AcGePoint2d& centre = AcGePoint2d::kOrigin);

    AcGeMatrix2d operator*(const AcGeMatrix2d& m) const;  // this one acts last
    // left acts last
    AcGeMatrix2d& preMultBy(const AcGeMatrix2d& left) { return *this = left * *this; }
    AcGeMatrix2d& postMultBy(const AcGeMatrix2d& right) { return *this = *this * right; }
    AcGeVector2d operator*(const AcGeVector2d& v) const;  // vectors do not move
    AcGePoint2d operator*(const AcGePoint2d& p) const;
    double det() const;  // of the 2 by 2 part: area's factor
    // Of a singular matrix: the identity.
    AcGeMatrix2d inverse() const;
    // every entry within equalVector
    bool isEqualTo(const AcGeMatrix2d& m, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeMatrix2d& m) const { return isEqualTo(m); }
    bool operator!=(const AcGeMatrix2d& m) const { return !isEqualTo(m); }
};
