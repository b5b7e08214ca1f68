// Layers of a database, the working one where none is given. Names match without regard to case.
#pragma once

#include <vector>

#include "StdAfx.h"

struct SLayerLinetype {
    CString m_strName;
    AcDbObjectId m_layerId;
    AcDbObjectId m_linetypeId;
};

// Every layer with its line type, in the order of the layer table. pDatabase null: the working one,
// here and below.
std::vector<SLayerLinetype> GetLayerLinetypes(AcDbDatabase* pDatabase = nullptr);

// The layer of that name; null when there is none.
AcDbObjectId FindLayer(const ACHAR* pName, AcDbDatabase* pDatabase = nullptr);

// Name of a layer; empty when id is no layer.
CString GetLayerName(const AcDbObjectId& layerId);

// Whether entities on the layer cannot be changed; false when id is no layer.
bool IsLayerLocked(const AcDbObjectId& layerId);

// Locks or unlocks a layer; false when it cannot be opened for write.
bool LockLayer(const AcDbObjectId& layerId, bool bLock);

// Makes sure that entities can be put on the layer and changed there: creates it (colour 7,
// Continuous) when missing, thaws, unlocks and switches it on.
//
// pCreated  when given, receives whether the layer is new
// result    the layer; null when it cannot be made
AcDbObjectId EnsureLayer(const ACHAR* pName, bool* pCreated = nullptr);

// Switches every layer on or off. Nothing is remembered: layers that were off before are on after
// ShowAllLayers(true). Records that have the state already are not touched.
void ShowAllLayers(bool bShow);

// Switches one layer on or off; false when there is none.
bool ShowLayer(const AcDbObjectId& layerId, bool bShow);

// Erases the record of a layer that nothing uses any more and that is not current; the caller knows
// so. False when it cannot be opened or erased.
bool EraseEmptyLayer(const AcDbObjectId& layerId);
