#include "StdAfx.h"

#include "CurrentLayerGuard.h"

#include "LayerTools.h"

namespace {

// A file may come with a frozen current layer, which the host refuses to make current again.
bool MakeFrozenLayerCurrent(AcDbDatabase* pDatabase, const AcDbObjectId& layerId) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(layerId, AcDb::kForWrite);
    if (layer.openStatus() != Acad::eOk || !layer->isFrozen() ||
        layer->setIsFrozen(false) != Acad::eOk || layer.close() != Acad::eOk) {
        return false;
    }
    return pDatabase->setClayer(layerId) == Acad::eOk;
}

}  // namespace

CCurrentLayerGuard::CCurrentLayerGuard(const ACHAR* pLayerName)
    : m_pDatabase(acdbHostApplicationServices()->workingDatabase()), m_drawing(m_pDatabase) {
    if (m_pDatabase == nullptr) {
        return;
    }
    const AcDbObjectId layerId = EnsureLayer(pLayerName, &m_bCreated);
    const AcDbObjectId formerId = m_pDatabase->clayer();
    if (!layerId.isNull() && m_pDatabase->setClayer(layerId) == Acad::eOk) {
        m_formerId = formerId;
        m_layerId = layerId;
        m_bActive = true;
    }
}

void CCurrentLayerGuard::Restore() {
    m_bActive = m_bActive && m_drawing.IsOpen();
    if (m_bActive && m_pDatabase->setClayer(m_formerId) != Acad::eOk &&
        !MakeFrozenLayerCurrent(m_pDatabase, m_formerId)) {
        // Layer 0 always exists; entities must not land on a layer of ours.
        static_cast<void>(m_pDatabase->setClayer(m_pDatabase->layerZero()));
    }
    m_bActive = false;
}
