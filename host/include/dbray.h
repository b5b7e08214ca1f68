// Curves without end: rays and construction lines. Part of dbents.h.
#pragma once

#include "dbcurve.h"

namespace host {
// A base point and a unit direction. Extents are eInvalidExtents: nothing bounds them.
class UnboundedLine : public AcDbCurve {
public:
    AcGePoint3d basePoint() const { return m_base; }  // group 10, WCS
    Acad::ErrorStatus setBasePoint(const AcGePoint3d& point);
    AcGeVector3d unitDir() const { return m_direction; }  // group 11
    // Made unit; eInvalidInput for a zero vector.
    Acad::ErrorStatus setUnitDir(const AcGeVector3d& direction);
    // No geometry object: getAcGeCurve answers eNotImplementedYet, ends and lengths likewise.
    // base + param * direction.
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                        bool extend = false) const override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    // Smallest parameter: 0 for a ray, minus infinity for a construction line.
    virtual double firstParam() const = 0;

private:
    friend struct Access;
    AcGePoint3d m_base;
    AcGeVector3d m_direction{1.0, 0.0, 0.0};  // unit
};
}  // namespace host

// RAY: begins at its base point.
class AcDbRay : public host::UnboundedLine {
public:
    ACRX_DECLARE_MEMBERS(AcDbRay);  // in files: RAY
    AcDbRay() = default;
    // 0, and the base point.
    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    double firstParam() const override { return 0.0; }
};

// XLINE: without end on both sides.
class AcDbXline : public host::UnboundedLine {
public:
    ACRX_DECLARE_MEMBERS(AcDbXline);  // in files: XLINE
    AcDbXline() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    // Minus infinity.
    double firstParam() const override;
};
