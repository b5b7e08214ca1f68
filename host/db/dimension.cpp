#include <cmath>

#include "dbdim.h"
#include "host/db/block_extents.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/dimension_drawing.h"
#include "host/db/entity_tools.h"

using host::Access;

HOST_DEFINE_ABSTRACT(AcDbDimension, AcDbEntity, ACRX_T("DIMENSION"))
HOST_DEFINE_CLASS(AcDbRotatedDimension, AcDbDimension, ACRX_T("DIMENSION"))
HOST_DEFINE_CLASS(AcDbAlignedDimension, AcDbDimension, ACRX_T("DIMENSION"))
HOST_DEFINE_CLASS(AcDb2LineAngularDimension, AcDbDimension, ACRX_T("DIMENSION"))
HOST_DEFINE_CLASS(AcDb3PointAngularDimension, AcDbDimension, ACRX_T("DIMENSION"))
HOST_DEFINE_CLASS(AcDbRadialDimension, AcDbDimension, ACRX_T("DIMENSION"))
HOST_DEFINE_CLASS(AcDbDiametricDimension, AcDbDimension, ACRX_T("DIMENSION"))
HOST_DEFINE_CLASS(AcDbOrdinateDimension, AcDbDimension, ACRX_T("DIMENSION"))
HOST_DEFINE_CLASS(AcDbArcDimension, AcDbDimension, ACRX_T("ARC_DIMENSION"))
HOST_DEFINE_COPY(AcDbRotatedDimension)
HOST_DEFINE_COPY(AcDbAlignedDimension)
HOST_DEFINE_COPY(AcDb2LineAngularDimension)
HOST_DEFINE_COPY(AcDb3PointAngularDimension)
HOST_DEFINE_COPY(AcDbRadialDimension)
HOST_DEFINE_COPY(AcDbDiametricDimension)
HOST_DEFINE_COPY(AcDbOrdinateDimension)
HOST_DEFINE_COPY(AcDbArcDimension)

namespace host {

const AcDbBlockTableRecord* DrawingOf(const AcDbDimension& dimension) {
    const AcDbObjectId id = dimension.dimBlockId();
    if (id.isNull() || id.isErased()) return nullptr;
    return AcDbBlockTableRecord::cast(ObjectOf(*id.stub()));
}

AcGeMatrix3d PlaceOfDrawing(const AcDbDimension& dimension) {
    const AcGePoint3d offset = Access::Points(dimension)[Access::SlotOfGroup(12)];
    return AcGeMatrix3d::translation(AcGeMatrix3d::planeToWorld(dimension.normal()) *
                                     offset.asVector());
}

bool IsDrawnOfDimension(const AcDbEntity& entity) { return !entity.isKindOf(AcDbPoint::desc()); }

}  // namespace host

using host::DrawingOf;
using host::PlaceOfDrawing;

namespace {

bool IsTranslation(const AcGeMatrix3d& matrix) {
    for (unsigned row = 0; row < 3; ++row)
        for (unsigned column = 0; column < 3; ++column)
            if (matrix(row, column) != (row == column ? 1.0 : 0.0)) return false;
    return true;
}

}  // namespace

Acad::ErrorStatus AcDbDimension::setDimBlockId(AcDbObjectId block) {
    HOST_SET(m_blockId, block, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbDimension::setDimensionStyle(AcDbObjectId style) {
    HOST_SET(m_style, style, host::kDirtyGeometry);
}
AcGePoint3d AcDbDimension::textPosition() const {
    return AcGeMatrix3d::planeToWorld(m_normal) * m_textPosition;
}
ACHAR* AcDbDimension::dimensionText() const { return host::NewText(m_text.c_str()); }
double AcDbRotatedDimension::rotation() const { return Access::Rotation(*this); }

Acad::ErrorStatus AcDbDimension::setDefinitionPoint(int slot, const AcGePoint3d& point) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    m_points[slot] = point;
    m_used = static_cast<Adesk::UInt8>(m_used | 1 << slot);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    if (const AcDbBlockTableRecord* const drawing = DrawingOf(*this)) {
        const AcGeMatrix3d place = PlaceOfDrawing(*this);
        for (host::Stub* const stub : host::Members(*drawing)) {
            const AcDbObject* const object = host::ObjectOf(*stub);
            if (object == nullptr) continue;
            const auto& entity = static_cast<const AcDbEntity&>(*object);
            AcDbExtents own;
            // Dimensions inside one another are followed there, without recursion.
            if (AcDbDimension::cast(&entity) != nullptr) {
                host::AddShownBlock(entity, place, box);
                continue;
            }
            if (!host::IsDrawnOfDimension(entity) || entity.getGeomExtents(own) != Acad::eOk)
                continue;
            own.transformBy(place);
            box.addExt(own);
        }
        if (host::FinishExtents(box, extents) == Acad::eOk) return Acad::eOk;
    }
    for (int slot = 0; slot < kNumSlots; ++slot)
        if (slot != kClone && (m_used >> slot & 1) != 0) box.addPoint(m_points[slot]);
    return host::FinishExtents(box, extents);
}

Acad::ErrorStatus AcDbDimension::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!host::IsSimilarity(matrix)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const AcGePoint3d text = matrix * textPosition();
    const host::Plane before = host::PlaneOf(m_normal);
    const AcGeVector3d normal = host::MovedNormal(matrix, m_normal);
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal);
    const AcGeVector3d x = toPlane * (matrix * before.x);
    for (int slot = 0; slot < kNumSlots; ++slot)
        if (slot != kClone && (m_used >> slot & 1) != 0) m_points[slot] = matrix * m_points[slot];
    m_textPosition = toPlane * text;
    m_rotation += std::atan2(x.y, x.x);
    m_measurement *= x.length();
    // Clones share the block, so it is never changed: a move is kept
    // as an offset, any other map leaves a dimension without drawing, to be drawn anew.
    if (IsTranslation(matrix)) {
        m_points[kClone] = m_points[kClone] + toPlane * matrix.translation();
        m_used = static_cast<Adesk::UInt8>(m_used | 1 << kClone);
    } else {
        m_blockId.setNull();
        m_points[kClone] = AcGePoint3d();
    }
    m_normal = normal;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::subExplode(AcDbVoidPtrArray& pieces) const {
    const AcDbBlockTableRecord* const drawing = DrawingOf(*this);
    if (drawing == nullptr) return Acad::eCannotExplodeEntity;
    const AcGeMatrix3d place = PlaceOfDrawing(*this);
    std::vector<std::unique_ptr<AcDbEntity>> made;
    for (host::Stub* const stub : host::Members(*drawing)) {
        const AcDbObject* const object = host::ObjectOf(*stub);
        if (object == nullptr) continue;
        AcDbEntity* piece = nullptr;
        const Acad::ErrorStatus es =
            static_cast<const AcDbEntity*>(object)->getTransformedCopy(place, piece);
        if (es != Acad::eOk) return es;
        made.emplace_back(piece);
    }
    for (auto& piece : made) pieces.append(piece.release());
    return Acad::eOk;
}

void AcDbDimension::translateIds(const AcDbIdMapping& mapping) {
    AcDbEntity::translateIds(mapping);
    host::Translate(mapping, m_blockId);
    host::Translate(mapping, m_style);
}
