// Root of the curves.
#pragma once

#include "geblok3d.h"
#include "gedblar.h"
#include "geent3d.h"
#include "geintrvl.h"
#include "gepnt3d.h"
#include "gept3dar.h"
#include "gevc3dar.h"

class AcGePlane;

// Points by parameter. What the parameter means is said by each class. Lengths of lines and
// circular arcs are exact, those of ellipses and splines numeric, to about 1e-10 of the length.
class AcGeCurve3d : public AcGeEntity3d {
public:
    void getInterval(AcGeInterval& interval) const { interval = domain(); }
    // start and end stay as they are at an open side.
    void getInterval(AcGeInterval& interval, AcGePoint3d& start, AcGePoint3d& end) const;
    // False, and the point unchanged, when the curve is unbounded there.
    bool hasStartPoint(AcGePoint3d& start) const;
    bool hasEndPoint(AcGePoint3d& end) const;

    // Parameters outside the interval: lines, circles and ellipses go on; a spline is held at its
    // ends.
    AcGePoint3d evalPoint(double param) const { return eval(param, 0, nullptr); }
    // derivatives receives the first numDeriv derivatives (at most 2) by the parameter.
    AcGePoint3d evalPoint(double param, int numDeriv, AcGeVector3dArray& derivatives) const;

    // The parameter of the point of the curve closest to p.
    double paramOf(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const;
    // Never negative, whatever the order of the parameters.
    double length(double from, double to, double tol = AcGeContext::gTol.equalPoint()) const;
    // The parameter at the given arc length (>= 0) from datum, forward unless told otherwise. Past
    // the end of a bounded curve: its end parameter. Found by Newton's method, so a few lengths
    // dear.
    double paramAtLength(double datum, double len, bool positive = true,
                         double tol = AcGeContext::gTol.equalPoint()) const;

    // Of a curve with several: one of them.
    AcGePoint3d closestPointTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const;
    // to the closest point, drawing units
    double distanceTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const;

    using AcGeEntity3d::isOn;
    // param receives the parameter only when p is on the curve.
    bool isOn(const AcGePoint3d& p, double& param, const AcGeTol& tol = AcGeContext::gTol) const;
    // Whether the parameter lies in the interval, within equalPoint.
    bool isOn(double param, const AcGeTol& tol = AcGeContext::gTol) const;

    // Bounded, and start and end within equalPoint.
    bool isClosed(const AcGeTol& tol = AcGeContext::gTol) const;
    // plane receives the plane; a straight curve lies in many, one of them is given.
    bool isPlanar(AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const;

    // Around the bounded part; lines, arcs, ellipses exact, splines around their control points.
    AcGeBoundBlock3d boundBlock() const { return box(); }
    AcGeBoundBlock3d orthoBoundBlock() const { return box(); }

    // count points at equal parameter steps: the i-th parameter is from + i * (to - from) / (count
    // - 1), the last exactly to. Below 2 the start alone. pts (and params) are replaced. The curve
    // must be bounded, otherwise they are left empty.
    void getSamplePoints(int count, AcGePoint3dArray& pts) const;
    void getSamplePoints(int count, AcGePoint3dArray& pts, AcGeDoubleArray& params) const;
    // Between two parameters (rising), so close that the chords leave the curve by no more than
    // approxEps (> 0; no interval is halved more than 16 times). Every kink and every knot is a
    // sample point. Replaces both arrays.
    void getSamplePoints(double from, double to, double approxEps, AcGePoint3dArray& pts,
                         AcGeDoubleArray& params, bool forceResampling = false) const;

protected:
    virtual AcGeInterval domain() const = 0;
    // The point, and the first count (at most 2) derivatives.
    virtual AcGePoint3d eval(double param, int count, AcGeVector3d* derivatives) const = 0;
    // from <= to
    virtual double arcLength(double from, double to) const;
    // The parameter of the closest point.
    virtual double nearestParam(const AcGePoint3d& p) const = 0;
    virtual AcGeBoundBlock3d box() const = 0;
    virtual bool liesInPlane(AcGePlane& plane, const AcGeTol& tol) const = 0;
    // Parameters inside (from, to) where the curve may be less than smooth, rising.
    virtual AcGeDoubleArray kinks(double from, double to) const;
    bool hasOn(const AcGePoint3d& p, const AcGeTol& tol) const override;
};
