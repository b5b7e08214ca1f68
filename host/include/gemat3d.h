// Affine maps of space.
#pragma once

#include "gepnt3d.h"

class AcGeLine3d;
class AcGePlane;

// Columns are images of the axes and of the origin: p' = M * p, rows and columns from 0.
class AcGeMatrix3d {
public:
    double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

    static const AcGeMatrix3d kIdentity;

    double operator()(unsigned int row, unsigned int col) const { return entry[row][col]; }
    double& operator()(unsigned int row, unsigned int col) { return entry[row][col]; }

    AcGeMatrix3d& setToIdentity() { return *this = AcGeMatrix3d(); }
    AcGeMatrix3d& setToTranslation(const AcGeVector3d& v);
    // Counter-clockwise as seen against axis (right-hand rule), radians; a zero axis does nothing.
    AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis,
                                const AcGePoint3d& centre = AcGePoint3d::kOrigin);
    // from a point, equally in all directions
    AcGeMatrix3d& setToScaling(double factor, const AcGePoint3d& centre = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToMirroring(const AcGePlane& plane);  // at a plane, a point or a line
    AcGeMatrix3d& setToMirroring(const AcGePoint3d& point);
    AcGeMatrix3d& setToMirroring(const AcGeLine3d& line);
    // The same as new matrices.
    static AcGeMatrix3d translation(const AcGeVector3d& v);
    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                 const AcGePoint3d& centre = AcGePoint3d::kOrigin);
    static AcGeMatrix3d scaling(double factor, const AcGePoint3d& centre = AcGePoint3d::kOrigin);
    static AcGeMatrix3d mirroring(const AcGePlane& plane);
    static AcGeMatrix3d mirroring(const AcGePoint3d& point);
    static AcGeMatrix3d mirroring(const AcGeLine3d& line);

    AcGeMatrix3d operator*(const AcGeMatrix3d& m) const;  // this one acts last
    AcGeMatrix3d& operator*=(const AcGeMatrix3d& m) { return *this = *this * m; }
    // left acts last
    AcGeMatrix3d& preMultBy(const AcGeMatrix3d& left) { return *this = left * *this; }
    AcGeMatrix3d& postMultBy(const AcGeMatrix3d& right) { return *this = *this * right; }
    AcGeMatrix3d& setToProduct(const AcGeMatrix3d& a, const AcGeMatrix3d& b) {
        return *this = a * b;
    }
    AcGePoint3d operator*(const AcGePoint3d& p) const;    // the point's image
    AcGeVector3d operator*(const AcGeVector3d& v) const;  // vectors do not move

    double det() const;  // of the 3 by 3 part: affine maps only
    bool isSingular(const AcGeTol& tol = AcGeContext::gTol) const;  // no way back
    // Of a singular matrix: the identity.
    AcGeMatrix3d inverse() const;
    AcGeMatrix3d& invert() { return *this = inverse(); }
    AcGeMatrix3d transpose() const;  // rows for columns

    // Uniform scale and right angles between the axes; relative to the scale, by equalVector.
    bool isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    // Right angles, any scales.
    bool isScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    // The length of the longest image of an axis.
    double scale() const;
    AcGeVector3d translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }
    // every entry within equalVector
    bool isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol = AcGeContext::gTol) const;
    bool operator==(const AcGeMatrix3d& m) const { return isEqualTo(m); }
    bool operator!=(const AcGeMatrix3d& m) const { return !isEqualTo(m); }

    // The columns themselves.
    AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& x,
                                 const AcGeVector3d& y, const AcGeVector3d& z);
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& x, AcGeVector3d& y,
                        AcGeVector3d& z) const;
    // Maps one coordinate system on another.
    AcGeMatrix3d& setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                     const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                     const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                     const AcGeVector3d& toY, const AcGeVector3d& toZ);

    // Object coordinates to world coordinates and back for an extrusion direction, by the arbitrary
    // axis rule (DXF reference): x axis = Y x n when |n.x| and |n.y| are below 1/64, else Z x n.
    static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
    static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal);
    static AcGeMatrix3d planeToWorld(const AcGePlane& plane);
    static AcGeMatrix3d worldToPlane(const AcGePlane& plane);
};
