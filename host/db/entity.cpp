#include <cmath>

#include "acutmem.h"
#include "dbapserv.h"
#include "host/db/highlight.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"
#include "host/db/line_weights.h"

using host::Access;

HOST_DEFINE_ABSTRACT(AcDbEntity, AcDbObject, nullptr)

const AcDbFullSubentPath kNullSubent;

namespace {

// Opens what an entity owns for write in turn and calls set on each; the first failure ends it.
template <class Set>
Acad::ErrorStatus ForOwned(const AcDbEntity& entity, bool doSubents, Set set) {
    if (!doSubents || entity.objectId().isNull()) return Acad::eOk;
    AcDbObjectIdArray owned;
    Access::OwnedIds(entity, owned);
    for (int i = 0; i < owned.length(); ++i) {
        if (owned[i].isErased()) continue;
        AcDbEntity* child = nullptr;
        Acad::ErrorStatus es = acdbOpenAcDbEntity(child, owned[i], AcDb::kForWrite);
        if (es != Acad::eOk) return es;
        es = set(*child);
        const Acad::ErrorStatus closed = child->close();
        if (es != Acad::eOk || closed != Acad::eOk) return es != Acad::eOk ? es : closed;
    }
    return Acad::eOk;
}

// The identifier must be of a record of the class, in the entity's database when it has one.
Acad::ErrorStatus CheckRecordId(const AcDbEntity& entity, AcDbObjectId id, const AcRxClass* type) {
    if (id.isNull()) return Acad::eNullObjectId;
    if (!id.objectClass()->isDerivedFrom(type)) return Acad::eWrongObjectType;
    if (entity.database() != nullptr && id.database() != entity.database())
        return Acad::eWrongDatabase;
    return id.isErased() ? Acad::eDeletedEntry : Acad::eOk;
}

Acad::ErrorStatus RecordNameOf(AcDbObjectId id, const ACHAR*& name) {
    const AcDbSymbolTableRecord* const record =
        id.isNull() ? nullptr : AcDbSymbolTableRecord::cast(host::ObjectOf(*id.stub()));
    if (record == nullptr) return Acad::eNullObjectId;
    name = Access::Name(*record).c_str();
    return Acad::eOk;
}

ACHAR* NameCopy(AcDbObjectId id) {
    const ACHAR* name = nullptr;
    return RecordNameOf(id, name) == Acad::eOk ? host::NewText(name) : nullptr;
}

Acad::ErrorStatus NameInto(AcDbObjectId id, AcString& out) {
    const ACHAR* name = nullptr;
    const Acad::ErrorStatus es = RecordNameOf(id, name);
    if (es == Acad::eOk) out = name;
    return es;
}

Acad::ErrorStatus IdByName(const AcDbEntity& entity, host::Root root, const ACHAR* name,
                           AcDbObjectId& id) {
    if (name == nullptr) return Acad::eInvalidInput;
    const AcDbDatabase* const db = host::DatabaseFor(entity);
    return db == nullptr ? Acad::eNoDatabase : host::FindRecord(*db, root, name, id);
}

}  // namespace

namespace host {

ACHAR* NewText(const ACHAR* text) {
    ACHAR* copy = nullptr;
    const Acad::ErrorStatus es = acutNewString(text, copy);
    return es == Acad::eOk ? copy : nullptr;
}

AcDbDatabase* DatabaseFor(const AcDbObject& object) {
    AcDbDatabase* const db = object.database();
    return db != nullptr ? db : acdbHostApplicationServices()->workingDatabase();
}

Acad::ErrorStatus FillCommonProperties(AcDbDatabase& db, AcDbEntity& entity) {
    const HeaderVars& header = Header(db);
    if (Access::Layer(entity).isNull()) {
        Access::Layer(entity) = header.clayer;
        // Nothing ties it to a record of this drawing.
        Access::Record(entity) = kNoRecord;
    }
    if (Access::Linetype(entity).isNull()) Access::Linetype(entity) = header.celtype;
    return Access::Layer(entity).database() == &db && Access::Linetype(entity).database() == &db
               ? Acad::eOk
               : Acad::eWrongDatabase;
}

}  // namespace host

