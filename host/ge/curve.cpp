#include <algorithm>
#include <cmath>

#include "gecurv3d.h"
#include "host/ge/curve_numeric.h"

void AcGeCurve3d::getInterval(AcGeInterval& interval, AcGePoint3d& start, AcGePoint3d& end) const {
    interval = domain();
    hasStartPoint(start);
    hasEndPoint(end);
}

bool AcGeCurve3d::hasStartPoint(AcGePoint3d& start) const {
    const AcGeInterval interval = domain();
    if (!interval.isBoundedBelow()) return false;
    start = evalPoint(interval.lowerBound());
    return true;
}

bool AcGeCurve3d::hasEndPoint(AcGePoint3d& end) const {
    const AcGeInterval interval = domain();
    if (!interval.isBoundedAbove()) return false;
    end = evalPoint(interval.upperBound());
    return true;
}

AcGePoint3d AcGeCurve3d::evalPoint(double param, int numDeriv,
                                   AcGeVector3dArray& derivatives) const {
    const int count = (std::min)((std::max)(numDeriv, 0), 2);
    derivatives.setLogicalLength(count);
    return eval(param, count, derivatives.asArrayPtr());
}

double AcGeCurve3d::paramOf(const AcGePoint3d& p, const AcGeTol&) const { return nearestParam(p); }

double AcGeCurve3d::length(double from, double to, double) const {
    return from <= to ? arcLength(from, to) : arcLength(to, from);
}

double AcGeCurve3d::arcLength(double from, double to) const {
    const auto curve = [this](double t, int n, AcGeVector3d* d) { return eval(t, n, d); };
    double sum = 0.0;
    for (const double kink : kinks(from, to)) {
        sum += host::SmoothLength(curve, from, kink);
        from = kink;
    }
    return sum + host::SmoothLength(curve, from, to);
}

double AcGeCurve3d::paramAtLength(double datum, double len, bool positive, double) const {
    const AcGeInterval interval = domain();
    const double sense = positive ? 1.0 : -1.0;
    const bool bounded = positive ? interval.isBoundedAbove() : interval.isBoundedBelow();
    const double end = positive ? interval.upperBound() : interval.lowerBound();
    if (bounded && (sense * (end - datum) <= 0.0 || length(datum, end) <= len)) return end;

    // Newton's method between a parameter that is too near and one that is too far.
    double low = datum, high = end, t = datum;
    bool hasHigh = bounded;
    for (int round = 0; round < 100; ++round) {
        const double missing = len - length(datum, t);
        if (missing < 0.0) {
            high = t;
            hasHigh = true;
        } else {
            low = t;
        }
        AcGeVector3d speed;
        eval(t, 1, &speed);
        const double v = speed.length();
        if (v == 0.0 && !hasHigh) return t;
        double next = v > 0.0 ? t + sense * missing / v : low;
        const bool inside = sense * (next - low) > 0.0 && (!hasHigh || sense * (high - next) > 0.0);
        if (!inside && missing != 0.0 && hasHigh) next = 0.5 * (low + high);
        if (missing == 0.0 || next == t || next == low || (hasHigh && next == high)) return next;
        t = next;
    }
    return t;
}

AcGePoint3d AcGeCurve3d::closestPointTo(const AcGePoint3d& p, const AcGeTol&) const {
    return evalPoint(nearestParam(p));
}

double AcGeCurve3d::distanceTo(const AcGePoint3d& p, const AcGeTol& tol) const {
    return closestPointTo(p, tol).distanceTo(p);
}

bool AcGeCurve3d::isOn(const AcGePoint3d& p, double& param, const AcGeTol& tol) const {
    if (!isOn(p, tol)) return false;
    param = nearestParam(p);
    return true;
}

bool AcGeCurve3d::isOn(double param, const AcGeTol& tol) const {
    return domain().contains(param, tol.equalPoint());
}

bool AcGeCurve3d::hasOn(const AcGePoint3d& p, const AcGeTol& tol) const {
    return distanceTo(p, tol) <= tol.equalPoint();
}

bool AcGeCurve3d::isClosed(const AcGeTol& tol) const {
    AcGePoint3d start, end;
    return hasStartPoint(start) && hasEndPoint(end) && start.isEqualTo(end, tol);
}

bool AcGeCurve3d::isPlanar(AcGePlane& plane, const AcGeTol& tol) const {
    return liesInPlane(plane, tol);
}

AcGeDoubleArray AcGeCurve3d::kinks(double, double) const { return AcGeDoubleArray(); }

void AcGeCurve3d::getSamplePoints(int count, AcGePoint3dArray& pts) const {
    AcGeDoubleArray params;
    getSamplePoints(count, pts, params);
}

void AcGeCurve3d::getSamplePoints(int count, AcGePoint3dArray& pts, AcGeDoubleArray& params) const {
    pts.removeAll();
    params.removeAll();
    const AcGeInterval interval = domain();
    if (!interval.isBounded()) return;
    const double from = interval.lowerBound(), to = interval.upperBound();
    params.append(from);
    for (int i = 1; i < count; ++i)
        params.append(i + 1 < count ? from + i * (to - from) / (count - 1) : to);
    for (const double t : params) pts.append(evalPoint(t));
}

void AcGeCurve3d::getSamplePoints(double from, double to, double approxEps, AcGePoint3dArray& pts,
                                  AcGeDoubleArray& params, bool) const {
    const auto curve = [this](double t, int n, AcGeVector3d* d) { return eval(t, n, d); };
    pts.removeAll();
    params.removeAll();
    pts.append(evalPoint(from));
    params.append(from);
    for (const double kink : kinks(from, to))
        host::AppendByChord(curve, params.last(), kink, approxEps, pts, params);
    if (params.last() < to) host::AppendByChord(curve, params.last(), to, approxEps, pts, params);
}
