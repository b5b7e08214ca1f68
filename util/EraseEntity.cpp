#include "StdAfx.h"

#include "EraseEntity.h"

#include <memory>

namespace {

void EraseAll(const AcDbObjectIdArray& ids) {
    for (int i = 0; i < ids.length(); ++i) {
        EraseById(ids[i]);
    }
}

}  // namespace

bool EraseById(const AcDbObjectId& id) {
    if (id.isNull()) {
        return false;
    }
    AcDbObjectPointer<AcDbObject> pObject(id, AcDb::kForWrite);
    if (pObject.openStatus() != Acad::eOk) {
        return pObject.openStatus() == Acad::eWasErased || id.isErased();
    }
    if (AcDbGroup* pGroup = AcDbGroup::cast(pObject.object())) {
        AcDbObjectIdArray ids;
        pGroup->allEntityIds(ids);
        // An erased entity takes itself out of its groups, so the group must not stay open.
        if (pObject.close() == Acad::eOk) {
            EraseAll(ids);
        }
        return true;
    }
    return pObject->erase() == Acad::eOk;
}

AcDbObjectIdArray GetEntitiesOnLayer(const AcDbObjectId& layerId) {
    AcDbObjectIdArray ids;
    AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase();
    if (pDatabase == nullptr || layerId.isNull()) {
        return ids;
    }
    AcDbObjectPointer<AcDbBlockTableRecord> block(acdbSymUtil()->blockModelSpaceId(pDatabase),
                                                  AcDb::kForRead);
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    if (block.openStatus() != Acad::eOk || block->newIterator(pIterator) != Acad::eOk) {
        return ids;
    }
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(pIterator);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getEntityId(id) != Acad::eOk) {
            continue;
        }
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() == Acad::eOk && entity->layerId() == layerId) {
            ids.append(id);
        }
    }
    return ids;
}

void EraseOnLayer(const AcDbObjectId& layerId) { EraseAll(GetEntitiesOnLayer(layerId)); }
