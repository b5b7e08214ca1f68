// Curves: what can be walked along from a start to an end.
#pragma once

#include "dbmain.h"
#include "gecurv3d.h"

// Common questions to curves. Points are WCS; lengths in drawing units. Parameters: line 0..length;
// arc its angles (end above start); circle 0..2 pi; ellipse its parameter angles; polyline 0..n for
// n segments, integers at the vertices; spline its knot range. Functions need an open for read.
//
// Lengths of lines and arcs are exact, of ellipses and splines numeric (relative error below 1e-9).
// Unbounded curves have no geometry object: eNotImplementedYet where an end or a length is asked.
class AcDbCurve : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbCurve);

    virtual bool isClosed() const;    // ends where it starts
    virtual bool isPeriodic() const;  // closed, and parameters go round
    // The range of the parameter.
    virtual Acad::ErrorStatus getStartParam(double& param) const;
    virtual Acad::ErrorStatus getEndParam(double& param) const;
    // The points at both ends of the range.
    virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;

    // eInvalidInput outside the range (for distances: below 0 or beyond the length), within 1e-9.
    virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
    // eInvalidInput when the point is farther than 1e-6 drawing units from the curve.
    virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
    // Length from the start on, and the way back. O(1) for lines and arcs, a quadrature for the
    // rest.
    virtual Acad::ErrorStatus getDistAtParam(double param, double& dist) const;
    virtual Acad::ErrorStatus getParamAtDist(double dist, double& param) const;
    // The same by a point of the curve; see getParamAtPoint.
    virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const;
    virtual Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const;
    // By the parameter: its length is not 1.
    virtual Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& derivative) const;

    // Nearest point of the curve; with extend, of its continuation where that is a line or circle.
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                                bool extend = false) const;

    // Area between a planar curve and the chord that closes it; eNotApplicable for others.
    virtual Acad::ErrorStatus getArea(double& area) const;

    // Turns the direction round; eNotApplicable where the class cannot.
    virtual Acad::ErrorStatus reverseCurve();

    // The geometry as a new object, the caller's. eNotImplementedYet for polylines of more than one
    // segment, whose geometry would be a composite.
    virtual Acad::ErrorStatus getAcGeCurve(AcGeCurve3d*& curve,
                                           const AcGeTol& tol = AcGeContext::gTol) const;

protected:
    friend struct host::Access;
    AcDbCurve() = default;
    AcDbCurve(const AcDbCurve&) = default;
    AcDbCurve& operator=(const AcDbCurve&) = default;
};
