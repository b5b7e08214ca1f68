#include "dbspline.h"

#include <algorithm>
#include <cmath>

#include "geknot.h"
#include "geplane.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/stub.h"

HOST_DEFINE_CLASS(AcDbSpline, AcDbCurve, ACRX_T("SPLINE"))
HOST_DEFINE_COPY(AcDbSpline)

namespace {

template <class T>
std::vector<T> ToVector(const AcArray<T>& array) {
    std::vector<T> out;
    out.reserve(static_cast<size_t>(array.length()));
    for (int i = 0; i < array.length(); ++i) out.push_back(array[i]);
    return out;
}

template <class T>
AcArray<T> ToArray(const std::vector<T>& values) {
    AcArray<T> out;
    for (const T& value : values) out.append(value);
    return out;
}

bool FitTogether(int degree, size_t controls, const std::vector<double>& knots,
                 const std::vector<double>& weights) {
    if (degree < 1 || controls < static_cast<size_t>(degree) + 1) return false;
    if (knots.size() != controls + static_cast<size_t>(degree) + 1) return false;
    if (!std::is_sorted(knots.begin(), knots.end())) return false;
    if (!weights.empty() && weights.size() != controls) return false;
    return std::all_of(weights.begin(), weights.end(), [](double w) { return w > 0.0; });
}

// Samples per knot span and degree: between two of them a coordinate turns once at most, short of
// curves that wriggle on purpose.
constexpr int kSamplesPerDegree = 8;
// Halvings of an interval until a double cannot tell its ends apart.
constexpr int kHalvings = 60;

// Adds the point where a coordinate's derivative changes its sign between two parameters.
void AddTurningPoint(const AcGeNurbCurve3d& curve, double low, double high, unsigned axis,
                     AcDbExtents& box) {
    AcGeVector3dArray derivative;
    curve.evalPoint(low, 1, derivative);
    const bool rising = derivative[0][axis] > 0.0;
    for (int i = 0; i < kHalvings; ++i) {
        const double middle = 0.5 * (low + high);
        curve.evalPoint(middle, 1, derivative);
        ((derivative[0][axis] > 0.0) == rising ? low : high) = middle;
    }
    box.addPoint(curve.evalPoint(0.5 * (low + high)));
}

void AddSpan(const AcGeNurbCurve3d& curve, double from, double to, AcDbExtents& box) {
    const int samples = kSamplesPerDegree * curve.degree();
    AcGeVector3dArray previous, next;
    double at = from;
    box.addPoint(curve.evalPoint(at, 1, previous));
    for (int i = 1; i <= samples; ++i) {
        const double param = i == samples ? to : from + (to - from) * i / samples;
        box.addPoint(curve.evalPoint(param, 1, next));
        for (unsigned axis = 0; axis < 3; ++axis)
            if (previous[0][axis] * next[0][axis] < 0.0)
                AddTurningPoint(curve, at, param, axis, box);
        previous = next;
        at = param;
    }
}

}  // namespace

AcDbSpline::AcDbSpline(int degree, bool rational, bool closed, bool periodic,
                       const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
                       const AcGeDoubleArray& weights, double controlPtTol, double knotTol) {
    static_cast<void>(setNurbsData(degree, rational, closed, periodic, controlPoints, knots,
                                   weights, controlPtTol, knotTol));
}

bool AcDbSpline::isClosed() const { return m_closed || AcDbCurve::isClosed(); }

bool AcDbSpline::isPlanar() const {
    AcGeCurve3d* curve = nullptr;
    if (getAcGeCurve(curve) != Acad::eOk) return false;
    AcGePlane plane;
    const bool planar = curve->isPlanar(plane);
    delete curve;
    return planar;
}

