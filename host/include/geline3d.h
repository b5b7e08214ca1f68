#pragma once

#include "gelent3d.h"

// An unbounded line.
class AcGeLine3d : public AcGeLinearEnt3d {
public:
    // The x axis.
    AcGeLine3d() : AcGeLine3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    // Through a point along a vector, whose length is the parameter's unit.
    AcGeLine3d(const AcGePoint3d& p, const AcGeVector3d& v)
        : AcGeLinearEnt3d(p, v, p + v, false, false) {}
    // Through two points; they should be apart.
    AcGeLine3d(const AcGePoint3d& p, const AcGePoint3d& q)
        : AcGeLinearEnt3d(p, q - p, q, false, false) {}  // through two points; they should be apart

    AcGeLine3d& set(const AcGePoint3d& p, const AcGeVector3d& v) {
        return *this = AcGeLine3d(p, v);
    }
    AcGeLine3d& set(const AcGePoint3d& p, const AcGePoint3d& q) { return *this = AcGeLine3d(p, q); }

protected:
    AcGe::EntityId kind() const override { return AcGe::kLine3d; }
    AcGeEntity3d* clone() const override { return new AcGeLine3d(*this); }
};
