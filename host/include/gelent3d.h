// Straight lines, rays and segments.
#pragma once

#include "gecurv3d.h"
#include "host/ge/linear_kernel.h"

class AcGeLine3d;
class AcGePlanarEnt;
class AcGePlane;

// Point = start + parameter * (end - start); a line is unbounded, a ray begins at 0, a segment ends
// at 1. Nothing here allocates except overlap.
class AcGeLinearEnt3d : public AcGeCurve3d {
public:
    // The one common point, on this one's line and not cut to its ends. Bounded entities are
    // bounded, with equalPoint beyond an end still accepted. False, and out unchanged, for
    // parallel, collinear and overlapping ones (see AcGeVector3d::isParallelTo), and when one has
    // no length.
    bool intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& out,
                       const AcGeTol& tol = AcGeContext::gTol) const {
        double t = 0.0;
        if (!host::Crossing(m_straight, line.m_straight, tol, t)) return false;
        out = m_straight.start + m_straight.dir * t;
        return true;
    }
    // False when parallel to the plane, and when the plane is met more than equalPoint beyond an
    // end.
    bool intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& out,
                       const AcGeTol& tol = AcGeContext::gTol) const;

    using AcGeCurve3d::isOn;
    // The foot of the perpendicular from p must lie on the entity (1e-10 beyond an end is granted
    // for rounding), and p no farther from it than equalPoint. So a point just beyond an end is not
    // on it, whatever the tolerance. Without length: the distance decides.
    bool isOn(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return host::IsOn(m_straight, p, tol);
    }
    // Both ends no farther from the plane than equalPoint; a line or ray must be parallel to it.
    bool isOn(const AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const;

    // The foot of the perpendicular, cut to the ends, which are given exactly.
    AcGePoint3d closestPointTo(const AcGePoint3d& p, const AcGeTol& = AcGeContext::gTol) const {
        return at(host::NearestOn(m_straight, p));
    }

    // By unit directions, within equalVector; false for one without length.
    bool isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
    bool isPerpendicularTo(const AcGeLinearEnt3d& line,
                           const AcGeTol& tol = AcGeContext::gTol) const;
    // Parallel, and the other's point no farther from this one's line than equalPoint.
    bool isColinearTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
    // The common piece of two collinear entities, longer than equalPoint: a new object, which the
    // caller deletes. False, and common unchanged, when there is none.
    bool overlap(const AcGeLinearEnt3d& line, AcGeLinearEnt3d*& common,
                 const AcGeTol& tol = AcGeContext::gTol) const;

    // Unit vector; zero when the entity has no length.
    AcGeVector3d direction() const { return m_straight.dir.normal(); }
    AcGePoint3d pointOnLine() const { return m_straight.start; }  // the start
    void getLine(AcGeLine3d& line) const;                         // the same line without ends

protected:
    AcGeLinearEnt3d(const AcGePoint3d& start, const AcGeVector3d& dir, const AcGePoint3d& end,
                    bool lower, bool upper)
        : m_straight{start, dir, lower, upper}, m_end(end) {}

    // The stored end at 1: start + (end - start) may differ from end in the last digit.
    AcGePoint3d at(double t) const {
        return t == 1.0 ? m_end : m_straight.start + m_straight.dir * t;
    }

    void apply(const AcGeMatrix3d& m) override;
    bool equals(const AcGeEntity3d& other, const AcGeTol& tol) const override;
    bool hasOn(const AcGePoint3d& p, const AcGeTol& tol) const override { return isOn(p, tol); }
    AcGeInterval domain() const override;
    AcGePoint3d eval(double param, int count, AcGeVector3d* derivatives) const override;
    double arcLength(double from, double to) const override;
    double nearestParam(const AcGePoint3d& p) const override;
    AcGeBoundBlock3d box() const override;
    bool liesInPlane(AcGePlane& plane, const AcGeTol& tol) const override;

    host::Straight m_straight;  // start, direction, and which ends it has
    AcGePoint3d m_end;          // as given, to the last digit
};
