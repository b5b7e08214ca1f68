#pragma once

#include "DrawingWatch.h"

// Unlocks a layer of the working database for its own life, and locks it again: what lies on a
// locked layer can be neither changed nor erased. A layer that is missing or not locked is left
// alone, so scopes nest. The caller holds the document's write lock for as long.
class CUnlockedLayer {
public:
    explicit CUnlockedLayer(const ACHAR* pLayerName);
    explicit CUnlockedLayer(const AcDbObjectId& layerId);
    ~CUnlockedLayer();
    CUnlockedLayer(const CUnlockedLayer&) = delete;
    CUnlockedLayer& operator=(const CUnlockedLayer&) = delete;

private:
    CDrawingWatch m_drawing;
    AcDbObjectId m_layerId;  // null when there is nothing to lock again
};

// The layer that new entities of the working database go to; null without a drawing.
AcDbObjectId GetCurrentLayer();