AcDbObjectId AcDbEntity::blockId() const { return ownerId(); }

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, bool doSubents, AcDbDatabase*) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyCommon);
    if (es != Acad::eOk) return es;
    m_color = color;
    return ForOwned(*this, doSubents, [&](AcDbEntity& e) { return e.setColor(color); });
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 index, bool doSubents) {
    AcCmColor color;
    const Acad::ErrorStatus es = color.setColorIndex(index);
    return es == Acad::eOk ? setColor(color, doSubents) : es;
}

ACHAR* AcDbEntity::layer() const { return NameCopy(m_layerId); }
Acad::ErrorStatus AcDbEntity::layer(AcString& name) const { return NameInto(m_layerId, name); }

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* name, Adesk::Boolean doSubents,
                                       bool allowHiddenLayer) {
    AcDbObjectId id;
    const Acad::ErrorStatus es = IdByName(*this, host::Root::kLayerTable, name, id);
    return es == Acad::eOk ? setLayer(id, doSubents, allowHiddenLayer) : es;
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId layer, Adesk::Boolean doSubents,
                                       bool allowHiddenLayer) {
    Acad::ErrorStatus es = CheckRecordId(*this, layer, AcDbLayerTableRecord::desc());
    if (es != Acad::eOk) return es;
    const auto& record = static_cast<const AcDbLayerTableRecord&>(*layer.stub()->object);
    if (record.isHidden() && !allowHiddenLayer) return Acad::eOk;
    es = beginWrite(host::kDirtyCommon);
    if (es != Acad::eOk) return es;
    // Vertices first: on a locked target layer they could not be opened afterwards.
    es = ForOwned(*this, doSubents,
                  [&](AcDbEntity& e) { return e.setLayer(layer, true, allowHiddenLayer); });
    if (es == Acad::eOk) m_layerId = layer;
    return es;
}

ACHAR* AcDbEntity::linetype() const { return NameCopy(m_linetypeId); }
Acad::ErrorStatus AcDbEntity::linetype(AcString& name) const {
    return NameInto(m_linetypeId, name);
}

Acad::ErrorStatus AcDbEntity::setLinetype(const ACHAR* name, bool doSubents) {
    AcDbObjectId id;
    const Acad::ErrorStatus es = IdByName(*this, host::Root::kLinetypeTable, name, id);
    return es == Acad::eOk ? setLinetype(id, doSubents) : es;
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId linetype, bool doSubents) {
    Acad::ErrorStatus es = CheckRecordId(*this, linetype, AcDbLinetypeTableRecord::desc());
    if (es == Acad::eOk) es = beginWrite(host::kDirtyCommon);
    if (es != Acad::eOk) return es;
    m_linetypeId = linetype;
    return ForOwned(*this, doSubents, [&](AcDbEntity& e) { return e.setLinetype(linetype); });
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double scale, bool doSubents) {
    if (!(scale > 0.0)) return Acad::eInvalidInput;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyCommon);
    if (es != Acad::eOk) return es;
    m_linetypeScale = scale;
    return ForOwned(*this, doSubents, [&](AcDbEntity& e) { return e.setLinetypeScale(scale); });
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility visibility, bool doSubents) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyCommon);
    if (es != Acad::eOk) return es;
    m_visibility = static_cast<Adesk::UInt8>(visibility);
    return ForOwned(*this, doSubents, [&](AcDbEntity& e) { return e.setVisibility(visibility); });
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight weight, bool doSubents) {
    if (!host::IsLineWeight(weight)) return Acad::eInvalidInput;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyCommon);
    if (es != Acad::eOk) return es;
    m_lineWeight = static_cast<Adesk::Int16>(weight);
    return ForOwned(*this, doSubents, [&](AcDbEntity& e) { return e.setLineWeight(weight); });
}

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* db) {
    if (db == nullptr) db = host::DatabaseFor(*this);
    if (db == nullptr || beginWrite(host::kDirtyCommon) != Acad::eOk) return;
    const host::HeaderVars& header = host::Header(*db);
    m_layerId = header.clayer;
    m_linetypeId = header.celtype;
    m_linetypeScale = header.celtscale;
    m_color = header.cecolor;
    m_lineWeight = header.celweight;
}

