#include <utility>

#include "dbents.h"
#include "gelnsg3d.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/stub.h"

HOST_DEFINE_CLASS(AcDbLine, AcDbCurve, ACRX_T("LINE"))
HOST_DEFINE_COPY(AcDbLine)

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) {
    HOST_SET(m_start, point, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) {
    HOST_SET(m_end, point, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbLine::setThickness(double thickness) {
    HOST_SET(m_thickness, thickness, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
    if (normal.length() <= host::kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_normal, normal.normal(), host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbLine::getStartPoint(AcGePoint3d& point) const {
    point = m_start;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getEndPoint(AcGePoint3d& point) const {
    point = m_end;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::reverseCurve() {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es == Acad::eOk) std::swap(m_start, m_end);
    return es;
}

Acad::ErrorStatus AcDbLine::getAcGeCurve(AcGeCurve3d*& curve, const AcGeTol&) const {
    curve = new AcGeLineSeg3d(m_start, m_end);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    box.addPoint(m_start);
    box.addPoint(m_end);
    host::AddThickness(box, m_normal, m_thickness);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const AcGeVector3d normal = (matrix * m_normal).normal();
    m_thickness = host::MovedThickness(matrix, m_normal, normal, m_thickness);
    m_start = matrix * m_start;
    m_end = matrix * m_end;
    m_normal = normal;
    return Acad::eOk;
}
