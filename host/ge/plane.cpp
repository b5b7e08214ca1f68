#include "geplane.h"

#include "geline3d.h"

const AcGePlane AcGePlane::kXYPlane(AcGePoint3d(0, 0, 0), AcGeVector3d(1, 0, 0),
                                    AcGeVector3d(0, 1, 0));
const AcGePlane AcGePlane::kYZPlane(AcGePoint3d(0, 0, 0), AcGeVector3d(0, 1, 0),
                                    AcGeVector3d(0, 0, 1));
const AcGePlane AcGePlane::kZXPlane(AcGePoint3d(0, 0, 0), AcGeVector3d(0, 0, 1),
                                    AcGeVector3d(1, 0, 0));

AcGePlanarEnt::AcGePlanarEnt(const AcGePoint3d& origin, const AcGeVector3d& normal)
    : m_origin(origin), m_normal(normal.normal()) {
    if (m_normal.lengthSqrd() == 0.0) m_normal = AcGeVector3d::kZAxis;
    m_uAxis = m_normal.perpVector();
    m_vAxis = m_normal.crossProduct(m_uAxis);
}

AcGePlanarEnt::AcGePlanarEnt(const AcGePoint3d& origin, const AcGeVector3d& uAxis,
                             const AcGeVector3d& vAxis)
    : m_origin(origin), m_uAxis(uAxis.normal()), m_normal(uAxis.crossProduct(vAxis).normal()) {
    if (m_normal.lengthSqrd() == 0.0) m_normal = m_uAxis.perpVector();
    m_vAxis = m_normal.crossProduct(m_uAxis);
}

void AcGePlanarEnt::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& uAxis,
                                   AcGeVector3d& vAxis) const {
    origin = m_origin;
    uAxis = m_uAxis;
    vAxis = m_vAxis;
}

void AcGePlanarEnt::getCoefficients(double& a, double& b, double& c, double& d) const {
    a = m_normal.x;
    b = m_normal.y;
    c = m_normal.z;
    d = -m_normal.dotProduct(m_origin.asVector());
}

double AcGePlanarEnt::signedDistance(const AcGePoint3d& p) const {
    return (p - m_origin).dotProduct(m_normal);
}

AcGePoint3d AcGePlanarEnt::closestPointTo(const AcGePoint3d& p) const {
    return p - m_normal * signedDistance(p);
}

bool AcGePlanarEnt::isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return m_normal.isParallelTo(plane.m_normal, tol);
}

bool AcGePlanarEnt::isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return m_normal.isPerpendicularTo(line.direction(), tol);
}

bool AcGePlanarEnt::isCoplanarTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return isParallelTo(plane, tol) && hasOn(plane.m_origin, tol);
}

void AcGePlanarEnt::apply(const AcGeMatrix3d& m) {
    const AcGeVector3d v = m * m_vAxis;
    m_origin.transformBy(m);
    m_uAxis = (m * m_uAxis).normal();
    m_normal = m_uAxis.crossProduct(v).normal();
    m_vAxis = m_normal.crossProduct(m_uAxis);
}

bool AcGePlanarEnt::equals(const AcGeEntity3d& other, const AcGeTol& tol) const {
    const AcGePlanarEnt& plane = static_cast<const AcGePlanarEnt&>(other);
    return m_normal.isCodirectionalTo(plane.m_normal, tol) && hasOn(plane.m_origin, tol);
}

bool AcGePlanarEnt::hasOn(const AcGePoint3d& p, const AcGeTol& tol) const {
    return std::fabs(signedDistance(p)) <= tol.equalPoint();
}

AcGePlane::AcGePlane() : AcGePlanarEnt(AcGePoint3d(), AcGeVector3d(0, 0, 1)) {}

AcGePlane::AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal)
    : AcGePlanarEnt(origin, normal) {}

AcGePlane::AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& uAxis,
                     const AcGeVector3d& vAxis)
    : AcGePlanarEnt(origin, uAxis, vAxis) {}

AcGePlane::AcGePlane(const AcGePoint3d& uPoint, const AcGePoint3d& origin,
                     const AcGePoint3d& vPoint)
    : AcGePlanarEnt(origin, uPoint - origin, vPoint - origin) {}

bool AcGePlane::intersectWith(const AcGePlane& plane, AcGeLine3d& line, const AcGeTol& tol) const {
    if (isParallelTo(plane, tol)) return false;
    const AcGeVector3d dir = m_normal.crossProduct(plane.m_normal).normal();
    // From this origin within this plane at right angles to the line until the other plane is met.
    const AcGePoint3d foot = m_origin.project(plane, dir.crossProduct(m_normal));
    line.set(foot, dir);
    return true;
}
