// Ellipses and elliptical arcs.
#pragma once

#include "gecurv3d.h"

class AcGeCircArc3d;

// Point = center + majorRadius * cos(t) * majorAxis + minorRadius * sin(t) * minorAxis; the
// interval is [startAng, endAng] of t, radians (not the angle of the point, save on a circle).
// An ellipse or a part of it in space.
class AcGeEllipArc3d : public AcGeCurve3d {
public:
    // The unit circle in the XY plane.
    AcGeEllipArc3d();
    // A circular arc as an ellipse with equal radii.
    AcGeEllipArc3d(const AcGeCircArc3d& arc);
    // minorAxis need not be at right angles to majorAxis; it is turned so.
    AcGeEllipArc3d(const AcGePoint3d& center, const AcGeVector3d& majorAxis,
                   const AcGeVector3d& minorAxis, double majorRadius, double minorRadius);
    AcGeEllipArc3d(const AcGePoint3d& center, const AcGeVector3d& majorAxis,
                   const AcGeVector3d& minorAxis, double majorRadius, double minorRadius,
                   double startAng, double endAng);

    AcGePoint3d center() const { return m_center; }         // of the ellipse
    AcGeVector3d majorAxis() const { return m_majorAxis; }  // unit
    AcGeVector3d minorAxis() const { return m_minorAxis; }
    // unit; the arc turns about it
    AcGeVector3d normal() const { return m_majorAxis.crossProduct(m_minorAxis); }
    double majorRadius() const { return m_majorRadius; }  // drawing units
    double minorRadius() const { return m_minorRadius; }
    double startAng() const { return m_startAng; }  // the parameter, radians
    double endAng() const { return m_endAng; }
    AcGePoint3d startPoint() const { return eval(m_startAng, 0, nullptr); }
    AcGePoint3d endPoint() const { return eval(m_endAng, 0, nullptr); }
    // both radii equal within equalPoint
    bool isCircular(const AcGeTol& tol = AcGeContext::gTol) const;

    // parameters, kept as given
    AcGeEllipArc3d& setAngles(double startAng, double endAng);

protected:
    AcGe::EntityId kind() const override { return AcGe::kEllipArc3d; }
    AcGeEntity3d* clone() const override { return new AcGeEllipArc3d(*this); }
    // Any affine map; the new axes are those of the mapped ellipse, the larger radius first, and
    // the angles move with them, so that the start stays the start.
    void apply(const AcGeMatrix3d& m) override;
    bool equals(const AcGeEntity3d& other, const AcGeTol& tol) const override;
    AcGeInterval domain() const override { return {m_startAng, m_endAng}; }
    AcGePoint3d eval(double param, int count, AcGeVector3d* derivatives) const override;
    double nearestParam(const AcGePoint3d& p) const override;
    AcGeBoundBlock3d box() const override;
    bool liesInPlane(AcGePlane& plane, const AcGeTol& tol) const override;

private:
    AcGePoint3d m_center;
    AcGeVector3d m_majorAxis, m_minorAxis;
    double m_majorRadius, m_minorRadius, m_startAng, m_endAng;
};