Acad::ErrorStatus AcDbEntity::setPropertiesFrom(const AcDbEntity* source, bool doSubents) {
    if (source == nullptr) return Acad::eNullEntityPointer;
    if (database() != nullptr && source->layerId().database() != database())
        return Acad::eWrongDatabase;
    const Acad::ErrorStatus es = beginWrite(host::kDirtyCommon);
    if (es != Acad::eOk) return es;
    host::CopyProperties(*source, *this);
    return ForOwned(*this, doSubents,
                    [&](AcDbEntity& e) { return e.setPropertiesFrom(source, true); });
}

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
    return subGetGeomExtents(extents);
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& matrix) {
    if (!(std::fabs(matrix.det()) > 0.0)) return Acad::eInvalidInput;
    const Acad::ErrorStatus es = beginWrite(0);
    return es == Acad::eOk ? subTransformBy(matrix) : es;
}

Acad::ErrorStatus AcDbEntity::getTransformedCopy(const AcGeMatrix3d& matrix,
                                                 AcDbEntity*& copy) const {
    copy = nullptr;
    if (!(std::fabs(matrix.det()) > 0.0)) return Acad::eInvalidInput;
    return subGetTransformedCopy(matrix, copy);
}

Acad::ErrorStatus AcDbEntity::explode(AcDbVoidPtrArray& pieces) const { return subExplode(pieces); }

Acad::ErrorStatus AcDbEntity::subGetGeomExtents(AcDbExtents&) const { return Acad::eNullExtents; }
Acad::ErrorStatus AcDbEntity::subTransformBy(const AcGeMatrix3d&) {
    return Acad::eNotImplementedYet;
}
Acad::ErrorStatus AcDbEntity::subExplode(AcDbVoidPtrArray&) const { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbEntity::subGetTransformedCopy(const AcGeMatrix3d& matrix,
                                                    AcDbEntity*& copy) const {
    std::unique_ptr<AcDbEntity> made(static_cast<AcDbEntity*>(clone()));
    if (made == nullptr) return Acad::eNotApplicable;
    const Acad::ErrorStatus es = made->transformBy(matrix);
    if (es == Acad::eOk) copy = made.release();
    return es;
}

Acad::ErrorStatus AcDbEntity::highlight(const AcDbFullSubentPath&, const Adesk::Boolean) const {
    if (objectId().isNull()) return Acad::eNotInDatabase;
    host::SetHighlighted(objectId(), true);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::unhighlight(const AcDbFullSubentPath&, const Adesk::Boolean) const {
    if (objectId().isNull()) return Acad::eNotInDatabase;
    host::SetHighlighted(objectId(), false);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity*, AcDb::Intersect, AcGePoint3dArray&,
                                            Adesk::GsMarker, Adesk::GsMarker) const {
    return Acad::eNotImplementedYet;
}

// Nothing is cached for drawing: the next repaint shows the entity as it is.
Acad::ErrorStatus AcDbEntity::draw() { return Acad::eOk; }
Acad::ErrorStatus AcDbEntity::recordGraphicsModified(bool) {
    return isWriteEnabled() ? Acad::eOk : Acad::eNotOpenForWrite;
}

void AcDbEntity::translateIds(const AcDbIdMapping& mapping) {
    host::Translate(mapping, m_layerId);
    host::Translate(mapping, m_linetypeId);
}
