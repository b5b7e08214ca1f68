#include <algorithm>
#include <limits>

#include "geline3d.h"
#include "gelnsg3d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "geray3d.h"

namespace host {

// Seen from above the lines are parallel or a point. They may still cross in space, one of them
// standing upright: then another view shows it. Lines that are flat have no other view.
bool CrossingInSpace(const Straight& a, const Straight& b, const AcGeTol& tol, double& t) {
    const AcGeVector3d normal = a.dir.crossProduct(b.dir);
    if (normal.x == 0.0 && normal.y == 0.0) return false;
    const auto turned = [alongX = std::fabs(normal.x) >= std::fabs(normal.y)](const auto& v) {
        using Tuple = std::decay_t<decltype(v)>;
        return alongX ? Tuple(v.y, v.z, v.x) : Tuple(v.z, v.x, v.y);
    };
    return Crossing({turned(a.start), turned(a.dir), a.lower, a.upper},
                    {turned(b.start), turned(b.dir), b.lower, b.upper}, tol, t);
}

}  // namespace host

bool AcGeLinearEnt3d::intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& out,
                                    const AcGeTol& tol) const {
    const double length = m_straight.dir.length();
    if (length == 0.0 || plane.isParallelTo(*this, tol)) return false;
    const double slope = m_straight.dir.dotProduct(plane.normal());
    const double t = (plane.pointOnPlane() - m_straight.start).dotProduct(plane.normal()) / slope;
    if (!host::IsWithin(m_straight, t, length, tol.equalPoint())) return false;
    out = m_straight.start + m_straight.dir * t;
    return true;
}

bool AcGeLinearEnt3d::isOn(const AcGePlane& plane, const AcGeTol& tol) const {
    const bool bounded = m_straight.lower && m_straight.upper;
    return plane.isOn(m_straight.start, tol) &&
           (bounded ? plane.isOn(m_end, tol) : plane.isParallelTo(*this, tol));
}

bool AcGeLinearEnt3d::isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return m_straight.dir.isParallelTo(line.m_straight.dir, tol);
}

bool AcGeLinearEnt3d::isPerpendicularTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return m_straight.dir.isPerpendicularTo(line.m_straight.dir, tol);
}

bool AcGeLinearEnt3d::isColinearTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return isParallelTo(line, tol) &&
           AcGeLine3d(m_straight.start, m_straight.dir).isOn(line.m_straight.start, tol);
}

bool AcGeLinearEnt3d::overlap(const AcGeLinearEnt3d& line, AcGeLinearEnt3d*& common,
                              const AcGeTol& tol) const {
    if (!isColinearTo(line, tol)) return false;
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    // The other one's ends in places on this one, turned so that from is the lower.
    const double t0 = host::FootOf(m_straight, line.m_straight.start);
    const double t1 = host::FootOf(m_straight, line.m_end);
    const bool along = t0 < t1;
    double from = line.m_straight.lower ? t0 : along ? -kInfinity : kInfinity;
    double to = line.m_straight.upper ? t1 : along ? kInfinity : -kInfinity;
    if (!along) std::swap(from, to);
    if (m_straight.lower) from = (std::max)(from, 0.0);
    if (m_straight.upper) to = (std::min)(to, 1.0);
    if (!((to - from) * m_straight.dir.length() > tol.equalPoint())) return false;

    if (std::isfinite(from) && std::isfinite(to))
        common = new AcGeLineSeg3d(at(from), at(to));
    else if (std::isfinite(from))
        common = new AcGeRay3d(at(from), m_straight.dir);
    else if (std::isfinite(to))
        common = new AcGeRay3d(at(to), -m_straight.dir);
    else
        common = new AcGeLine3d(m_straight.start, m_straight.dir);
    return true;
}

void AcGeLinearEnt3d::getLine(AcGeLine3d& line) const {
    line.set(m_straight.start, m_straight.dir);
}

void AcGeLinearEnt3d::apply(const AcGeMatrix3d& m) {
    m_straight.start.transformBy(m);
    m_end.transformBy(m);
    m_straight.dir = m_end - m_straight.start;
}

bool AcGeLinearEnt3d::equals(const AcGeEntity3d& other, const AcGeTol& tol) const {
    const AcGeLinearEnt3d& line = static_cast<const AcGeLinearEnt3d&>(other);
    if (m_straight.lower != line.m_straight.lower || m_straight.upper != line.m_straight.upper)
        return false;
    if (m_straight.upper)
        return m_straight.start.isEqualTo(line.m_straight.start, tol) &&
               m_end.isEqualTo(line.m_end, tol);
    if (m_straight.lower)
        return m_straight.start.isEqualTo(line.m_straight.start, tol) &&
               m_straight.dir.isCodirectionalTo(line.m_straight.dir, tol);
    return isColinearTo(line, tol);
}

AcGeInterval AcGeLinearEnt3d::domain() const {
    if (m_straight.upper) return {0.0, 1.0};
    return m_straight.lower ? AcGeInterval(true, 0.0) : AcGeInterval();
}

AcGePoint3d AcGeLinearEnt3d::eval(double param, int count, AcGeVector3d* derivatives) const {
    if (count > 0) derivatives[0] = m_straight.dir;
    if (count > 1) derivatives[1] = AcGeVector3d();
    return at(param);
}

double AcGeLinearEnt3d::arcLength(double from, double to) const {
    return (to - from) * m_straight.dir.length();
}

double AcGeLinearEnt3d::nearestParam(const AcGePoint3d& p) const {
    return host::NearestOn(m_straight, p);
}

AcGeBoundBlock3d AcGeLinearEnt3d::box() const { return {m_straight.start, m_end}; }

bool AcGeLinearEnt3d::liesInPlane(AcGePlane& plane, const AcGeTol&) const {
    const AcGeVector3d dir = direction();
    // A flat line's plane is the one parallel to XY, the one a drafter would expect.
    const bool flat = dir.z == 0.0;
    plane.set(m_straight.start, flat ? AcGeVector3d::kZAxis : dir.perpVector());
    return true;
}
