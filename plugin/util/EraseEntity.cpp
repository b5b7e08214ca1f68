#include "StdAfx.h"

#include "EraseEntity.h"

#include <memory>

namespace {

// False when one of them stays.
bool EraseAll(const AcDbObjectIdArray& ids) {
    bool bErased = true;
    for (int i = 0; i < ids.length(); ++i) {
        bErased = EraseById(ids[i]) && bErased;
    }
    return bErased;
}

// Calls use(id) for the entities of model space, the newest first, until it returns false.
template <class Use>
void ForEachFromEnd(Use use) {
    AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase();
    if (pDatabase == nullptr) {
        return;
    }
    AcDbObjectPointer<AcDbBlockTableRecord> block(acdbSymUtil()->blockModelSpaceId(pDatabase),
                                                  AcDb::kForRead);
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    if (block.openStatus() != Acad::eOk || block->newIterator(pIterator, false) != Acad::eOk) {
        return;
    }
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(pIterator);
    for (; !iterator->done(); iterator->step(false)) {
        AcDbObjectId id;
        if (iterator->getEntityId(id) == Acad::eOk && !use(id)) {
            return;
        }
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

AcDbObjectId GetLastEntity() {
    AcDbObjectId last;
    ForEachFromEnd([&](const AcDbObjectId& id) {
        last = id;
        return false;
    });
    return last;
}

AcDbObjectIdArray GetEntitiesOnLayer(const AcDbObjectId& layerId, const AcDbObjectId& sinceId) {
    AcDbObjectIdArray ids;
    if (layerId.isNull()) {
        return ids;
    }
    ForEachFromEnd([&](const AcDbObjectId& id) {
        if (id == sinceId) {
            return false;
        }
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() == Acad::eOk && entity->layerId() == layerId) {
            ids.append(id);
        }
        return true;
    });
    return ids;
}

bool EraseOnLayer(const AcDbObjectId& layerId, const AcDbObjectId& sinceId) {
    return EraseAll(GetEntitiesOnLayer(layerId, sinceId));
}
