#include "StdAfx.h"

#include "LayerTools.h"

#include <memory>

namespace {

AcDbDatabase* GetWorkingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

AcDbDatabase* OrWorking(AcDbDatabase* pDatabase) {
    return pDatabase != nullptr ? pDatabase : GetWorkingDatabase();
}

// The identifiers of all layers, in the order of the table; null: of the working database.
std::vector<AcDbObjectId> GetLayerIds(AcDbDatabase* pGiven = nullptr) {
    std::vector<AcDbObjectId> ids;
    AcDbDatabase* pDatabase = OrWorking(pGiven);
    if (pDatabase == nullptr) {
        return ids;
    }
    AcDbObjectPointer<AcDbLayerTable> table(pDatabase->layerTableId(), AcDb::kForRead);
    AcDbLayerTableIterator* pIterator = nullptr;
    if (table.openStatus() != Acad::eOk || table->newIterator(pIterator) != Acad::eOk) {
        return ids;
    }
    const std::unique_ptr<AcDbLayerTableIterator> iterator(pIterator);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) == Acad::eOk) {
            ids.push_back(id);
        }
    }
    return ids;
}

AcDbObjectId AddLayer(AcDbDatabase* pDatabase, const ACHAR* pName) {
    AcDbObjectPointer<AcDbLayerTable> table(pDatabase->layerTableId(), AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk) {
        return AcDbObjectId::kNull;
    }
    std::unique_ptr<AcDbLayerTableRecord> record(new AcDbLayerTableRecord);
    AcDbObjectId id;
    if (record->setName(pName) != Acad::eOk || table->add(id, record.get()) != Acad::eOk) {
        return AcDbObjectId::kNull;
    }
    return record.release()->close() == Acad::eOk ? id : AcDbObjectId::kNull;
}

// Whether entities on the layer can be made, changed and seen already.
bool IsUsable(const AcDbLayerTableRecord& layer) {
    return !layer.isFrozen() && !layer.isLocked() && !layer.isOff();
}

bool MakeUsable(const AcDbObjectId& layerId) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(layerId, AcDb::kForRead);
    if (layer.openStatus() != Acad::eOk) {
        return false;
    }
    if (IsUsable(*layer)) {
        return true;
    }
    if (layer->upgradeOpen() != Acad::eOk) {
        return false;
    }
    layer->setIsLocked(false);
    layer->setIsOff(false);
    return !layer->isFrozen() || layer->setIsFrozen(false) == Acad::eOk;
}

}  // namespace

std::vector<SLayerLinetype> GetLayerLinetypes(AcDbDatabase* pDatabase) {
    std::vector<SLayerLinetype> linetypes;
    for (const AcDbObjectId& id : GetLayerIds(pDatabase)) {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
        const ACHAR* pName = nullptr;
        if (layer.openStatus() == Acad::eOk && layer->getName(pName) == Acad::eOk) {
            linetypes.push_back({CString(pName), id, layer->linetypeObjectId()});
        }
    }
    return linetypes;
}

AcDbObjectId FindLayer(const ACHAR* pName, AcDbDatabase* pDatabase) {
    AcDbObjectId id;
    if (AcDbDatabase* pIn = OrWorking(pDatabase)) {
        AcDbObjectPointer<AcDbLayerTable> table(pIn->layerTableId(), AcDb::kForRead);
        if (table.openStatus() != Acad::eOk || table->getAt(pName, id) != Acad::eOk) {
            id.setNull();
        }
    }
    return id;
}

CString GetLayerName(const AcDbObjectId& layerId) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(layerId, AcDb::kForRead);
    const ACHAR* pName = nullptr;
    if (layer.openStatus() != Acad::eOk || layer->getName(pName) != Acad::eOk) {
        return CString();
    }
    return CString(pName);
}

bool IsLayerLocked(const AcDbObjectId& layerId) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(layerId, AcDb::kForRead);
    return layer.openStatus() == Acad::eOk && layer->isLocked();
}

bool LockLayer(const AcDbObjectId& layerId, bool bLock) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(layerId, AcDb::kForWrite);
    if (layer.openStatus() != Acad::eOk) {
        return false;
    }
    layer->setIsLocked(bLock);
    return true;
}

AcDbObjectId EnsureLayer(const ACHAR* pName, bool* pCreated) {
    AcDbObjectId id = FindLayer(pName);
    const bool bCreate = id.isNull();
    AcDbDatabase* pDatabase = GetWorkingDatabase();
    if (pDatabase != nullptr && bCreate) {
        id = AddLayer(pDatabase, pName);
    } else if (!MakeUsable(id)) {
        id.setNull();
    }
    if (pCreated != nullptr) {
        *pCreated = bCreate && !id.isNull();
    }
    return id;
}

void ShowAllLayers(bool bShow) {
    for (const AcDbObjectId& id : GetLayerIds()) {
        ShowLayer(id, bShow);
    }
}

bool ShowLayer(const AcDbObjectId& layerId, bool bShow) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(layerId, AcDb::kForRead);
    if (layer.openStatus() != Acad::eOk) {
        return false;
    }
    if (layer->isOff() == bShow) {
        if (layer->upgradeOpen() != Acad::eOk) {
            return false;
        }
        layer->setIsOff(!bShow);
    }
    return true;
}

bool EraseEmptyLayer(const AcDbObjectId& layerId) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(layerId, AcDb::kForWrite);
    return layer.openStatus() == Acad::eOk && layer->erase() == Acad::eOk;
}
