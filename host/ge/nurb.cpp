#include "genurb3d.h"

#include <algorithm>
#include <cmath>

#include "gemat3d.h"
#include "geplane.h"
#include "host/ge/curve_numeric.h"
#include "host/ge/linear_kernel.h"
#include "host/ge/nurb_fit.h"

double AcGeKnotVector::globalKnotTolerance = 1e-9;

AcGeKnotVector::AcGeKnotVector(int size, const double knots[], double eps) : m_eps(eps) {
    for (int i = 0; i < size; ++i) m_knots.append(knots[i]);
}

bool AcGeKnotVector::isEqualTo(const AcGeKnotVector& other) const {
    return std::equal(m_knots.begin(), m_knots.end(), other.m_knots.begin(), other.m_knots.end(),
                      [this](double a, double b) { return std::fabs(a - b) <= m_eps; });
}

namespace {

// Far above what drawings hold; keeps the working arrays on the stack.
constexpr int kMaxDegree = 31;

// A point times its weight, and the weight.
struct Homogeneous {
    AcGeVector3d p;
    double w = 0.0;
};

Homogeneous operator-(const Homogeneous& a, const Homogeneous& b) { return {a.p - b.p, a.w - b.w}; }
Homogeneous operator*(const Homogeneous& a, double s) { return {a.p * s, a.w * s}; }

Homogeneous Mix(const Homogeneous& a, const Homogeneous& b, double t) {
    return {a.p * (1.0 - t) + b.p * t, a.w * (1.0 - t) + b.w * t};
}

bool IsFinite(const AcGePoint3d& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

bool MakesCurve(int degree, const AcGeKnotVector& knots, const AcGePoint3dArray& points,
                const AcGeDoubleArray& weights) {
    const int count = points.length();
    if (degree < 1 || degree > kMaxDegree || count < degree + 1) return false;
    if (knots.length() != count + degree + 1) return false;
    if (!weights.isEmpty() && weights.length() != count) return false;
    for (int i = 0; i < knots.length(); ++i)
        if (!std::isfinite(knots[i]) || (i > 0 && knots[i] < knots[i - 1])) return false;
    for (const double w : weights)
        if (!(w > 0.0) || !std::isfinite(w)) return false;
    return knots[degree] < knots[count] && std::all_of(points.begin(), points.end(), IsFinite);
}

// Writes one period of knots and points out as an ordinary curve: the first degree points come once
// more, the knots go on by a period on both sides.
void Unroll(int degree, AcGeKnotVector& knots, AcGePoint3dArray& points, AcGeDoubleArray& weights) {
    const int count = points.length();
    const double period = knots.endParam() - knots.startParam();
    AcGeKnotVector all;
    for (int i = -degree; i <= count + degree; ++i) {
        const int turn = i < 0 ? -1 : i > count ? 1 : 0;
        all.append(knots[i - turn * count] + turn * period);
    }
    for (int i = 0; i < degree; ++i) {
        points.append(points[i]);
        if (!weights.isEmpty()) weights.append(weights[i]);
    }
    knots = all;
}

}  // namespace

AcGeNurbCurve3d::AcGeNurbCurve3d() = default;

AcGeNurbCurve3d::AcGeNurbCurve3d(int degree, const AcGeKnotVector& knots,
                                 const AcGePoint3dArray& controlPoints, bool isPeriodic) {
    Build(degree, knots, controlPoints, AcGeDoubleArray(), isPeriodic);
}

AcGeNurbCurve3d::AcGeNurbCurve3d(int degree, const AcGeKnotVector& knots,
                                 const AcGePoint3dArray& controlPoints,
                                 const AcGeDoubleArray& weights, bool isPeriodic) {
    Build(degree, knots, controlPoints, weights, isPeriodic);
}

AcGeNurbCurve3d::AcGeNurbCurve3d(const AcGePoint3dArray& fitPoints,
                                 const AcGeVector3d& startTangent, const AcGeVector3d& endTangent,
                                 bool startTangentDefined, bool endTangentDefined,
                                 const AcGeTol& fitTol) {
    AcGePoint3dArray apart;
    for (const AcGePoint3d& p : fitPoints)
        if (apart.isEmpty() || !p.isEqualTo(apart.last(), fitTol)) apart.append(p);
    if (apart.length() < 2 || !std::all_of(apart.begin(), apart.end(), IsFinite)) return;
    AcGeDoubleArray knots;
    AcGePoint3dArray points;
    host::FitCubic(apart, startTangentDefined ? startTangent.normal() : AcGeVector3d(),
                   endTangentDefined ? endTangent.normal() : AcGeVector3d(), knots, points);
    Build(3, knots, points, AcGeDoubleArray(), false);
    if (numControlPoints() > 0) m_fitPoints = apart;
}

void AcGeNurbCurve3d::Build(int degree, const AcGeKnotVector& knots,
                            const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& weights,
                            bool isPeriodic) {
    AcGeKnotVector allKnots = knots;
    AcGePoint3dArray allPoints = controlPoints;
    AcGeDoubleArray allWeights = weights;
    const bool onePeriod = isPeriodic && degree >= 1 && controlPoints.length() > degree &&
                           knots.length() == controlPoints.length() + 1 &&
                           (weights.isEmpty() || weights.length() == controlPoints.length());
    if (onePeriod) Unroll(degree, allKnots, allPoints, allWeights);
    if (!MakesCurve(degree, allKnots, allPoints, allWeights)) return;
    m_degree = degree;
    m_periodic = isPeriodic;
    m_knots = allKnots;
    m_points = allPoints;
    m_weights = allWeights;
}

bool AcGeNurbCurve3d::getFitPointAt(int i, AcGePoint3d& p) const {
    if (i < 0 || i >= m_fitPoints.length()) return false;
    p = m_fitPoints[i];
    return true;
}

AcGeNurbCurve3d& AcGeNurbCurve3d::setControlPointAt(int i, const AcGePoint3d& p) {
    m_points[i] = p;
    m_fitPoints.removeAll();
    return *this;
}

void AcGeNurbCurve3d::apply(const AcGeMatrix3d& m) {
    for (AcGePoint3d& p : m_points) p.transformBy(m);
    for (AcGePoint3d& p : m_fitPoints) p.transformBy(m);
}

bool AcGeNurbCurve3d::equals(const AcGeEntity3d& other, const AcGeTol& tol) const {
    const AcGeNurbCurve3d& curve = static_cast<const AcGeNurbCurve3d&>(other);
    if (m_degree != curve.m_degree || m_points.length() != curve.m_points.length() ||
        !m_knots.isEqualTo(curve.m_knots))
        return false;
    for (int i = 0; i < m_points.length(); ++i)
        if (!m_points[i].isEqualTo(curve.m_points[i], tol) ||
            std::fabs(weightAt(i) - curve.weightAt(i)) > tol.equalVector())
            return false;
    return true;
}

AcGeInterval AcGeNurbCurve3d::domain() const {
    if (m_points.isEmpty()) return {0.0, 0.0};
    return {m_knots[m_degree], m_knots[m_points.length()]};
}

// De Boor's scheme on weighted points. Its last column but one is two points, whose difference is
// the derivative's direction, and the one before three, which give the second derivative.
AcGePoint3d AcGeNurbCurve3d::eval(double param, int count, AcGeVector3d* derivatives) const {
    std::fill_n(derivatives, count, AcGeVector3d());
    if (m_points.isEmpty()) return AcGePoint3d::kOrigin;
    const AcGeInterval range = domain();
    const double t = (std::min)((std::max)(param, range.lowerBound()), range.upperBound());
    const double* const knots = m_knots.asArrayPtr();
    const int p = m_degree, n = m_points.length();
    // The interval [knot k, knot k + 1) that holds t; at the end the last one that is not empty.
    const bool atEnd = t == range.upperBound();
    const double* const above = atEnd ? std::lower_bound(knots + p, knots + n, t)
                                      : std::upper_bound(knots + p, knots + n, t);
    const int k = static_cast<int>(above - knots) - 1;

    Homogeneous d[kMaxDegree + 1], first, second;
    for (int i = 0; i <= p; ++i) {
        const int j = k - p + i;
        d[i] = {m_points[j].asVector() * weightAt(j), weightAt(j)};
    }
    const double* const u = knots + k;  // u[0] <= t <= u[1]
    for (int level = 1; level <= p; ++level) {
        if (level == p) first = (d[p] - d[p - 1]) * (p / (u[1] - u[0]));
        if (level == p - 1)
            second = ((d[p] - d[p - 1]) * (1.0 / (u[2] - u[0])) -
                      (d[p - 1] - d[p - 2]) * (1.0 / (u[1] - u[-1]))) *
                     (p * (p - 1) / (u[1] - u[0]));
        for (int i = p; i >= level; --i) {
            const double low = u[i - p], high = u[i + 1 - level];
            d[i] = Mix(d[i - 1], d[i], (t - low) / (high - low));
        }
    }
    const double w = d[p].w;
    const AcGeVector3d at = isRational() ? d[p].p / w : d[p].p;
    if (count > 0) derivatives[0] = (first.p - at * first.w) / w;
    if (count > 1)
        derivatives[1] = (second.p - derivatives[0] * (2.0 * first.w) - at * second.w) / w;
    // Ends of a clamped curve are copied, for a weight multiplied and divided out may leave a
    // trace.
    if (t == knots[0] && k == p) return m_points.first();
    if (atEnd && t == m_knots.endParam() && k == n - 1) return m_points.last();
    return at.asPoint();
}

AcGeDoubleArray AcGeNurbCurve3d::kinks(double from, double to) const {
    AcGeDoubleArray inner;
    for (int i = m_degree + 1; i < m_points.length(); ++i) {
        const double knot = m_knots[i];
        if (knot > from && knot < to && (inner.isEmpty() || knot > inner.last()))
            inner.append(knot);
    }
    return inner;
}

double AcGeNurbCurve3d::arcLength(double from, double to) const {
    const AcGeInterval range = domain();
    const double low = (std::max)(from, range.lowerBound());
    const double high = (std::min)(to, range.upperBound());
    return low < high ? AcGeCurve3d::arcLength(low, high) : 0.0;
}

double AcGeNurbCurve3d::nearestParam(const AcGePoint3d& p) const {
    const AcGeInterval range = domain();
    AcGeDoubleArray breaks;
    breaks.append(range.lowerBound());
    breaks.append(kinks(range.lowerBound(), range.upperBound()));
    breaks.append(range.upperBound());
    return host::NearestParam([this](double t, int n, AcGeVector3d* d) { return eval(t, n, d); },
                              breaks, 4 * m_degree, p);
}

AcGeBoundBlock3d AcGeNurbCurve3d::box() const {
    if (m_points.isEmpty()) return AcGeBoundBlock3d();
    AcGeBoundBlock3d block(m_points.first(), m_points.first());
    for (const AcGePoint3d& p : m_points) block.extend(p);
    return block;
}

// Through the first control point, the one farthest from it and the one farthest from their line.
bool AcGeNurbCurve3d::liesInPlane(AcGePlane& plane, const AcGeTol& tol) const {
    if (m_points.isEmpty()) return false;
    const AcGePoint3d origin = m_points.first();
    AcGeVector3d along, across;
    for (const AcGePoint3d& p : m_points)
        if ((p - origin).lengthSqrd() > along.lengthSqrd()) along = p - origin;
    for (const AcGePoint3d& p : m_points) {
        const AcGeVector3d part = (p - origin).orthoProject(along);
        if (part.lengthSqrd() > across.lengthSqrd()) across = part;
    }
    const bool straight = across.length() <= tol.equalPoint();
    const bool flat = std::fabs(along.z) <= tol.equalPoint();
    const AcGeVector3d normal = !straight ? along.crossProduct(across)
                                : flat    ? AcGeVector3d::kZAxis
                                          : along.perpVector();
    const AcGePlane found(origin, normal);
    for (const AcGePoint3d& p : m_points)
        if (!found.isOn(p, tol)) return false;
    plane = found;
    return true;
}
