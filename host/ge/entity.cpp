#include <algorithm>

#include "geblok3d.h"
#include "geent3d.h"
#include "gemat3d.h"

namespace {

// The base class of each kind; the root is its own.
AcGe::EntityId BaseOf(AcGe::EntityId kind) {
    switch (kind) {
        case AcGe::kPlane:
            return AcGe::kPlanarEnt;
        case AcGe::kLine3d:
        case AcGe::kRay3d:
        case AcGe::kLineSeg3d:
            return AcGe::kLinearEnt3d;
        case AcGe::kNurbCurve3d:
            return AcGe::kSplineEnt3d;
        case AcGe::kLinearEnt3d:
        case AcGe::kCircArc3d:
        case AcGe::kEllipArc3d:
        case AcGe::kSplineEnt3d:
            return AcGe::kCurve3d;
        default:
            return AcGe::kEntity3d;
    }
}

}  // namespace

bool AcGeEntity3d::isKindOf(AcGe::EntityId entType) const {
    AcGe::EntityId k = kind();
    while (k != entType && k != AcGe::kEntity3d) k = BaseOf(k);
    return k == entType;
}

AcGeEntity3d& AcGeEntity3d::translateBy(const AcGeVector3d& v) {
    return transformBy(AcGeMatrix3d::translation(v));
}

AcGeEntity3d& AcGeEntity3d::rotateBy(double angle, const AcGeVector3d& axis) {
    return transformBy(AcGeMatrix3d::rotation(angle, axis));
}

AcGeEntity3d& AcGeEntity3d::rotateBy(double angle, const AcGeVector3d& axis,
                                     const AcGePoint3d& centre) {
    return transformBy(AcGeMatrix3d::rotation(angle, axis, centre));
}

AcGeEntity3d& AcGeEntity3d::mirror(const AcGePlane& plane) {
    return transformBy(AcGeMatrix3d::mirroring(plane));
}

AcGeEntity3d& AcGeEntity3d::scaleBy(double factor) {
    return transformBy(AcGeMatrix3d::scaling(factor));
}

AcGeEntity3d& AcGeEntity3d::scaleBy(double factor, const AcGePoint3d& centre) {
    return transformBy(AcGeMatrix3d::scaling(factor, centre));
}

AcGeBoundBlock3d& AcGeBoundBlock3d::set(const AcGePoint3d& p, const AcGePoint3d& q) {
    m_min = m_max = p;
    return extend(q);
}

AcGeBoundBlock3d& AcGeBoundBlock3d::extend(const AcGePoint3d& p) {
    for (unsigned int axis = 0; axis < 3; ++axis) {
        m_min[axis] = (std::min)(m_min[axis], p[axis]);
        m_max[axis] = (std::max)(m_max[axis], p[axis]);
    }
    return *this;
}

AcGeBoundBlock3d& AcGeBoundBlock3d::swell(double distance) {
    const AcGeVector3d v(distance, distance, distance);
    m_min -= v;
    m_max += v;
    return *this;
}

bool AcGeBoundBlock3d::contains(const AcGePoint3d& p) const { return hasOn(p, AcGeContext::gTol); }

bool AcGeBoundBlock3d::isDisjoint(const AcGeBoundBlock3d& other) const {
    for (unsigned int axis = 0; axis < 3; ++axis)
        if (m_max[axis] < other.m_min[axis] || other.m_max[axis] < m_min[axis]) return true;
    return false;
}

void AcGeBoundBlock3d::apply(const AcGeMatrix3d& m) {
    const AcGePoint3d ends[2] = {m_min, m_max};
    AcGeBoundBlock3d moved(m * m_min, m * m_max);
    for (int corner = 0; corner < 8; ++corner)
        moved.extend(
            m * AcGePoint3d(ends[corner & 1].x, ends[(corner >> 1) & 1].y, ends[corner >> 2].z));
    *this = moved;
}

bool AcGeBoundBlock3d::equals(const AcGeEntity3d& other, const AcGeTol& tol) const {
    const AcGeBoundBlock3d& block = static_cast<const AcGeBoundBlock3d&>(other);
    return m_min.isEqualTo(block.m_min, tol) && m_max.isEqualTo(block.m_max, tol);
}

bool AcGeBoundBlock3d::hasOn(const AcGePoint3d& p, const AcGeTol& tol) const {
    for (unsigned int axis = 0; axis < 3; ++axis)
        if (p[axis] < m_min[axis] - tol.equalPoint() || p[axis] > m_max[axis] + tol.equalPoint())
            return false;
    return true;
}
