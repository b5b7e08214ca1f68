#include "StdAfx.h"

#include "LayerState.h"

#include "EraseEntity.h"
#include "LayerTools.h"

CLayerState::CLayerState(const ACHAR* pName) : m_strName(pName), m_layerId(FindLayer(pName)) {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(m_layerId, AcDb::kForRead);
    if (layer.openStatus() == Acad::eOk) {
        m_bOff = layer->isOff();
        m_bFrozen = layer->isFrozen();
    }
}

void CLayerState::Restore() const {
    const AcDbObjectId layerId = FindLayer(m_strName);
    AcDbObjectPointer<AcDbLayerTableRecord> layer(layerId, AcDb::kForWrite);
    if (layer.openStatus() != Acad::eOk) {
        return;
    }
    if (!m_layerId.isNull()) {
        layer->setIsOff(m_bOff);
        if (m_bFrozen) {
            // Refused for a layer that has become the current one; it then stays usable.
            static_cast<void>(layer->setIsFrozen(true));
        }
    } else if (layer.close() == Acad::eOk && layerId.database()->clayer() != layerId &&
               GetEntitiesOnLayer(layerId).isEmpty()) {
        EraseEmptyLayer(layerId);
    }
}
