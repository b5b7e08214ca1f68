#pragma once

#include "gelent3d.h"

// A line with a beginning and no end.
class AcGeRay3d : public AcGeLinearEnt3d {
public:
    // The positive x axis.
    AcGeRay3d() : AcGeRay3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    // From a point along a vector, whose length is the parameter's unit.
    AcGeRay3d(const AcGePoint3d& p, const AcGeVector3d& v)
        : AcGeLinearEnt3d(p, v, p + v, true, false) {}
    // From the first point through the second.
    AcGeRay3d(const AcGePoint3d& p, const AcGePoint3d& q)
        : AcGeLinearEnt3d(p, q - p, q, true, false) {}

    AcGeRay3d& set(const AcGePoint3d& p, const AcGeVector3d& v) { return *this = AcGeRay3d(p, v); }
    AcGeRay3d& set(const AcGePoint3d& p, const AcGePoint3d& q) { return *this = AcGeRay3d(p, q); }

protected:
    AcGe::EntityId kind() const override { return AcGe::kRay3d; }
    AcGeEntity3d* clone() const override { return new AcGeRay3d(*this); }
};
