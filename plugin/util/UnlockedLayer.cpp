#include "StdAfx.h"
#include "UnlockedLayer.h"

#include "LayerTools.h"

CUnlockedLayer::CUnlockedLayer(const ACHAR* pLayerName) : CUnlockedLayer(FindLayer(pLayerName)) {}

CUnlockedLayer::CUnlockedLayer(const AcDbObjectId& layerId) : m_drawing(layerId.database()) {
    if (!layerId.isNull() && IsLayerLocked(layerId) && LockLayer(layerId, false)) {
        m_layerId = layerId;
    }
}

CUnlockedLayer::~CUnlockedLayer() {
    if (!m_layerId.isNull() && m_drawing.IsOpen() && !LockLayer(m_layerId, true)) {
        acutPrintf(_T("\n图层 %s 未能重新锁定\n"), GetLayerName(m_layerId).GetString());
    }
}

AcDbObjectId GetCurrentLayer() {
    const AcDbDatabase* const pDatabase = acdbHostApplicationServices()->workingDatabase();
    return pDatabase == nullptr ? AcDbObjectId::kNull : pDatabase->clayer();
}
