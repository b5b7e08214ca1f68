// Circles and circular arcs.
#pragma once

#include "gecurv3d.h"

// Parameter = angle in radians from refVec, counter-clockwise as seen against the normal; the
// interval is [startAng, endAng]. A full circle runs over 2 pi.
// A circle or a part of it in space.
class AcGeCircArc3d : public AcGeCurve3d {
public:
    AcGeCircArc3d() : AcGeCircArc3d(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis, 1.0) {}
    // A circle; refVec is the x axis the arbitrary axis rule gives the normal.
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    // refVec need not be at right angles to the normal; it is turned so.
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                  double radius, double startAng, double endAng);
    // From p1 through p2 to p3, angles from p1. Points in a line leave a circle of radius 0 at p1.
    AcGeCircArc3d(const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3);

    AcGePoint3d center() const { return m_center; }   // of the circle
    AcGeVector3d normal() const { return m_normal; }  // unit; the arc turns about it
    AcGeVector3d refVec() const { return m_refVec; }  // unit; where angle 0 lies
    double radius() const { return m_radius; }        // drawing units
    double startAng() const { return m_startAng; }    // radians from refVec
    double endAng() const { return m_endAng; }        // not below startAng
    AcGePoint3d startPoint() const { return eval(m_startAng, 0, nullptr); }  // at startAng
    AcGePoint3d endPoint() const { return eval(m_endAng, 0, nullptr); }

    AcGeCircArc3d& setCenter(const AcGePoint3d& center);
    AcGeCircArc3d& setRadius(double radius);
    // Kept as given; the end should not lie below the start.
    AcGeCircArc3d& setAngles(double startAng, double endAng);

protected:
    AcGe::EntityId kind() const override { return AcGe::kCircArc3d; }
    AcGeEntity3d* clone() const override { return new AcGeCircArc3d(*this); }
    // The map must scale uniformly and keep right angles (up to 1e-6 of its scale), for a circle
    // cannot become an ellipse: make an AcGeEllipArc3d of it first. Anything else stops the
    // program.
    void apply(const AcGeMatrix3d& m) override;
    bool equals(const AcGeEntity3d& other, const AcGeTol& tol) const override;
    AcGeInterval domain() const override { return {m_startAng, m_endAng}; }
    AcGePoint3d eval(double param, int count, AcGeVector3d* derivatives) const override;
    double arcLength(double from, double to) const override;
    double nearestParam(const AcGePoint3d& p) const override;
    AcGeBoundBlock3d box() const override;
    bool liesInPlane(AcGePlane& plane, const AcGeTol& tol) const override;

private:
    AcGePoint3d m_center;
    AcGeVector3d m_normal, m_refVec;
    double m_radius = 1.0, m_startAng = 0.0, m_endAng = 0.0;
};