Acad::ErrorStatus AcDbSpline::getControlPointAt(int index, AcGePoint3d& point) const {
    if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
    point = m_controls[static_cast<size_t>(index)];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setControlPointAt(int index, const AcGePoint3d& point) {
    if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_controls[static_cast<size_t>(index)] = point;
    m_fitPoints.clear();
    return Acad::eOk;
}

double AcDbSpline::weightAt(int index) const {
    return m_weights.empty() || index < 0 || index >= numControlPoints()
               ? 1.0
               : m_weights[static_cast<size_t>(index)];
}

Acad::ErrorStatus AcDbSpline::getFitPointAt(int index, AcGePoint3d& point) const {
    if (index < 0 || index >= numFitPoints()) return Acad::eInvalidIndex;
    point = m_fitPoints[static_cast<size_t>(index)];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getFitTangents(AcGeVector3d& start, AcGeVector3d& end) const {
    if (!hasFitData()) return Acad::eNotApplicable;
    start = m_startTangent;
    end = m_endTangent;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getNurbsData(int& degree, bool& rational, bool& closed,
                                           bool& periodic, AcGePoint3dArray& controlPoints,
                                           AcGeDoubleArray& knots, AcGeDoubleArray& weights,
                                           double& controlPtTol, double& knotTol) const {
    degree = m_degree;
    rational = isRational();
    closed = isClosed();
    periodic = m_periodic;
    controlPoints = ToArray(m_controls);
    knots = ToArray(m_knots);
    weights = ToArray(m_weights);
    controlPtTol = m_controlTol;
    knotTol = m_knotTol;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setNurbsData(int degree, bool rational, bool closed, bool periodic,
                                           const AcGePoint3dArray& controlPoints,
                                           const AcGeDoubleArray& knots,
                                           const AcGeDoubleArray& weights, double controlPtTol,
                                           double knotTol) {
    const std::vector<double> newKnots = ToVector(knots);
    const std::vector<double> newWeights = rational ? ToVector(weights) : std::vector<double>();
    if (!FitTogether(degree, static_cast<size_t>(controlPoints.length()), newKnots, newWeights))
        return Acad::eInvalidInput;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_degree = degree;
    m_closed = closed;
    m_periodic = periodic;
    m_controls = ToVector(controlPoints);
    m_knots = newKnots;
    m_weights = newWeights;
    m_fitPoints.clear();
    m_controlTol = controlPtTol;
    m_knotTol = knotTol;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getAcGeCurve(AcGeCurve3d*& curve, const AcGeTol&) const {
    curve = nullptr;
    std::unique_ptr<AcGeNurbCurve3d> made;
    if (!m_controls.empty() && FitTogether(m_degree, m_controls.size(), m_knots, m_weights)) {
        AcGeKnotVector knots;
        for (const double knot : m_knots) knots.append(knot);
        made = m_weights.empty()
                   ? std::make_unique<AcGeNurbCurve3d>(m_degree, knots, ToArray(m_controls), false)
                   : std::make_unique<AcGeNurbCurve3d>(m_degree, knots, ToArray(m_controls),
                                                       ToArray(m_weights), false);
    } else if (m_fitPoints.size() >= 2) {
        AcGeTol fitTol;
        made = std::make_unique<AcGeNurbCurve3d>(ToArray(m_fitPoints), m_startTangent, m_endTangent,
                                                 !m_startTangent.isZeroLength(),
                                                 !m_endTangent.isZeroLength(), fitTol);
    }
    if (made == nullptr || made->numControlPoints() == 0) return Acad::eDegenerateGeometry;
    curve = made.release();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::reverseCurve() {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    std::reverse(m_controls.begin(), m_controls.end());
    std::reverse(m_weights.begin(), m_weights.end());
    std::reverse(m_fitPoints.begin(), m_fitPoints.end());
    const double sum = m_knots.empty() ? 0.0 : m_knots.front() + m_knots.back();
    std::reverse(m_knots.begin(), m_knots.end());
    for (double& knot : m_knots) knot = sum - knot;
    const AcGeVector3d start = m_startTangent;
    m_startTangent = -m_endTangent;
    m_endTangent = -start;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subGetGeomExtents(AcDbExtents& extents) const {
    AcGeCurve3d* made = nullptr;
    if (getAcGeCurve(made) != Acad::eOk) return Acad::eNullExtents;
    const std::unique_ptr<AcGeNurbCurve3d> curve(static_cast<AcGeNurbCurve3d*>(made));
    AcDbExtents box;
    const double last = curve->endParam();
    double from = curve->startParam();
    for (int i = 0; i < curve->numKnots(); ++i) {
        const double to = (std::min)(curve->knotAt(i), last);
        if (!(to > from)) continue;
        AddSpan(*curve, from, to, box);
        from = to;
    }
    return host::FinishExtents(box, extents);
}

Acad::ErrorStatus AcDbSpline::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    for (AcGePoint3d& point : m_controls) point = matrix * point;
    for (AcGePoint3d& point : m_fitPoints) point = matrix * point;
    m_startTangent = matrix * m_startTangent;
    m_endTangent = matrix * m_endTangent;
    return Acad::eOk;
}
