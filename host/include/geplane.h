// Planes.
#pragma once

#include "geent3d.h"
#include "gelent3d.h"
#include "gemat3d.h"

// A flat surface with its own axes. uAxis and vAxis are unit vectors at right angles, the normal is
// uAxis x vAxis.
class AcGePlanarEnt : public AcGeEntity3d {
public:
    AcGePoint3d pointOnPlane() const { return m_origin; }  // the origin of its axes
    AcGeVector3d normal() const { return m_normal; }       // unit
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& uAxis, AcGeVector3d& vAxis) const;
    // a x + b y + c z + d = 0
    void getCoefficients(double& a, double& b, double& c, double& d) const;

    // The one common point of a line, ray or segment with the plane; see AcGeLinearEnt3d.
    bool intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& out,
                       const AcGeTol& tol = AcGeContext::gTol) const {
        return line.intersectWith(*this, out, tol);
    }
    AcGePoint3d closestPointTo(const AcGePoint3d& p) const;  // the foot of the perpendicular
    // either way round
    bool isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
    // parallel, and no farther apart than equalPoint
    bool isCoplanarTo(const AcGePlanarEnt& plane, const AcGeTol& tol = AcGeContext::gTol) const;

protected:
    AcGePlanarEnt(const AcGePoint3d& origin, const AcGeVector3d& normal);
    AcGePlanarEnt(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis);

    void apply(const AcGeMatrix3d& m) override;
    bool equals(const AcGeEntity3d& other, const AcGeTol& tol) const override;
    bool hasOn(const AcGePoint3d& p, const AcGeTol& tol) const override;
    double signedDistance(const AcGePoint3d& p) const;

    AcGePoint3d m_origin;
    AcGeVector3d m_uAxis, m_vAxis, m_normal;  // unit, at right angles
};

// A plane, without borders.
class AcGePlane : public AcGePlanarEnt {
public:
    AcGePlane();  // the XY plane
    // Axes by the arbitrary axis rule.
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal);
    // vAxis needs not be at right angles to uAxis; it is turned so within the plane of both.
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis);
    // Through three points, the middle one being the origin.
    AcGePlane(const AcGePoint3d& uPoint, const AcGePoint3d& origin, const AcGePoint3d& vPoint);

    static const AcGePlane kXYPlane;  // planes of the axes, through the origin
    static const AcGePlane kYZPlane;
    static const AcGePlane kZXPlane;

    AcGePlane& set(const AcGePoint3d& origin, const AcGeVector3d& normal) {
        return *this = AcGePlane(origin, normal);
    }
    AcGePlane& set(const AcGePoint3d& origin, const AcGeVector3d& uAxis,
                   const AcGeVector3d& vAxis) {
        return *this = AcGePlane(origin, uAxis, vAxis);
    }
    // Positive on the side of the normal.
    double signedDistanceTo(const AcGePoint3d& p) const { return signedDistance(p); }
    // The common line of two planes, through the point of it closest to this plane's origin; false,
    // line unchanged, when parallel.
    using AcGePlanarEnt::intersectWith;
    bool intersectWith(const AcGePlane& plane, AcGeLine3d& line,
                       const AcGeTol& tol = AcGeContext::gTol) const;

protected:
    AcGe::EntityId kind() const override { return AcGe::kPlane; }
    AcGeEntity3d* clone() const override { return new AcGePlane(*this); }
};
