// Non-uniform rational B-spline curves.
#pragma once

#include "gecurv3d.h"
#include "geknot.h"

// The interval is [knot(degree), knot(numControlPoints)], for a clamped spline from the first to
// the last knot. Between knots the curve is a rational polynomial of the degree.
// Editing of knots and degrees is not carried out; control points can be moved.
class AcGeNurbCurve3d : public AcGeCurve3d {
public:
    // A curve without control points.
    AcGeNurbCurve3d();
    // Knots: control points + degree + 1 of them, not falling. A periodic curve may also be given
    // by one knot more than control points, which then repeat. weights: as many as control points,
    // all positive, or none. Data that make no curve (wrong numbers, falling knots, an empty
    // interval, anything not finite) leave a curve without control points and the interval [0, 0]:
    // numControlPoints() is 0. O(n).
    AcGeNurbCurve3d(int degree, const AcGeKnotVector& knots, const AcGePoint3dArray& controlPoints,
                    bool isPeriodic = false);
    AcGeNurbCurve3d(int degree, const AcGeKnotVector& knots, const AcGePoint3dArray& controlPoints,
                    const AcGeDoubleArray& weights, bool isPeriodic = false);
    // The cubic with continuous curvature through all fit points, at parameters of chord lengths
    // (global interpolation; Piegl and Tiller, The NURBS Book, 9.2). Tangents: only their direction
    // counts, both in the sense of the curve; one that is not defined or zero leaves the curvature
    // 0 there. Points closer than fitTol.equalPoint to the one before are left out; fewer than two
    // points leave no curve. O(n).
    AcGeNurbCurve3d(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent,
                    const AcGeVector3d& endTangent, bool startTangentDefined = true,
                    bool endTangentDefined = true, const AcGeTol& fitTol = AcGeContext::gTol);

    int degree() const { return m_degree; }
    int order() const { return m_degree + 1; }  // degree + 1
    int numControlPoints() const { return m_points.length(); }
    // i must exist, as for all of these
    AcGePoint3d controlPointAt(int i) const { return m_points[i]; }
    int numKnots() const { return m_knots.length(); }
    double knotAt(int i) const { return m_knots[i]; }
    const AcGeKnotVector& knots() const { return m_knots; }
    double startParam() const { return domain().lowerBound(); }  // ends of the interval
    double endParam() const { return domain().upperBound(); }
    // the control point only when clamped
    AcGePoint3d startPoint() const { return eval(startParam(), 0, nullptr); }
    AcGePoint3d endPoint() const { return eval(endParam(), 0, nullptr); }
    bool isRational() const { return !m_weights.isEmpty(); }
    int numWeights() const { return m_weights.length(); }
    // 1 for splines that are not rational
    double weightAt(int i) const { return m_weights.isEmpty() ? 1.0 : m_weights[i]; }
    // As it was made, not by looking at the ends.
    bool isPeriodic() const { return m_periodic; }

    // The fit points the curve was made from, without those left out; none for other curves.
    int numFitPoints() const { return m_fitPoints.length(); }
    bool getFitPointAt(int i, AcGePoint3d& p) const;

    // The curve changes around that point; fit points are forgotten.
    AcGeNurbCurve3d& setControlPointAt(int i, const AcGePoint3d& p);

protected:
    AcGe::EntityId kind() const override { return AcGe::kNurbCurve3d; }
    AcGeEntity3d* clone() const override { return new AcGeNurbCurve3d(*this); }
    void apply(const AcGeMatrix3d& m) override;
    bool equals(const AcGeEntity3d& other, const AcGeTol& tol) const override;
    AcGeInterval domain() const override;
    AcGePoint3d eval(double param, int count, AcGeVector3d* derivatives) const override;
    double arcLength(double from, double to) const override;
    double nearestParam(const AcGePoint3d& p) const override;
    AcGeBoundBlock3d box() const override;
    bool liesInPlane(AcGePlane& plane, const AcGeTol& tol) const override;
    AcGeDoubleArray kinks(double from, double to) const override;

private:
    void Build(int degree, const AcGeKnotVector& knots, const AcGePoint3dArray& controlPoints,
               const AcGeDoubleArray& weights, bool isPeriodic);

    int m_degree = 1;
    bool m_periodic = false;  // as it was made
    AcGeKnotVector m_knots;
    AcGePoint3dArray m_points;  // control points
    AcGeDoubleArray m_weights;  // empty: all 1
    AcGePoint3dArray m_fitPoints;
};
