// Ellipses and elliptical arcs.
#pragma once

#include "dbcurve.h"

// Angles are parameters of centre + cos(a) major + sin(a) minor, minor = ratio * normal x major;
// counter-clockwise about the normal. Everything is WCS.
class AcDbEllipse : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbEllipse);  // in files: ELLIPSE
    AcDbEllipse() = default;
    // Nothing is checked, unlike in set(); the normal is made unit.
    AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                const AcGeVector3d& majorAxis, double radiusRatio, double startAngle = 0.0,
                double endAngle = 6.28318530717958647692);

    AcGePoint3d center() const { return m_center; }  // group 10
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    AcGeVector3d normal() const { return m_normal; }  // group 210, unit
    // group 11: from the centre to the end of the axis
    AcGeVector3d majorAxis() const { return m_major; }
    AcGeVector3d minorAxis() const;                 // normal x major, times the ratio
    double radiusRatio() const { return m_ratio; }  // group 40
    // eInvalidInput outside (0, 1].
    Acad::ErrorStatus setRadiusRatio(double ratio);
    double startAngle() const { return m_start; }  // group 41, a parameter in radians
    Acad::ErrorStatus setStartAngle(double angle);
    double endAngle() const { return m_end; }  // group 42
    Acad::ErrorStatus setEndAngle(double angle);
    double startParam() const { return m_start; }  // the same as the angle
    double endParam() const { return m_end; }
    // eInvalidInput for a zero axis, a ratio outside (0, 1], axes that are not perpendicular.
    Acad::ErrorStatus set(const AcGePoint3d& center, const AcGeVector3d& unitNormal,
                          const AcGeVector3d& majorAxis, double radiusRatio,
                          double startAngle = 0.0, double endAngle = 6.28318530717958647692);
    bool isPlanar() const override { return true; }

    bool isClosed() const override;  // a full turn within 1e-10
    bool isPeriodic() const override { return true; }
    Acad::ErrorStatus getAcGeCurve(AcGeCurve3d*& curve,
                                   const AcGeTol& tol = AcGeContext::gTol) const override;
    // Of an elliptical arc with its chord.
    Acad::ErrorStatus getArea(double& area) const override;
    // Turns the normal round; the shape stays.
    Acad::ErrorStatus reverseCurve() override;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    friend struct host::Access;
    AcGePoint3d m_center;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    AcGeVector3d m_major{1.0, 0.0, 0.0};
    double m_ratio = 1.0;
    double m_start = 0.0;
    double m_end = 6.28318530717958647692;
};
