#include "StdAfx.h"

#include "EncircleRun.h"

#include <algorithm>
#include <map>
#include <set>

#include "EncircleLayers.h"
#include "EncircleLine.h"
#include "EncircleTrace.h"
#include "EraseEntity.h"
#include "LayerTools.h"
#include "LinetypeResolver.h"

namespace {

// Picked entities that one call of the host can clone: those of one space.
struct SSpace {
    AcDbObjectId m_ownerId;
    AcDbObjectIdArray m_ids;
};

bool IsLayerOff(const AcDbObjectId& id) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
    return layer.openStatus() == Acad::eOk && layer->isOff();
}

// Decides which picked entities take part, reading each layer once.
class CPicker {
public:
    explicit CPicker(bool bWithDimensions)
        : m_pDatabase(acdbHostApplicationServices()->workingDatabase()),
          m_refusedLayerId(bWithDimensions ? AcDbObjectId::kNull : FindLayer(kDimensionLayer)) {}

    // The space of an entity that takes part; null for any other.
    AcDbObjectId Pick(const AcDbObjectId& id) {
        if (id.isNull() || id.database() != m_pDatabase || !m_seen.insert(id).second) {
            return AcDbObjectId::kNull;
        }
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk || !IsSpace(entity->ownerId())) {
            CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Unopenable, id);
            return AcDbObjectId::kNull;
        }
        const AcDbObjectId layerId = entity->layerId();
        if (layerId == m_refusedLayerId) {
            CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Layer, kDimensionLayer, id);
            return AcDbObjectId::kNull;
        }
        if (IsLocked(layerId)) {
            CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Locked, GetLayerName(layerId), id);
            return AcDbObjectId::kNull;
        }
        return entity->ownerId();
    }

private:
    static bool IsSpace(const AcDbObjectId& ownerId) {
        const AcRxClass* pClass = ownerId.objectClass();
        return pClass != nullptr && pClass->isDerivedFrom(AcDbBlockTableRecord::desc());
    }

    bool IsLocked(const AcDbObjectId& layerId) {
        const auto known = m_locked.find(layerId);
        if (known != m_locked.end()) {
            return known->second;
        }
        return m_locked[layerId] = IsLayerLocked(layerId);
    }

    AcDbDatabase* m_pDatabase;
    AcDbObjectId m_refusedLayerId;
    std::set<AcDbObjectId> m_seen;
    std::map<AcDbObjectId, bool> m_locked;
};

// Adds the clones of ids, by their source, to cloneOf.
void CloneInto(const AcDbObjectId& ownerId, const AcDbObjectIdArray& ids,
               std::map<AcDbObjectId, AcDbObjectId>& cloneOf) {
    AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase();
    AcDbIdMapping mapping;
    if (pDatabase->deepCloneObjects(ids, ownerId, mapping) != Acad::eOk) {
        // One entity that refuses spoils the whole call; the others are cloned one by one.
        for (int i = 0; i < ids.length() && ids.length() > 1; ++i) {
            AcDbObjectIdArray single;
            single.append(ids[i]);
            CloneInto(ownerId, single, cloneOf);
        }
        return;
    }
    for (int i = 0; i < ids.length(); ++i) {
        AcDbIdPair pair;
        pair.setKey(ids[i]);
        if (mapping.compute(pair) && pair.isCloned()) {
            cloneOf[ids[i]] = pair.value();
        }
    }
}

bool MoveToLayer(const AcDbObjectId& id, const AcDbObjectId& layerId,
                 const CLinetypeResolver& resolver) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    return entity.openStatus() == Acad::eOk && resolver.Resolve(entity.object()) &&
           entity->setLayer(layerId, true, false) == Acad::eOk;
}

}  // namespace

AcDbObjectId CEncircleRun::s_lastBeforeId;

CEncircleRun::CEncircleRun(CEncircleLine& engine) : m_engine(engine), m_layer(kScratchLayer) {
    // On a layer that was there before, anything may lie; a new one holds only what comes from now
    // on.
    if (m_layer.IsLayerNew()) {
        s_lastBeforeId = GetLastEntity();
    }
    if (CEncircleWatch::Current() != nullptr) {
        for (const SLayerLinetype& layer : GetLayerLinetypes()) {
            if (IsLayerOff(layer.m_layerId)) {
                m_offLayerIds.push_back(layer.m_layerId);
            }
        }
    }
}

CEncircleRun::~CEncircleRun() {
    if (!IsReady()) {
        return;
    }
    EraseScratch();
    m_engine.SetLayersShow(true);
    if (m_bStopped) {
        for (const AcDbObjectId& id : m_offLayerIds) {
            static_cast<void>(ShowLayer(id, false));
        }
    }
    const AcDbObjectId layerId = m_layer.GetLayerId();
    m_layer.Restore();
    if (m_layer.IsLayerNew() && GetEntitiesOnLayer(layerId, s_lastBeforeId).isEmpty()) {
        EraseEmptyLayer(layerId);
    }
    s_lastBeforeId.setNull();
}

AcDbObjectIdArray CEncircleRun::Clone(const AcDbObjectIdArray& pickedIds, bool bKeepLook,
                                      bool bWithDimensions) {
    CPicker picker(bWithDimensions);
    AcDbObjectIdArray taken;
    std::vector<SSpace> spaces;
    for (int i = 0; i < pickedIds.length(); ++i) {
        CEncircleWatch::Step("clone", static_cast<size_t>(i),
                             static_cast<size_t>(pickedIds.length()));
        const AcDbObjectId ownerId = picker.Pick(pickedIds[i]);
        if (ownerId.isNull()) {
            continue;
        }
        taken.append(pickedIds[i]);
        const auto space = std::find_if(spaces.begin(), spaces.end(), [&](const SSpace& other) {
            return other.m_ownerId == ownerId;
        });
        (space == spaces.end() ? *spaces.insert(space, SSpace{ownerId, AcDbObjectIdArray()})
                               : *space)
            .m_ids.append(pickedIds[i]);
    }
    CEncircleTrace::Count("selected", static_cast<size_t>(pickedIds.length()));

    std::map<AcDbObjectId, AcDbObjectId> cloneOf;
    for (const SSpace& space : spaces) {
        CloneInto(space.m_ownerId, space.m_ids, cloneOf);
    }
    const CLinetypeResolver resolver(bKeepLook);
    AcDbObjectIdArray clones;
    // All are known before the first question whether to go on: a run that stops erases them.
    for (int i = 0; i < taken.length(); ++i) {
        const auto clone = cloneOf.find(taken[i]);
        if (clone != cloneOf.end()) {
            m_cloneIds.push_back(clone->second);
        }
    }
    for (int i = 0; i < taken.length(); ++i) {
        CEncircleWatch::Step("clone", static_cast<size_t>(i), static_cast<size_t>(taken.length()));
        const auto clone = cloneOf.find(taken[i]);
        if (clone == cloneOf.end()) {
            CEncircleTrace::LeftOut(CEncircleTrace::E_LeftOut_Unopenable, taken[i]);
            continue;
        }
        CEncircleTrace::Made(clone->second, taken[i]);
        if (MoveToLayer(clone->second, m_layer.GetLayerId(), resolver)) {
            clones.append(clone->second);
        }
    }
    return clones;
}

void CEncircleRun::EraseScratch() {
    // By identifier too: clones of entities in paper space, or that refused to change layer.
    for (const AcDbObjectId& id : m_cloneIds) {
        EraseById(id);
    }
    m_engine.DeleteCloneEnts();
}
