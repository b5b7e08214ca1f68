// Points, plane fills, faces, viewports and sequence ends.

#include "dbents.h"
#include "host/db/access.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"

HOST_DEFINE_CLASS(AcDbPoint, AcDbEntity, ACRX_T("POINT"))
HOST_DEFINE_CLASS(AcDbSolid, AcDbEntity, ACRX_T("SOLID"))
HOST_DEFINE_CLASS(AcDbTrace, AcDbEntity, ACRX_T("TRACE"))
HOST_DEFINE_CLASS(AcDbFace, AcDbEntity, ACRX_T("3DFACE"))
HOST_DEFINE_CLASS(AcDbViewport, AcDbEntity, ACRX_T("VIEWPORT"))
HOST_DEFINE_CLASS(AcDbSequenceEnd, AcDbEntity, ACRX_T("SEQEND"))
HOST_DEFINE_COPY(AcDbPoint)
HOST_DEFINE_COPY(AcDbSolid)
HOST_DEFINE_COPY(AcDbTrace)
HOST_DEFINE_COPY(AcDbFace)
HOST_DEFINE_COPY(AcDbViewport)
HOST_DEFINE_COPY(AcDbSequenceEnd)

Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& position) {
    HOST_SET(m_position, position, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbPoint::setThickness(double thickness) {
    HOST_SET(m_thickness, thickness, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& normal) {
    if (normal.length() <= host::kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_normal, normal.normal(), host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbPoint::setEcsRotation(double angle) {
    HOST_SET(m_rotation, angle, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbPoint::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box(m_position, m_position);
    host::AddThickness(box, m_normal, m_thickness);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const AcGeVector3d normal = (matrix * m_normal).normal();
    m_thickness = host::MovedThickness(matrix, m_normal, normal, m_thickness);
    m_position = matrix * m_position;
    m_normal = normal;
    return Acad::eOk;
}

namespace {

constexpr Adesk::UInt16 kCorners = 4;

AcDbExtents BoxOfCorners(const AcGePoint3d* corners) {
    AcDbExtents box;
    for (Adesk::UInt16 i = 0; i < kCorners; ++i) box.addPoint(corners[i]);
    return box;
}

}  // namespace

namespace host {

Acad::ErrorStatus FourCorners::getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    if (index >= kCorners) return Acad::eInvalidIndex;
    point = m_points[index];
    return Acad::eOk;
}
Acad::ErrorStatus FourCorners::setPointAt(Adesk::UInt16 index, const AcGePoint3d& point) {
    if (index >= kCorners) return Acad::eInvalidIndex;
    HOST_SET(m_points[index], point, kDirtyGeometry);
}
Acad::ErrorStatus FourCorners::setThickness(double thickness) {
    HOST_SET(m_thickness, thickness, kDirtyGeometry);
}
Acad::ErrorStatus FourCorners::setNormal(const AcGeVector3d& normal) {
    if (normal.length() <= kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_normal, normal.normal(), kDirtyGeometry);
}

Acad::ErrorStatus FourCorners::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box = BoxOfCorners(m_points);
    AddThickness(box, m_normal, m_thickness);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus FourCorners::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus es = beginWrite(kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const AcGeVector3d normal = MovedNormal(matrix, m_normal);
    m_thickness = MovedThickness(matrix, m_normal, normal, m_thickness);
    for (AcGePoint3d& point : m_points) point = matrix * point;
    m_normal = normal;
    return Acad::eOk;
}

}  // namespace host

Acad::ErrorStatus AcDbFace::getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    if (index >= kCorners) return Acad::eInvalidIndex;
    point = m_points[index];
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point) {
    if (index >= kCorners) return Acad::eInvalidIndex;
    HOST_SET(m_points[index], point, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbFace::isEdgeVisibleAt(Adesk::UInt16 index, bool& visible) const {
    if (index >= kCorners) return Acad::eInvalidIndex;
    visible = (m_hiddenEdges >> index & 1) == 0;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::makeEdgeVisibleAt(Adesk::UInt16 index) {
    if (index >= kCorners) return Acad::eInvalidIndex;
    HOST_SET(m_hiddenEdges, static_cast<Adesk::UInt8>(m_hiddenEdges & ~(1 << index)),
             host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbFace::makeEdgeInvisibleAt(Adesk::UInt16 index) {
    if (index >= kCorners) return Acad::eInvalidIndex;
    HOST_SET(m_hiddenEdges, static_cast<Adesk::UInt8>(m_hiddenEdges | 1 << index),
             host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbFace::subGetGeomExtents(AcDbExtents& extents) const {
    extents = BoxOfCorners(m_points);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    for (AcGePoint3d& point : m_points) point = matrix * point;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setCenterPoint(const AcGePoint3d& center) {
    HOST_SET(m_center, center, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbViewport::setWidth(double width) {
    HOST_SET(m_width, width, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbViewport::setHeight(double height) {
    HOST_SET(m_height, height, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbViewport::subGetGeomExtents(AcDbExtents& extents) const {
    const AcGeVector3d half(m_width / 2.0, m_height / 2.0, 0.0);
    return extents.set(m_center - half, m_center + half);
}

Acad::ErrorStatus AcDbViewport::subTransformBy(const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    if (!host::KeepsShapeInPlane(matrix, AcGeVector3d::kZAxis, scale))
        return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_center = matrix * m_center;
    m_width *= scale;
    m_height *= scale;
    return Acad::eOk;
}
