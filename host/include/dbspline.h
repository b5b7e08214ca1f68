// Splines: non-uniform rational B-splines, with the fit points they were made of.
#pragma once

#include <vector>

#include "dbcurve.h"
#include "gedblar.h"
#include "genurb3d.h"
#include "gept3dar.h"

// SPLINE. Inserting knots, raising the degree and fitting again are not carried out.
class AcDbSpline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbSpline);  // in files: SPLINE
    AcDbSpline() = default;
    // Data that do not fit together (see setNurbsData) leave the spline empty.
    AcDbSpline(int degree, bool rational, bool closed, bool periodic,
               const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
               const AcGeDoubleArray& weights, double controlPtTol = 0.0, double knotTol = 0.0);

    int degree() const { return m_degree; }                  // group 71
    bool isRational() const { return !m_weights.empty(); }   // has weights, bit 4 of group 70
    bool isClosed() const override;                          // its ends are one point
    bool isPeriodic() const override { return m_periodic; }  // bit 2 of group 70
    bool isPlanar() const override;                          // within equalPoint
    int numControlPoints() const { return static_cast<int>(m_controls.size()); }  // group 73
    // eInvalidIndex.
    Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;
    Acad::ErrorStatus setControlPointAt(int index, const AcGePoint3d& point);
    // 1 for splines that are not rational.
    double weightAt(int index) const;

    int numFitPoints() const { return static_cast<int>(m_fitPoints.size()); }  // group 74
    bool hasFitData() const { return !m_fitPoints.empty(); }
    // Group 11, WCS; eInvalidIndex.
    Acad::ErrorStatus getFitPointAt(int index, AcGePoint3d& point) const;
    // Tolerance of the fit, and the end tangents; eNotApplicable without fit points.
    Acad::ErrorStatus getFitTangents(AcGeVector3d& start, AcGeVector3d& end) const;

    // All of it at once. Arrays are replaced; weights are left empty when there are none.
    Acad::ErrorStatus getNurbsData(int& degree, bool& rational, bool& closed, bool& periodic,
                                   AcGePoint3dArray& controlPoints, AcGeDoubleArray& knots,
                                   AcGeDoubleArray& weights, double& controlPtTol,
                                   double& knotTol) const;
    // Drops fit points. eInvalidInput unless knots do not fall, there are degree + 1 more of them
    // than control points, and weights are none or as many as control points and positive.
    Acad::ErrorStatus setNurbsData(int degree, bool rational, bool closed, bool periodic,
                                   const AcGePoint3dArray& controlPoints,
                                   const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                                   double controlPtTol, double knotTol = 0.0);

    // Null curve and eDegenerateGeometry for a spline without control points.
    Acad::ErrorStatus getAcGeCurve(AcGeCurve3d*& curve,
                                   const AcGeTol& tol = AcGeContext::gTol) const override;
    // Knots are mirrored within their range.
    Acad::ErrorStatus reverseCurve() override;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // Any affine map: control points and fit points move.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    friend struct host::Access;
    std::vector<AcGePoint3d> m_controls;
    std::vector<double> m_knots;    // not falling
    std::vector<double> m_weights;  // empty: not rational
    std::vector<AcGePoint3d> m_fitPoints;
    AcGeVector3d m_startTangent;  // zero: none was given
    AcGeVector3d m_endTangent;
    double m_knotTol = 1e-7;
    double m_controlTol = 1e-7;
    double m_fitTol = 1e-10;  // group 44, drawing units
    int m_degree = 3;
    bool m_closed = false;
    bool m_periodic = false;
};
