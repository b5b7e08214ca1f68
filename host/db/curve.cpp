// The common questions to curves, answered by their geometry objects.

#include "dbcurve.h"

#include <memory>

#include "gelnsg3d.h"
#include "host/db/define_class.h"
#include "host/db/poly_path.h"

HOST_DEFINE_ABSTRACT(AcDbCurve, AcDbEntity, nullptr)

namespace {

// The geometry of a bounded curve, and how its parameters relate to the entity's: a segment's run
// from 0 to 1, a line's from 0 to its length; elsewhere they are the same.
class CurveView {
public:
    explicit CurveView(const AcDbCurve& entity) {
        AcGeCurve3d* curve = nullptr;
        m_status = entity.getAcGeCurve(curve);
        m_curve.reset(curve);
        if (m_status != Acad::eOk) return;
        AcGeInterval interval;
        m_curve->getInterval(interval);
        m_first = interval.lowerBound();
        m_last = interval.upperBound();
        if (m_curve->isKindOf(AcGe::kLineSeg3d))
            m_scale = static_cast<const AcGeLineSeg3d&>(*m_curve).length();
    }

    Acad::ErrorStatus Status() const { return m_status; }
    const AcGeCurve3d& Curve() const { return *m_curve; }
    double First() const { return m_first * m_scale; }
    double Last() const { return m_last * m_scale; }
    double ToEntity(double param) const { return param * m_scale; }

    // eInvalidInput outside the range; inside, the geometry's parameter.
    Acad::ErrorStatus ToGeometry(double param, double& inside) const {
        if (m_status != Acad::eOk) return m_status;
        if (!(param >= First() - host::kParamTol && param <= Last() + host::kParamTol))
            return Acad::eInvalidInput;
        inside = m_scale == 0.0 ? 0.0 : param / m_scale;
        if (inside < m_first) inside = m_first;
        if (inside > m_last) inside = m_last;
        return Acad::eOk;
    }
    double Length(double to) const { return m_curve->length(m_first, to); }
    double LastParam() const { return m_last; }
    double FirstParam() const { return m_first; }

private:
    std::unique_ptr<AcGeCurve3d> m_curve;
    Acad::ErrorStatus m_status = Acad::eOk;
    double m_first = 0.0;
    double m_last = 0.0;
    double m_scale = 1.0;
};

}  // namespace

bool AcDbCurve::isClosed() const {
    AcGePoint3d start, end;
    return getStartPoint(start) == Acad::eOk && getEndPoint(end) == Acad::eOk &&
           start.isEqualTo(end);
}

bool AcDbCurve::isPeriodic() const { return false; }

Acad::ErrorStatus AcDbCurve::getStartParam(double& param) const {
    const CurveView view(*this);
    if (view.Status() == Acad::eOk) param = view.First();
    return view.Status();
}

Acad::ErrorStatus AcDbCurve::getEndParam(double& param) const {
    const CurveView view(*this);
    if (view.Status() == Acad::eOk) param = view.Last();
    return view.Status();
}

Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d& point) const {
    double param = 0.0;
    const Acad::ErrorStatus es = getStartParam(param);
    return es == Acad::eOk ? getPointAtParam(param, point) : es;
}

Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d& point) const {
    double param = 0.0;
    const Acad::ErrorStatus es = getEndParam(param);
    return es == Acad::eOk ? getPointAtParam(param, point) : es;
}

Acad::ErrorStatus AcDbCurve::getPointAtParam(double param, AcGePoint3d& point) const {
    const CurveView view(*this);
    double inside = 0.0;
    const Acad::ErrorStatus es = view.ToGeometry(param, inside);
    if (es == Acad::eOk) point = view.Curve().evalPoint(inside);
    return es;
}

Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    const CurveView view(*this);
    if (view.Status() != Acad::eOk) return view.Status();
    const double nearest = view.Curve().paramOf(point);
    if (!(view.Curve().evalPoint(nearest).distanceTo(point) <= host::kOnCurveTol))
        return Acad::eInvalidInput;
    param = view.ToEntity(nearest);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtParam(double param, double& dist) const {
    const CurveView view(*this);
    double inside = 0.0;
    const Acad::ErrorStatus es = view.ToGeometry(param, inside);
    if (es == Acad::eOk) dist = view.Length(inside);
    return es;
}

Acad::ErrorStatus AcDbCurve::getParamAtDist(double dist, double& param) const {
    const CurveView view(*this);
    if (view.Status() != Acad::eOk) return view.Status();
    const double length = view.Length(view.LastParam());
    if (!(dist >= -host::kParamTol && dist <= length + host::kParamTol)) return Acad::eInvalidInput;
    if (dist >= length)
        param = view.Last();
    else if (dist <= 0.0)
        param = view.First();
    else
        param = view.ToEntity(view.Curve().paramAtLength(view.FirstParam(), dist));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    double param = 0.0;
    const Acad::ErrorStatus es = getParamAtPoint(point, param);
    return es == Acad::eOk ? getDistAtParam(param, dist) : es;
}

Acad::ErrorStatus AcDbCurve::getPointAtDist(double dist, AcGePoint3d& point) const {
    double param = 0.0;
    const Acad::ErrorStatus es = getParamAtDist(dist, param);
    return es == Acad::eOk ? getPointAtParam(param, point) : es;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(double param, AcGeVector3d& derivative) const {
    const CurveView view(*this);
    double inside = 0.0;
    const Acad::ErrorStatus es = view.ToGeometry(param, inside);
    if (es != Acad::eOk) return es;
    AcGeVector3dArray derivatives;
    view.Curve().evalPoint(inside, 1, derivatives);
    if (derivatives.isEmpty()) return Acad::eDegenerateGeometry;
    const double scale = view.ToEntity(1.0);
    derivative = scale > 0.0 ? derivatives[0] / scale : derivatives[0];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                               bool extend) const {
    const CurveView view(*this);
    if (view.Status() != Acad::eOk) return view.Status();
    if (extend && view.Curve().isKindOf(AcGe::kLineSeg3d)) {
        const auto& segment = static_cast<const AcGeLineSeg3d&>(view.Curve());
        const AcGeVector3d along = segment.endPoint() - segment.startPoint();
        if (along.lengthSqrd() > 0.0) {
            onCurve =
                segment.startPoint() +
                along * ((point - segment.startPoint()).dotProduct(along) / along.lengthSqrd());
            return Acad::eOk;
        }
    }
    if (extend && view.Curve().isKindOf(AcGe::kCircArc3d)) {
        const auto& arc = static_cast<const AcGeCircArc3d&>(view.Curve());
        onCurve = AcGeCircArc3d(arc.center(), arc.normal(), arc.radius()).closestPointTo(point);
        return Acad::eOk;
    }
    onCurve = view.Curve().closestPointTo(point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getArea(double&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::reverseCurve() { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::getAcGeCurve(AcGeCurve3d*& curve, const AcGeTol&) const {
    curve = nullptr;
    return Acad::eNotImplementedYet;
}
