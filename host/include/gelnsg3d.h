#pragma once

#include "gelent3d.h"

// A segment; its interval is [0, 1]. Made and tested millions of times, so it lives on the stack.
class AcGeLineSeg3d final : public AcGeLinearEnt3d {
public:
    // From the origin to (1, 0, 0).
    AcGeLineSeg3d() : AcGeLineSeg3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    // Both ends are kept to the last digit.
    AcGeLineSeg3d(const AcGePoint3d& p, const AcGePoint3d& q)
        : AcGeLinearEnt3d(p, q - p, q, true, true) {}  // both ends are kept to the last digit
    AcGeLineSeg3d(const AcGePoint3d& p, const AcGeVector3d& v)
        : AcGeLinearEnt3d(p, v, p + v, true, true) {}

    AcGeLineSeg3d& set(const AcGePoint3d& p, const AcGePoint3d& q) {
        return *this = AcGeLineSeg3d(p, q);
    }
    AcGeLineSeg3d& set(const AcGePoint3d& p, const AcGeVector3d& v) {
        return *this = AcGeLineSeg3d(p, v);
    }

    AcGePoint3d startPoint() const { return m_straight.start; }  // as given
    AcGePoint3d endPoint() const { return m_end; }
    // at parameter 0.5
    AcGePoint3d midPoint() const { return m_straight.start + m_straight.dir * 0.5; }
    using AcGeCurve3d::length;
    double length() const { return m_straight.dir.length(); }  // drawing units
    // The point that divides start to end as (1 - blendCoeff) to blendCoeff.
    AcGePoint3d baryComb(double blendCoeff) const { return at(blendCoeff); }

protected:
    AcGe::EntityId kind() const override { return AcGe::kLineSeg3d; }
    AcGeEntity3d* clone() const override { return new AcGeLineSeg3d(*this); }
};
