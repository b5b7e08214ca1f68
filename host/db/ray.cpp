#include "dbray.h"

#include <algorithm>
#include <limits>

#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/stub.h"

HOST_DEFINE_CLASS(AcDbRay, AcDbCurve, ACRX_T("RAY"))
HOST_DEFINE_CLASS(AcDbXline, AcDbCurve, ACRX_T("XLINE"))
HOST_DEFINE_COPY(AcDbRay)
HOST_DEFINE_COPY(AcDbXline)

namespace host {

Acad::ErrorStatus UnboundedLine::setBasePoint(const AcGePoint3d& point) {
    HOST_SET(m_base, point, kDirtyGeometry);
}

Acad::ErrorStatus UnboundedLine::setUnitDir(const AcGeVector3d& direction) {
    if (direction.length() <= kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_direction, direction.normal(), kDirtyGeometry);
}

Acad::ErrorStatus UnboundedLine::getPointAtParam(double param, AcGePoint3d& point) const {
    if (!(param >= firstParam())) return Acad::eInvalidInput;
    point = m_base + m_direction * param;
    return Acad::eOk;
}

Acad::ErrorStatus UnboundedLine::getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                                   bool) const {
    const double foot = (point - m_base).dotProduct(m_direction);
    onCurve = m_base + m_direction * (std::max)(foot, firstParam());
    return Acad::eOk;
}

Acad::ErrorStatus UnboundedLine::subGetGeomExtents(AcDbExtents&) const {
    return Acad::eInvalidExtents;
}

Acad::ErrorStatus UnboundedLine::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus es = beginWrite(kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_base = matrix * m_base;
    m_direction = (matrix * m_direction).normal();
    return Acad::eOk;
}

}  // namespace host

Acad::ErrorStatus AcDbRay::getStartParam(double& param) const {
    param = 0.0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getStartPoint(AcGePoint3d& point) const {
    point = basePoint();
    return Acad::eOk;
}

double AcDbXline::firstParam() const { return -std::numeric_limits<double>::infinity(); }
