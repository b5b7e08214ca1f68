#include "StdAfx.h"

#include "LinetypeResolver.h"

#include "LayerTools.h"

CLinetypeResolver::CLinetypeResolver(bool bActive) {
    const AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase();
    if (!bActive || pDatabase == nullptr) {
        return;
    }
    m_byLayerId = pDatabase->byLayerLinetype();
    for (const SLayerLinetype& layer : GetLayerLinetypes()) {
        if (!layer.m_linetypeId.isNull()) {
            m_linetypes[layer.m_layerId] = layer.m_linetypeId;
        }
    }
}

bool CLinetypeResolver::Resolve(AcDbEntity* pEntity) const {
    if (m_linetypes.empty() || pEntity->linetypeId() != m_byLayerId) {
        return true;
    }
    const auto found = m_linetypes.find(pEntity->layerId());
    return found == m_linetypes.end() || pEntity->setLinetype(found->second, true) == Acad::eOk;
}
