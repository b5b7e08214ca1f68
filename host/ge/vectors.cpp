#include "gemat2d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "gepnt3d.h"
#include "host/base/angles.h"
#include "host/ge/linear_kernel.h"

double AcGeVector2d::angle() const { return host::FullAngle(y, x); }

double AcGeVector2d::angleTo(const AcGeVector2d& v) const {
    return std::atan2(std::fabs(x * v.y - y * v.x), dotProduct(v));
}

AcGeVector2d& AcGeVector2d::rotateBy(double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return *this = AcGeVector2d(c * x - s * y, s * x + c * y);
}

AcGeVector2d& AcGeVector2d::transformBy(const AcGeMatrix2d& m) { return *this = m * *this; }

namespace {

AcGeVector3d Lifted(const AcGeVector2d& v) { return {v.x, v.y, 0.0}; }

}  // namespace

bool AcGeVector2d::isParallelTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    return Lifted(*this).isParallelTo(Lifted(v), tol);
}

bool AcGeVector2d::isCodirectionalTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    return Lifted(*this).isCodirectionalTo(Lifted(v), tol);
}

bool AcGeVector2d::isPerpendicularTo(const AcGeVector2d& v, const AcGeTol& tol) const {
    return Lifted(*this).isPerpendicularTo(Lifted(v), tol);
}

AcGePoint2d& AcGePoint2d::rotateBy(double angle, const AcGePoint2d& centre) {
    return *this = centre + (*this - centre).rotateBy(angle);
}

AcGePoint2d& AcGePoint2d::scaleBy(double factor, const AcGePoint2d& centre) {
    return *this = centre + (*this - centre) * factor;
}

AcGePoint2d& AcGePoint2d::transformBy(const AcGeMatrix2d& m) { return *this = m * *this; }

AcGeVector3d AcGeVector3d::perpVector() const {
    const AcGeVector3d n = normal();
    if (n.lengthSqrd() == 0.0) return kXAxis;
    constexpr double kNearZ = 1.0 / 64.0;  // DXF reference, arbitrary axis rule
    const bool nearZ = std::fabs(n.x) < kNearZ && std::fabs(n.y) < kNearZ;
    return (nearZ ? kYAxis : kZAxis).crossProduct(n).normal();
}

AcGeVector2d AcGeVector3d::convert2d(const AcGePlanarEnt& plane) const {
    AcGePoint3d origin;
    AcGeVector3d u, v;
    plane.getCoordSystem(origin, u, v);
    return {dotProduct(u), dotProduct(v)};
}

AcGeVector3d AcGeVector3d::orthoProject(const AcGeVector3d& planeNormal) const {
    const AcGeVector3d n = planeNormal.normal();
    return *this - n * dotProduct(n);
}

double AcGeVector3d::angleTo(const AcGeVector3d& v) const {
    return std::atan2(crossProduct(v).length(), dotProduct(v));
}

double AcGeVector3d::angleTo(const AcGeVector3d& v, const AcGeVector3d& refAxis) const {
    const AcGeVector3d cross = crossProduct(v);
    const double side = cross.dotProduct(refAxis);
    return host::FullAngle(side < 0.0 ? -cross.length() : cross.length(), dotProduct(v));
}

AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
    return transformBy(AcGeMatrix3d::rotation(angle, axis));
}

AcGeVector3d& AcGeVector3d::mirror(const AcGeVector3d& planeNormal) {
    const AcGeVector3d n = planeNormal.normal();
    return *this -= n * (2.0 * dotProduct(n));
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& m) { return *this = m * *this; }

bool AcGeVector3d::isParallelTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    const double a = length(), b = v.length();
    return a > 0.0 && b > 0.0 && host::AreParallel(*this, a, v, b, tol.equalVector());
}

bool AcGeVector3d::isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    const double a = length(), b = v.length();
    return a > 0.0 && b > 0.0 && (*this / a - v / b).length() < tol.equalVector();
}

bool AcGeVector3d::isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    const double a = length(), b = v.length();
    return a > 0.0 && b > 0.0 && std::fabs((*this / a).dotProduct(v / b)) <= tol.equalVector();
}

AcGePoint3d::AcGePoint3d(const AcGePlanarEnt& plane, const AcGePoint2d& p) {
    AcGePoint3d origin;
    AcGeVector3d u, v;
    plane.getCoordSystem(origin, u, v);
    *this = origin + u * p.x + v * p.y;
}

AcGePoint2d AcGePoint3d::convert2d(const AcGePlanarEnt& plane) const {
    return AcGePoint2d::kOrigin + (*this - plane.pointOnPlane()).convert2d(plane);
}

AcGePoint3d AcGePoint3d::project(const AcGePlanarEnt& plane, const AcGeVector3d& dir) const {
    const double slope = dir.dotProduct(plane.normal());
    if (slope == 0.0) return *this;
    return *this + dir * ((plane.pointOnPlane() - *this).dotProduct(plane.normal()) / slope);
}

AcGePoint3d AcGePoint3d::orthoProject(const AcGePlanarEnt& plane) const {
    return project(plane, plane.normal());
}

AcGePoint3d& AcGePoint3d::rotateBy(double angle, const AcGeVector3d& axis,
                                   const AcGePoint3d& centre) {
    return *this = centre + (*this - centre).rotateBy(angle, axis);
}

AcGePoint3d& AcGePoint3d::mirror(const AcGePlanarEnt& plane) {
    return *this += (orthoProject(plane) - *this) * 2.0;
}

AcGePoint3d& AcGePoint3d::scaleBy(double factor, const AcGePoint3d& centre) {
    return *this = centre + (*this - centre) * factor;
}

AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& m) { return *this = m * *this; }
