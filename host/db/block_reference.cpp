#include <cmath>

#include "dbents.h"
#include "host/db/block_extents.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/entity_list.h"
#include "host/db/entity_tools.h"
#include "host/base/angles.h"

using host::Access;
using host::Stub;

HOST_DEFINE_CLASS(AcDbBlockReference, AcDbEntity, ACRX_T("INSERT"))
HOST_DEFINE_CLASS(AcDbMInsertBlock, AcDbBlockReference, ACRX_T("INSERT"))
HOST_DEFINE_COPY(AcDbBlockReference)
HOST_DEFINE_COPY(AcDbMInsertBlock)

namespace {

// More entities than any drawing explodes one reference into; beyond it memory is what ends.
constexpr double kMostPieces = 4e6;

const AcDbBlockTableRecord* BlockOf(const AcDbBlockReference& reference) {
    const AcDbObjectId id = reference.blockTableRecord();
    if (id.isNull() || id.isErased()) return nullptr;
    return AcDbBlockTableRecord::cast(host::ObjectOf(*id.stub()));
}

// Calls visit with each entity of a block that is not erased and can be loaded.
template <class Visit>
void ForEntities(const AcDbBlockTableRecord& block, Visit visit) {
    for (Stub* const stub : Access::Entities(block)->Live())
        if (const AcDbObject* const object = host::ObjectOf(*stub))
            visit(static_cast<const AcDbEntity&>(*object));
}

}  // namespace

AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord)
    : m_blockId(blockTableRecord), m_position(position) {}

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId block) {
    if (block.isNull() || !block.objectClass()->isDerivedFrom(AcDbBlockTableRecord::desc()))
        return Acad::eWrongObjectType;
    HOST_SET(m_blockId, block, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position) {
    HOST_SET(m_position, position, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale) {
    if (scale.sx == 0.0 || scale.sy == 0.0 || scale.sz == 0.0) return Acad::eInvalidInput;
    HOST_SET(m_scale, scale, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbBlockReference::setRotation(double angle) {
    HOST_SET(m_rotation, angle, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& normal) {
    if (normal.length() <= host::kZeroLength) return Acad::eInvalidInput;
    HOST_SET(m_normal, normal.normal(), host::kDirtyGeometry);
}

namespace {

// An attribute moves with its reference whatever its own open state: its data are set aside, moved
// as those of a free object, and put back. One that the map would distort keeps its place relative
// to the reference but not its shape.
void MoveAttribute(AcDbAttribute& attribute, const AcGeMatrix3d& matrix) {
    AcDbEntity* moved = nullptr;
    if (attribute.getTransformedCopy(matrix, moved) == Acad::eOk) {
        const auto& text = static_cast<const AcDbAttribute&>(*moved);
        Access::Position(attribute) = text.position();
        Access::Alignment(attribute) = text.alignmentPoint();
        Access::Normal(attribute) = text.normal();
        Access::Rotation(attribute) = text.rotation();
        Access::Height(attribute) = text.height();
        Access::Thickness(attribute) = text.thickness();
        delete moved;
    } else {
        Access::Position(attribute) = matrix * attribute.position();
        Access::Alignment(attribute) = matrix * attribute.alignmentPoint();
    }
    Access::DirtyBits(attribute) |= host::kDirtyGeometry;
}

// Unit axes of a reference: those of its OCS, turned by its rotation.
host::Plane TurnedAxes(const AcGeVector3d& normal, double rotation) {
    const host::Plane plane = host::PlaneOf(normal);
    const double c = std::cos(rotation), s = std::sin(rotation);
    return {plane.x * c + plane.y * s, plane.y * c - plane.x * s, plane.normal};
}

}  // namespace

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
    const host::Plane axes = TurnedAxes(m_normal, m_rotation);
    const AcDbBlockTableRecord* const block = BlockOf(*this);
    const AcGePoint3d origin = block == nullptr ? AcGePoint3d() : block->origin();
    AcGeMatrix3d matrix;
    matrix.setCoordSystem(m_position, axes.x * m_scale.sx, axes.y * m_scale.sy,
                          axes.normal * m_scale.sz);
    return origin == AcGePoint3d() ? matrix
                                   : matrix * AcGeMatrix3d::translation(-origin.asVector());
}

Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& matrix) {
    const AcGeMatrix3d from = blockTransform();
    return subTransformBy(matrix * from.inverse());
}

Acad::ErrorStatus AcDbBlockReference::subTransformBy(const AcGeMatrix3d& matrix) {
    const host::Plane axes = TurnedAxes(m_normal, m_rotation);
    AcGeVector3d x = matrix * axes.x;
    AcGeVector3d y = matrix * axes.y;
    AcGeVector3d z = matrix * axes.normal;
    AcGeScale3d scale(m_scale.sx * x.length(), m_scale.sy * y.length(), m_scale.sz * z.length());
    x.normalize();
    y.normalize();
    z.normalize();
    if (std::fabs(x.dotProduct(y)) > host::kShapeTol ||
        std::fabs(y.dotProduct(z)) > host::kShapeTol ||
        std::fabs(z.dotProduct(x)) > host::kShapeTol)
        return Acad::eCannotScaleNonUniformly;
    // A mirrored frame becomes a right-handed one with the x scale turned round, so that plan
    // drawings keep their normal.
    if (x.crossProduct(y).dotProduct(z) < 0.0) {
        x.negate();
        scale.sx = -scale.sx;
    }
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    const host::Plane plane = host::PlaneOf(z);
    for (const AcDbEntity* const owned : m_attributes.Live()) {
        // The attributes go with the reference, whatever their own open state.
        AcDbAttribute* const attribute = AcDbAttribute::cast(owned);
        if (attribute != nullptr) MoveAttribute(*attribute, matrix);
    }
    m_position = matrix * m_position;
    m_scale = scale;
    m_normal = z;
    m_rotation = host::FullAngle(x.dotProduct(plane.y), x.dotProduct(plane.x));
    return Acad::eOk;
}

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
    return new AcDbObjectIterator(m_attributes.ids);
}

Acad::ErrorStatus AcDbBlockReference::openAttribute(AcDbAttribute*& attribute, AcDbObjectId id,
                                                    AcDb::OpenMode mode, bool openErased) const {
    return acdbOpenObject(attribute, id, mode, openErased);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
    AcDbObjectId id;
    return appendAttribute(id, attribute);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
    if (attribute == nullptr) return Acad::eNullObjectPointer;
    if (objectId().isNull()) return Acad::eNotInDatabase;
    if (!attribute->objectId().isNull()) return Acad::eAlreadyInDb;
    Acad::ErrorStatus es = beginWrite(host::kDirtyChildren);
    if (es == Acad::eOk) es = host::FillCommonProperties(*database(), *attribute);
    if (es == Acad::eOk)
        es = host::MakeResident(*database(), *attribute, objectId().stub(),
                                host::kStubEntity | host::kStubSubentity, true);
    if (es != Acad::eOk) return es;
    id = attribute->objectId();
    m_attributes.ids.push_back(id);
    m_attributes.Settle(*this, true);
    return Acad::eOk;
}

std::vector<AcGeMatrix3d> AcDbBlockReference::cellTransforms() const { return {blockTransform()}; }

Acad::ErrorStatus AcDbBlockReference::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    host::AddShownBlock(*this, AcGeMatrix3d::kIdentity, box);
    for (const AcDbEntity* const attribute : m_attributes.Live())
        if (attribute->visibility() == AcDb::kVisible)
            host::AddMoved(*attribute, AcGeMatrix3d::kIdentity, box);
    return host::FinishExtents(box, extents);
}

Acad::ErrorStatus AcDbBlockReference::geomExtentsBestFit(AcDbExtents& extents,
                                                         const AcGeMatrix3d& parent) const {
    AcDbExtents box;
    host::AddShownBlock(*this, parent, box);
    return host::FinishExtents(box, extents);
}

Acad::ErrorStatus AcDbBlockReference::subExplode(AcDbVoidPtrArray& pieces) const {
    const AcDbBlockTableRecord* const block = BlockOf(*this);
    if (block == nullptr || block->isFromExternalReference()) return Acad::eCannotExplodeEntity;
    const std::vector<AcGeMatrix3d> cells = cellTransforms();
    const auto entities = static_cast<double>(Access::Entities(*block)->Live().size());
    if (static_cast<double>(cells.size()) * entities > kMostPieces) return Acad::eOutOfMemory;
    std::vector<std::unique_ptr<AcDbEntity>> made;
    Acad::ErrorStatus es = Acad::eOk;
    for (const AcGeMatrix3d& cell : cells)
        ForEntities(*block, [&](const AcDbEntity& entity) {
            if (es != Acad::eOk) return;
            AcDbEntity* piece = nullptr;
            es = entity.getTransformedCopy(cell, piece);
            if (es == Acad::eOk) made.emplace_back(piece);
        });
    if (es != Acad::eOk) return es;
    for (auto& piece : made) pieces.append(piece.release());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::explodeToOwnerSpace() const {
    if (objectId().isNull()) return Acad::eNotInDatabase;
    AcDbVoidPtrArray pieces;
    Acad::ErrorStatus es = explode(pieces);
    if (es != Acad::eOk) return es;
    AcDbBlockTableRecord* owner = nullptr;
    es = acdbOpenObject(owner, ownerId(), AcDb::kForWrite);
    for (int i = 0; i < pieces.length(); ++i) {
        AcDbEntity* const piece = static_cast<AcDbEntity*>(pieces[i]);
        if (es == Acad::eOk) es = owner->appendAcDbEntity(piece);
        if (piece->objectId().isNull())
            delete piece;
        else if (const Acad::ErrorStatus closed = piece->close(); es == Acad::eOk)
            es = closed;
    }
    if (owner == nullptr) return es;
    const Acad::ErrorStatus closed = owner->close();
    return es != Acad::eOk ? es : closed;
}

void AcDbBlockReference::ownedIds(AcDbObjectIdArray& ids) const { m_attributes.AllIds(ids); }
void AcDbBlockReference::settleOwned() { m_attributes.Settle(*this, false); }

void AcDbBlockReference::translateIds(const AcDbIdMapping& mapping) {
    AcDbEntity::translateIds(mapping);
    host::Translate(mapping, m_blockId);
}

// ---- Arrays -------------------------------------------------------------------------------------

AcDbMInsertBlock::AcDbMInsertBlock(const AcGePoint3d& position, AcDbObjectId blockTableRecord,
                                   Adesk::UInt16 columns, Adesk::UInt16 rows, double columnSpacing,
                                   double rowSpacing)
    : AcDbBlockReference(position, blockTableRecord),
      m_columnSpacing(columnSpacing),
      m_rowSpacing(rowSpacing),
      m_columns(columns),
      m_rows(rows) {}

Acad::ErrorStatus AcDbMInsertBlock::setColumns(Adesk::UInt16 columns) {
    HOST_SET(m_columns, columns, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbMInsertBlock::setRows(Adesk::UInt16 rows) {
    HOST_SET(m_rows, rows, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbMInsertBlock::setColumnSpacing(double spacing) {
    HOST_SET(m_columnSpacing, spacing, host::kDirtyGeometry);
}
Acad::ErrorStatus AcDbMInsertBlock::setRowSpacing(double spacing) {
    HOST_SET(m_rowSpacing, spacing, host::kDirtyGeometry);
}

Acad::ErrorStatus AcDbMInsertBlock::subTransformBy(const AcGeMatrix3d& matrix) {
    const host::Plane before = TurnedAxes(normal(), rotation());
    const AcGeVector3d column = matrix * (before.x * m_columnSpacing);
    const AcGeVector3d row = matrix * (before.y * m_rowSpacing);
    const Acad::ErrorStatus es = AcDbBlockReference::subTransformBy(matrix);
    if (es != Acad::eOk) return es;
    const host::Plane after = TurnedAxes(normal(), rotation());
    m_columnSpacing = column.dotProduct(after.x);
    m_rowSpacing = row.dotProduct(after.y);
    return Acad::eOk;
}

std::vector<AcGeMatrix3d> AcDbMInsertBlock::cellTransforms() const {
    const host::Plane axes = TurnedAxes(normal(), rotation());
    const AcGeMatrix3d first = blockTransform();
    std::vector<AcGeMatrix3d> cells;
    // Zero counts, which some writers leave, mean one.
    const int rowCount = m_rows == 0 ? 1 : m_rows;
    const int columnCount = m_columns == 0 ? 1 : m_columns;
    cells.reserve(static_cast<size_t>(rowCount) * static_cast<size_t>(columnCount));
    for (int row = 0; row < rowCount; ++row)
        for (int column = 0; column < columnCount; ++column)
            cells.push_back(AcGeMatrix3d::translation(axes.x * (m_columnSpacing * column) +
                                                      axes.y * (m_rowSpacing * row)) *
                            first);
    return cells;
}
