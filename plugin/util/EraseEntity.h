#pragma once

#include "arxHeaders.h"

// Erases an object of the working database.
//
// A group is emptied instead: each of its entities is erased, the group itself stays.
// result   true when it is erased now or was already; false for a null id or an object that cannot
//          be opened for write
bool EraseById(const AcDbObjectId& id);

// The entity of model space that was appended last; null when there is none.
AcDbObjectId GetLastEntity();

// The entities of model space on a layer, the newest first. With sinceId only those that were
// appended after that entity. Opens each, so sinceId saves a large drawing from being read whole.
AcDbObjectIdArray GetEntitiesOnLayer(const AcDbObjectId& layerId,
                                     const AcDbObjectId& sinceId = AcDbObjectId::kNull);

// Erases the entities that GetEntitiesOnLayer() gives. What cannot be opened for write stays; then
// the result is false.
bool EraseOnLayer(const AcDbObjectId& layerId, const AcDbObjectId& sinceId = AcDbObjectId::kNull);
